#include "file/movie_file.h"

#include "file/file_source.h"

namespace toolbox {

Result<OpenedMovie> open_movie_file(const std::string& path) {
  TRY_ASSIGN(std::unique_ptr<FileSource> source, FileSource::open(path));
  return open_movie_source(std::move(source));
}

Result<OpenedMovie> open_movie_source(std::unique_ptr<ByteSource> source) {
  auto file = std::make_unique<WindowSource>(std::move(source));
  TRY_ASSIGN(AtomTree tree, AtomTree::read(*file));
  return OpenedMovie{std::move(file), std::move(tree)};
}

}  // namespace toolbox
