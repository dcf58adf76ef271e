// What the classes of open files share: the file behind an object, and opening one from a script.
#pragma once

#include <string>

#include "library/buffered_file.h"
#include "library/folder_item.h"
#include "library/parts.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz {

/// Texts and pieces that are read at once have at most this many bytes.
inline constexpr size_t kMaxReadBytes = size_t{256} << 20;

/// The instance data of a stream.
struct StreamData {
  BufferedFile* file;  // null when closed
};

/// The open file of a stream; null, with the exception raised, when it is closed.
inline BufferedFile* open_file(REALobject stream, const REALclassDefinition& definition) {
  BufferedFile* const file = data_in<StreamData>(stream, definition).file;
  if (!file) raise_exception("IOException", "the stream is closed; open the file again");
  return file;
}

inline void destroy_stream(REALobject stream, const REALclassDefinition& definition) {
  delete data_in<StreamData>(stream, definition).file;
}

/// Closes the file; raises the IOException of a last write that fails.
inline void close_stream(REALobject stream, const REALclassDefinition& definition) {
  BufferedFile*& file = data_in<StreamData>(stream, definition).file;
  if (file) file->flush();
  delete file;
  file = nullptr;
}

/// A new stream over a file, locked once; null, with the exception raised, when it cannot be
/// opened.
inline REALobject open_stream(const REALclassDefinition& definition, const std::string& path,
                              BufferedFile::Mode mode) {
  const ClassInfo* const class_info = Runtime::current().registry().find_class(definition.name);
  BufferedFile* const file = class_info ? BufferedFile::open(path, mode) : nullptr;
  if (!file) return nullptr;
  const REALobject stream = new_instance(*class_info);
  if (stream) {
    data_in<StreamData>(stream, definition).file = file;
  } else {
    delete file;
  }
  return stream;
}

inline REALobject open_stream(const REALclassDefinition& definition, REALfolderItemStruct* item,
                              BufferedFile::Mode mode) {
  if (item) return open_stream(definition, folder_item_path(item), mode);
  raise_exception("NilObjectException", "the FolderItem is Nil; give a file");
  return nullptr;
}

inline BufferedFile::Mode creating(bool overwrite) {
  return overwrite ? BufferedFile::Mode::kOverwrite : BufferedFile::Mode::kCreate;
}

}  // namespace krz
