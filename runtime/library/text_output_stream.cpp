// The class TextOutputStream: writes text to a file, in UTF-8.
#include "library/stream.h"
#include "registry/tables.h"

namespace krz {

namespace {

REALclassDefinition g_class;

REALobject create_item(REALfolderItemStruct* item, bool overwrite) {
  return open_stream(g_class, item, creating(overwrite));
}
REALobject create_path(REALstring path, bool overwrite) {
  return open_stream(g_class, string_path(path), creating(overwrite));
}
REALobject append_item(REALfolderItemStruct* item) {
  return open_stream(g_class, item, BufferedFile::Mode::kAppend);
}
REALobject append_path(REALstring path) {
  return open_stream(g_class, string_path(path), BufferedFile::Mode::kAppend);
}

void write(REALobject stream, REALstring text) {
  if (BufferedFile* const file = open_file(stream, g_class)) file->write(string_utf8(text));
}
void write_line(REALobject stream, REALstring text) {
  if (BufferedFile* const file = open_file(stream, g_class)) file->write(string_utf8(text) + "\n");
}
void flush(REALobject stream) {
  if (BufferedFile* const file = open_file(stream, g_class)) file->flush();
}
void close(REALobject stream) { close_stream(stream, g_class); }
void destroy(REALobject stream) { destroy_stream(stream, g_class); }

MethodEntry g_shared_methods[] = {
    KRZ_SHARED(create_item,
               "Create(file as FolderItem, overwrite as boolean = false) as TextOutputStream"),
    KRZ_SHARED(create_path,
               "Create(path as string, overwrite as boolean = false) as TextOutputStream"),
    KRZ_SHARED(append_item, "Append(file as FolderItem) as TextOutputStream"),
    KRZ_SHARED(append_path, "Append(path as string) as TextOutputStream"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(write, "Write(text as string)"),
    KRZ_METHOD(write_line, "WriteLine(text as string = \"\")"),
    KRZ_METHOD(flush, "Flush()"),
    KRZ_METHOD(close, "Close()"),
};

}  // namespace

void register_text_output_stream(Registry& registry) {
  g_class = class_of<StreamData>("TextOutputStream");
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_shared_methods(g_class, g_shared_methods);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
