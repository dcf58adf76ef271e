#include "movie/external_files.h"

#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <string_view>

#include "base/big_endian.h"
#include "base/four_cc.h"
#include "foundation/file_locations.h"

namespace toolbox {

namespace {

constexpr size_t kTypeAt = 4;
constexpr size_t kDataAt = 12;

std::string followed(const std::string& path) {
  char buffer[PATH_MAX];
  return ::realpath(path.c_str(), buffer) == nullptr ? std::string() : std::string(buffer);
}

std::vector<std::string> places_of(ByteView entry, const std::string& folder) {
  if (entry.size() < kDataAt) return {};
  const ByteView data = entry.subspan(kDataAt);
  switch (load_big_endian<FourCC>(&entry[kTypeAt])) {
    case four_cc("alis"):
      return file_locations::paths_of_alias(data, folder);
    case four_cc("url "):
      return file_locations::paths_of_url({reinterpret_cast<const char*>(data.data()), data.size()},
                                          folder);
    default:
      return {};
  }
}

}  // namespace

const ExternalFiles::Referred* ExternalFiles::find_referred(const std::string& path) const {
  const auto found = std::find_if(referred_.begin(), referred_.end(),
                                  [&](const Referred& each) { return each.path == path; });
  return found == referred_.end() ? nullptr : &*found;
}

Result<std::shared_ptr<const ExternalFile>> ExternalFiles::resolve(
    ByteView entry, const std::string& movie_path) const {
  const std::string folder =
      movie_path.empty() ? std::string() : file_locations::folder_of(movie_path);
  const std::vector<std::string> places = places_of(entry, folder);
  std::string refused;
  for (const std::string& place : places) {
    const std::string path = followed(place);
    if (path.empty()) continue;
    const Referred* const referred = find_referred(path);
    if (referred == nullptr && !follows_anywhere_ && !file_locations::is_within(path, folder)) {
      if (refused.empty()) refused = path;
      continue;
    }
    struct stat info;
    if (::stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) continue;
    if (referred != nullptr &&
        (referred->device != info.st_dev || referred->inode != info.st_ino)) {
      return Status(couldNotResolveDataRef,
                    "the media data was in " + path +
                        ", which was replaced by another file since; open the movies again");
    }
    TRY_ASSIGN(std::unique_ptr<FileSource> disk, FileSource::open(path, FileAccess::kUnlocked));
    auto file = std::make_shared<ExternalFile>();
    file->disk = disk.get();
    file->source = std::make_unique<WindowSource>(std::move(disk));
    file->path = path;
    return std::shared_ptr<const ExternalFile>(std::move(file));
  }
  if (!refused.empty()) {
    return Status(couldNotResolveDataRef, "the media data is in " + refused +
                                              ", outside of the movie's folder; copy that file "
                                              "into the folder, or give --allow-external");
  }
  if (places.empty()) {
    return Status(
        couldNotResolveDataRef,
        "the media data is elsewhere, and where is said in a way that cannot be followed");
  }
  return Status(couldNotResolveDataRef, "the media data is in " + places.front() +
                                            ", which is not there; put that file back, or into "
                                            "the movie's folder");
}

Result<std::shared_ptr<const ExternalFile>> ExternalFiles::open(ByteView entry,
                                                                const std::string& movie_path) {
  const auto known = std::find_if(opened_.begin(), opened_.end(), [&](const Opened& each) {
    return std::equal(each.entry.begin(), each.entry.end(), entry.begin(), entry.end());
  });
  if (known != opened_.end()) {
    std::rotate(opened_.begin(), known, known + 1);
    return opened_.front().file;
  }
  TRY_ASSIGN(std::shared_ptr<const ExternalFile> file, resolve(entry, movie_path));
  if (opened_.size() == kMostOpen) opened_.pop_back();
  opened_.insert(opened_.begin(), {Bytes(entry.begin(), entry.end()), file});
  return file;
}

Result<std::string> ExternalFiles::refer_to(const FileSource& file) {
  TRY(file.check_unchanged());
  std::string path = followed(file.name());
  struct stat info;
  if (path.empty() || ::fstat(file.descriptor(), &info) != 0) {
    return Status(ioErr, file.name() + ": the file cannot be looked at");
  }
  if (find_referred(path) == nullptr) referred_.push_back({path, info.st_dev, info.st_ino});
  return path;
}

void ExternalFiles::allow(const std::string& place) {
  const std::string path = followed(place);
  struct stat info;
  if (path.empty() || ::stat(path.c_str(), &info) != 0) return;
  if (find_referred(path) == nullptr) referred_.push_back({path, info.st_dev, info.st_ino});
}

Status ExternalFiles::check_referred() const {
  for (const Referred& each : referred_) {
    struct stat info;
    if (::stat(each.path.c_str(), &info) == 0 && each.device == info.st_dev &&
        each.inode == info.st_ino) {
      continue;
    }
    return {fBsyErr, each.path +
                         ": samples of this file were put into the movie, and now it is gone or "
                         "another file is in its place; open the movies again and repeat the "
                         "change"};
  }
  return {};
}

}  // namespace toolbox
