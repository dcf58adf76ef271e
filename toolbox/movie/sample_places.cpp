#include "movie/sample_places.h"

#include <sys/stat.h>

#include <algorithm>
#include <cassert>

#include "movie/add_samples.h"
#include "movie/media_data.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

constexpr uint32_t kPendingFile = UINT32_MAX;  // not a file yet
constexpr size_t kDescriptionHeaderBytes = 16;

bool is_same_file(const FileSource* a, const FileSource* b) {
  struct stat first;
  struct stat second;
  return a != nullptr && b != nullptr && ::fstat(a->descriptor(), &first) == 0 &&
         ::fstat(b->descriptor(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

}  // namespace

SamplePlaces::SamplePlaces(const Media& source, Media& target)
    : source_(source),
      target_(target),
      within_movie_(&source.track().movie() == &target.track().movie()) {
  const bool has_file = source.track().movie().opened().disk != nullptr;
  const bool wants_copies = target.track().movie().session().copies_samples;
  copies_all_ = target.is_open_for_edits() || (!within_movie_ && (wants_copies || !has_file));
}

bool SamplePlaces::is_copied(const SamplePiece& piece) const {
  return copies_all_ || (!within_movie_ && PendingData::is_pending(piece.offset));
}

Result<uint32_t> SamplePlaces::file_of(const SamplePiece& piece) const {
  if (PendingData::is_pending(piece.offset)) return kPendingFile;
  TRY_ASSIGN(const uint16_t reference, external_reference_of(source_, piece.description));
  return uint32_t{reference};
}

Status SamplePlaces::survey(const SamplePiece& piece) {
  if (!is_copied(piece) || piece.bytes() == 0) return {};
  TRY_ASSIGN(const uint32_t file, file_of(piece));
  // What reaches beyond all files is found out by who reads it.
  const uint64_t end =
      piece.bytes() > UINT64_MAX - piece.offset ? UINT64_MAX : piece.offset + piece.bytes();
  if (!stretches_.empty() && stretches_.back().file == file &&
      stretches_.back().end == piece.offset) {
    stretches_.back().end = end;
  } else {
    stretches_.push_back({file, piece.offset, end, piece.description});
  }
  return {};
}

void SamplePlaces::merge() {
  std::sort(stretches_.begin(), stretches_.end());
  std::vector<Stretch> merged;
  for (const Stretch& stretch : stretches_) {
    if (!merged.empty() && merged.back().file == stretch.file &&
        stretch.begin <= merged.back().end) {
      merged.back().end = std::max(merged.back().end, stretch.end);
    } else {
      merged.push_back(stretch);
    }
  }
  stretches_ = std::move(merged);
}

Status SamplePlaces::copy() {
  merge();
  PendingData& pending = target_.track().movie().pending();
  const uint64_t before = pending.size();
  for (Stretch& stretch : stretches_) {
    if (Status status = copy_stretch(stretch); !status.ok()) {
      pending.cut(before);
      return status;
    }
  }
  return {};
}

Status SamplePlaces::copy_stretch(Stretch& stretch) {
  constexpr uint64_t kAtOnce = 256 * 1024;
  PendingData& pending = target_.track().movie().pending();
  stretch.copied_to = PendingData::kPendingBase + pending.size();
  Bytes window;
  for (uint64_t at = stretch.begin; at < stretch.end; at += window.size()) {
    window.resize(std::min(stretch.end - at, kAtOnce));
    TRY(read_media_data(source_, stretch.description, at, window));
    TRY(pending.append(window).take_status());
  }
  return {};
}

Result<SamplePlace> SamplePlaces::place_of(const SamplePiece& piece) {
  SamplePlace place{.offset = piece.offset};
  const bool copied = is_copied(piece);
  if (copied && piece.bytes() == 0) {
    place.offset = PendingData::kPendingBase;
  } else if (copied) {
    TRY_ASSIGN(const uint32_t file, file_of(piece));
    const Stretch wanted{file, piece.offset};
    const auto behind = std::upper_bound(stretches_.begin(), stretches_.end(), wanted);
    assert(behind != stretches_.begin());
    const Stretch& stretch = *std::prev(behind);
    place.offset = stretch.copied_to + (piece.offset - stretch.begin);
  }
  TRY_ASSIGN(place.description, description_for(piece.description, copied));
  return place;
}

Result<uint32_t> SamplePlaces::description_for(uint32_t description, bool is_copied) {
  const auto known = descriptions_.find({description, is_copied});
  if (known != descriptions_.end()) return known->second;
  TRY_ASSIGN(const std::vector<Bytes>* entries, source_.descriptions());
  if (description == 0 || description > entries->size() ||
      (*entries)[description - 1].size() < kDescriptionHeaderBytes) {
    return Status(invalidSampleDescription,
                  "track " + std::to_string(source_.track().id()) + ": samples have description " +
                      std::to_string(description) + ", which is missing or damaged");
  }
  Bytes entry = (*entries)[description - 1];
  TRY_ASSIGN(const uint16_t reference, reference_for(description, is_copied));
  set_data_reference_index(entry, reference);
  TRY_ASSIGN(const uint32_t number, find_or_add_description(target_, entry));
  descriptions_[{description, is_copied}] = number;
  return number;
}

Result<uint16_t> SamplePlaces::reference_for(uint32_t description, bool is_copied) {
  if (is_copied) return own_data_reference(target_);
  TRY_ASSIGN(const uint16_t external, external_reference_of(source_, description));
  if (external == 0) {
    return within_movie_ ? own_data_reference(target_)
                         : reference_to_file(*source_.track().movie().opened().disk);
  }
  if (within_movie_) {
    TRY_ASSIGN(const std::vector<Bytes>* references, source_.data_references());
    return find_or_add_data_reference(target_, (*references)[external - 1u]);
  }
  TRY_ASSIGN(const std::shared_ptr<const ExternalFile> file, open_external(source_, external));
  return reference_to_file(*file->disk);
}

Result<uint16_t> SamplePlaces::reference_to_file(const FileSource& file) {
  const Movie& movie = target_.track().movie();
  if (is_same_file(&file, movie.opened().disk)) return own_data_reference(target_);
  TRY_ASSIGN(const std::string path, movie.external_files().refer_to(file));
  return find_or_add_data_reference(target_, external_reference(movie, path));
}

}  // namespace toolbox
