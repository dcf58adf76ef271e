#include "movie/media_references.h"

#include <sys/stat.h>

#include "atoms/atom_writer.h"
#include "atoms/data_references.h"
#include "base/big_endian.h"
#include "foundation/file_locations.h"
#include "foundation/file_references.h"
#include "movie/media_data.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

constexpr size_t kTypeAt = 4;
constexpr size_t kDataAt = 12;

Bytes bytes_of(const std::string& text) { return {text.begin(), text.end()}; }

bool is_there(const std::string& path) {
  struct stat info;
  return ::stat(path.c_str(), &info) == 0;
}

Status check_index(const std::vector<Bytes>& references, int64_t index) {
  if (index >= 1 && static_cast<uint64_t>(index) <= references.size()) return {};
  return {badDataRefIndex, "the media has no data reference number " + std::to_string(index) +
                               "; it has " + std::to_string(references.size())};
}

Result<MediaReference> reference_to_self(const Movie& movie) {
  MediaReference self;
  self.type = four_cc("alis");
  self.is_self = true;
  const std::string path = own_path(movie);
  if (path.empty()) {
    self.is_resolved = false;
    return self;
  }
  TRY_ASSIGN(const std::string absolute, file_references::absolute_path(path));
  self.data = bytes_of(file_locations::alias_to(absolute));
  return self;
}

/// Whether a place is the file that the movie was read from.
bool is_own_file(const Movie& movie, const std::string& path) {
  struct stat own;
  struct stat other;
  const std::string mine = own_path(movie);
  return !mine.empty() && ::stat(mine.c_str(), &own) == 0 && ::stat(path.c_str(), &other) == 0 &&
         own.st_dev == other.st_dev && own.st_ino == other.st_ino;
}

std::vector<std::string> places_of(FourCC type, ByteView data, const std::string& folder) {
  if (type == four_cc("alis")) return file_locations::paths_of_alias(data, folder);
  if (type != four_cc("url ")) return {};
  return file_locations::paths_of_url({reinterpret_cast<const char*>(data.data()), data.size()},
                                      folder);
}

}  // namespace

Result<MediaReference> media_reference(const Media& media, int64_t index) {
  const Movie& movie = media.track().movie();
  TRY_ASSIGN(const std::vector<Bytes>* references, media.data_references());
  TRY(check_index(*references, index));
  const Bytes& entry = (*references)[static_cast<size_t>(index) - 1];
  if (is_self_reference(entry)) return reference_to_self(movie);
  MediaReference reference;
  if (entry.size() < kDataAt) return reference;
  reference.type = load_big_endian<FourCC>(&entry[kTypeAt]);
  reference.data.assign(entry.begin() + kDataAt, entry.end());
  const std::vector<std::string> places = places_of(reference.type, reference.data, "");
  if (!places.empty() && is_there(places.front())) return reference;
  const Result<std::shared_ptr<const ExternalFile>> found =
      open_external(media, static_cast<uint16_t>(index));
  reference.is_resolved = found.ok();
  if (found.ok() && reference.type == four_cc("alis")) {
    reference.data = bytes_of(file_locations::alias_to(found.value()->path));
  }
  return reference;
}

Status set_media_reference(Media& media, int64_t index, FourCC type, ByteView data) {
  const Movie& movie = media.track().movie();
  TRY_ASSIGN(const std::vector<Bytes>* references, media.data_references());
  TRY(check_index(*references, index));
  if (type == 0 || data.empty()) {
    return {invalidDataRef, "a data reference has a type and data; this one does not"};
  }
  const std::string own = own_path(movie);
  const std::string folder = own.empty() ? std::string() : file_locations::folder_of(own);
  Bytes made;
  for (const std::string& place : places_of(type, data, folder)) {
    if (!is_there(place)) continue;
    if (is_own_file(movie, place)) made = self_reference(movie);
    movie.external_files().allow(place);
    break;
  }
  if (made.empty()) {
    DataReferenceEntry entry;
    entry.data.assign(data.begin(), data.end());
    AtomWriter writer;
    writer.atom(type, entry);
    made = writer.take();
  }
  TRY_ASSIGN(std::vector<Bytes> * changed, media.change_data_references());
  (*changed)[static_cast<size_t>(index) - 1] = std::move(made);
  return {};
}

}  // namespace toolbox
