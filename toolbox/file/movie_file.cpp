#include "file/movie_file.h"

namespace toolbox {

Result<OpenedMovie> open_movie_file(const std::string& path, FileAccess access) {
  TRY_ASSIGN(std::unique_ptr<FileSource> source, FileSource::open(path, access));
  return open_movie_file(std::move(source));
}

Result<OpenedMovie> open_movie_file(std::unique_ptr<FileSource> source) {
  const FileSource* disk = source.get();
  TRY_ASSIGN(OpenedMovie opened, open_movie_source(std::move(source)));
  opened.disk = disk;
  return opened;
}

Result<OpenedMovie> open_movie_source(std::unique_ptr<ByteSource> source) {
  auto file = std::make_unique<WindowSource>(std::move(source));
  TRY_ASSIGN(AtomTree tree, AtomTree::read(*file));
  return OpenedMovie{std::move(file), nullptr, std::move(tree)};
}

}  // namespace toolbox
