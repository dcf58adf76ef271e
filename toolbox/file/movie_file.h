// Opening a movie file for reading: the file, and the tree of its atoms.
#pragma once

#include "file/atom_tree.h"
#include "file/file_source.h"
#include "file/window_source.h"

namespace toolbox {

/// A movie file that is open. The tree and everything read from it borrow `file`; moving the record
/// keeps them valid.
struct OpenedMovie {
  std::unique_ptr<WindowSource> file;
  const FileSource* disk = nullptr;  // what is beneath `file`; null for a movie in memory
  AtomTree tree;
};

/// Opens a movie: a few reads, whatever the length of its tables; the media data is not touched.
/// Fails: as FileSource::open and AtomTree::read; the text names the file.
Result<OpenedMovie> open_movie_file(const std::string& path,
                                    FileAccess access = FileAccess::kReading);
Result<OpenedMovie> open_movie_file(std::unique_ptr<FileSource> source);
Result<OpenedMovie> open_movie_source(std::unique_ptr<ByteSource> source);

}  // namespace toolbox
