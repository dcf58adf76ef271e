#include "movie/add_samples.h"

#include <algorithm>

#include "base/big_endian.h"
#include "movie/growing_tables.h"
#include "movie/media_data.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

constexpr size_t kDescriptionHeaderBytes = 16;
constexpr size_t kReferenceIndexAt = 14;

// Turns one number of a record round, from the machine's order to that of files.
template <std::integral T>
void turn_round(Bytes& record, size_t at) {
  T number;
  std::memcpy(&number, &record[at], sizeof number);
  store_big_endian(&record[at], number);
}

// A timecode description as callers build it: in the machine's own order. The items of its source
// reference, from byte 34 on, are big-endian like those of user data everywhere.
Result<Bytes> timecode_from_native(ByteView description) {
  constexpr size_t kTimecodeBytes = 34;
  if (description.size() < kTimecodeBytes) {
    return Status(invalidSampleDescription, "a timecode description has at least 34 bytes");
  }
  Bytes turned(description.begin(), description.end());
  for (size_t at : {0, 4, 16, 20, 24, 28}) turn_round<uint32_t>(turned, at);
  turn_round<uint16_t>(turned, kReferenceIndexAt);
  return turned;
}

Result<Bytes> checked_description(const Media& media, ByteView description) {
  if (description.size() >= kDescriptionHeaderBytes) {
    if (load_big_endian<uint32_t>(description.data()) == description.size()) {
      return Bytes(description.begin(), description.end());
    }
    uint32_t native_size = 0;
    std::memcpy(&native_size, description.data(), sizeof native_size);
    if (media.type() == four_cc("tmcd") && native_size == description.size()) {
      return timecode_from_native(description);
    }
  }
  return Status(invalidSampleDescription,
                "a sample description of " + std::to_string(description.size()) +
                    " bytes does not begin with its size, or is too short");
}

// The number of the first data reference that is wanted; it is made when there is none.
template <class IsWanted, class Make>
Result<uint16_t> find_or_add_reference(Media& media, IsWanted is_wanted, Make make) {
  TRY_ASSIGN(const std::vector<Bytes>* known, media.data_references());
  const auto found = std::find_if(known->begin(), known->end(), is_wanted);
  if (found != known->end() && found - known->begin() < UINT16_MAX) {
    return static_cast<uint16_t>(found - known->begin() + 1);
  }
  if (known->size() >= UINT16_MAX) {
    return Status(paramErr, "the media has as many data references as it can count");
  }
  TRY_ASSIGN(std::vector<Bytes> * references, media.change_data_references());
  references->push_back(make());
  return static_cast<uint16_t>(references->size());
}

}  // namespace

Status begin_media_edits(Media& media) {
  if (media.is_open_for_edits()) {
    return {dataAlreadyOpenForWrite, "the media is being edited already; end those edits first"};
  }
  TRY(check_writable(media.track().movie()));
  TRY_ASSIGN(const std::vector<Bytes>* references, media.data_references());
  const bool has_own = references->empty() ||
                       std::any_of(references->begin(), references->end(),
                                   [](const Bytes& entry) { return is_self_reference(entry); });
  if (!has_own) {
    return {couldNotResolveDataRef, "the media's data is in another file, where none can be added"};
  }
  media.set_open_for_edits(true);
  return {};
}

void end_media_edits(Media& media) { media.set_open_for_edits(false); }

Result<uint32_t> find_or_add_description(Media& media, const Bytes& description) {
  TRY_ASSIGN(const std::vector<Bytes>* known, media.descriptions());
  // The last one is the likeliest, and the first of equal ones is no better than another.
  const auto found = std::find(known->rbegin(), known->rend(), description);
  if (found != known->rend()) return static_cast<uint32_t>(known->rend() - found);
  TRY_ASSIGN(std::vector<Bytes> * descriptions, media.change_descriptions());
  descriptions->push_back(description);
  return static_cast<uint32_t>(descriptions->size());
}

Result<uint16_t> find_or_add_data_reference(Media& media, const Bytes& reference) {
  return find_or_add_reference(
      media, [&](const Bytes& entry) { return entry == reference; }, [&] { return reference; });
}

Result<uint16_t> own_data_reference(Media& media) {
  return find_or_add_reference(
      media, [](const Bytes& entry) { return is_self_reference(entry); },
      [&] { return self_reference(media.track().movie()); });
}

void set_data_reference_index(Bytes& description, uint16_t index) {
  store_big_endian(&description[kReferenceIndexAt], index);
}

Result<int64_t> add_samples(Media& media, const NewSamples& samples, ByteView description) {
  if (!media.is_open_for_edits()) {
    return Status(dataNotOpenForWrite, "the media is not being edited; begin media edits first");
  }
  const size_t size = samples.count == 0 ? 0 : samples.data.size() / samples.count;
  if (samples.count == 0 || size * samples.count != samples.data.size() || size > UINT32_MAX) {
    return Status(paramErr, std::to_string(samples.data.size()) + " bytes cannot be divided into " +
                                std::to_string(samples.count) + " samples of one size");
  }
  TRY_ASSIGN(Bytes entry, checked_description(media, description));
  TRY_ASSIGN(const int64_t begin, media.duration());
  Movie& movie = media.track().movie();
  TRY_ASSIGN(const uint16_t reference, own_data_reference(media));
  set_data_reference_index(entry, reference);
  TRY_ASSIGN(const uint32_t number, find_or_add_description(media, entry));
  TRY_ASSIGN(const uint64_t offset, movie.pending().append(samples.data));
  TRY(media.append_samples({.count = samples.count,
                            .delta = samples.duration,
                            .size = static_cast<uint32_t>(size),
                            .is_sync = samples.is_sync},
                           offset, number));
  return begin;
}

}  // namespace toolbox
