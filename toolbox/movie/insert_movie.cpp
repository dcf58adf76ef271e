#include "movie/insert_movie.h"

#include <algorithm>
#include <map>

#include "base/big_endian.h"
#include "movie/copy_track.h"
#include "movie/edit_splice.h"
#include "movie/share_samples.h"

namespace toolbox {

namespace {

/// What a sound description says of rate and channels; the numbers as they stand.
struct SoundFormat {
  uint64_t rate = 0;
  uint32_t channels = 0;
  bool operator==(const SoundFormat&) const = default;
};

SoundFormat sound_format_of(ByteView description) {
  constexpr size_t kVersionAt = 16;
  constexpr size_t kChannelsAt = 24;
  constexpr size_t kRateAt = 32;  // 16.16
  constexpr size_t kWideRateAt = 40;
  constexpr size_t kWideChannelsAt = 48;
  if (description.size() < kRateAt + 4) return {};
  if (load_big_endian<uint16_t>(&description[kVersionAt]) != 2) {
    return {load_big_endian<uint32_t>(&description[kRateAt]),
            load_big_endian<uint16_t>(&description[kChannelsAt])};
  }
  if (description.size() < kWideChannelsAt + 4) return {};
  return {load_big_endian<uint64_t>(&description[kWideRateAt]),
          load_big_endian<uint32_t>(&description[kWideChannelsAt])};
}

Result<SoundFormat> sound_format_of(const Media& media) {
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, media.descriptions());
  return descriptions->empty() ? SoundFormat() : sound_format_of(descriptions->front());
}

/// Whether what one track shows can be shown by the other. REQUIRES: media of one type.
Result<bool> fit(const Track& source, const Track& target) {
  const Media& from = *source.media();
  const Media& to = *target.media();
  if (from.type() == four_cc("soun")) {
    TRY_ASSIGN(const SoundFormat format, sound_format_of(from));
    TRY_ASSIGN(const SoundFormat other, sound_format_of(to));
    return format == other && from.time_scale() == to.time_scale();
  }
  // How large a timecode is shown matters to nobody.
  return from.type() == four_cc("tmcd") || (source.header().width == target.header().width &&
                                            source.header().height == target.header().height);
}

class MovieInserter {
 public:
  MovieInserter(const Movie& source, Movie& target) : source_(source), target_(target) {}

  /// Everything that can fail; until finish() no track shows anything else.
  Status prepare(int64_t start, int64_t end) {
    length_ = rescale(end - start, source_.time_scale(), target_.time_scale());
    std::map<FourCC, size_t> counts;
    for (const auto& track : source_.tracks()) {
      if (track->media() == nullptr) continue;
      const size_t number = counts[track->media()->type()]++;
      const TimeScales scales{source_.time_scale(), track->media()->time_scale()};
      const std::vector<Edit> edits = edits_between(filled_edits(*track), start, end, scales);
      if (std::all_of(edits.begin(), edits.end(), [](const Edit& e) { return e.is_empty(); })) {
        continue;
      }
      TRY(take(*track, number, edits));
    }
    return {};
  }

  void finish(int64_t at) {
    for (std::unique_ptr<Track>& track : made_) {
      target_.add_track(std::move(track));
    }
    for (const auto& track : target_.tracks()) {
      const auto found = taken_.find(track.get());
      std::vector<Edit> inserted = found == taken_.end() ? std::vector<Edit>() : found->second;
      const bool moves_others = at < track->duration();
      if (inserted.empty() && !moves_others) continue;
      int64_t missing = length_;
      for (const Edit& edit : inserted) missing -= edit.duration;
      if (moves_others && missing > 0) inserted.push_back({.duration = missing});
      std::vector<Edit> edits = filled_edits(*track);
      const uint32_t media_scale =
          track->media() == nullptr ? target_.time_scale() : track->media()->time_scale();
      splice_edits(edits, at, inserted, {target_.time_scale(), media_scale});
      track->set_edits(explicit_list(std::move(edits)));
    }
  }

 private:
  /// The track of the target that takes the n-th of a type; null when none fits.
  Result<Track*> partner_of(const Track& source, size_t number) const {
    for (const auto& track : target_.tracks()) {
      const bool is_of_type =
          track->media() != nullptr && track->media()->type() == source.media()->type();
      if (!is_of_type || number-- > 0) continue;
      TRY_ASSIGN(const bool fits, fit(source, *track));
      return fits ? track.get() : nullptr;
    }
    return nullptr;
  }

  Status take(const Track& source, size_t number, const std::vector<Edit>& edits) {
    TRY_ASSIGN(Track * track, partner_of(source, number));
    if (track != nullptr) {
      Result<std::vector<Edit>> shared = share_samples(source, edits, *track);
      if (shared.ok()) {
        taken_[track] = shared.take();
        return {};
      }
      // Samples that the partner's media cannot hold get a media of their own.
      if (shared.status().code() != featureUnsupported) return shared.take_status();
    }
    TRY_ASSIGN(std::unique_ptr<Track> made, copy_without_samples(source, target_));
    TRY_ASSIGN(taken_[made.get()], share_samples(source, edits, *made));
    made_.push_back(std::move(made));
    return {};
  }

  const Movie& source_;
  Movie& target_;
  int64_t length_ = 0;  // target ticks
  std::map<const Track*, std::vector<Edit>> taken_;
  std::vector<std::unique_ptr<Track>> made_;
};

}  // namespace

Status insert_movie_segment(const Movie& source, int64_t start, int64_t duration, Movie& target,
                            int64_t at) {
  const int64_t source_end = source.duration();
  if (start < 0 || start > source_end) {
    return {invalidTime, "time " + std::to_string(start) + " is not between 0 and the end, " +
                             std::to_string(source_end)};
  }
  if (duration < 0) {
    return {invalidDuration, "a duration cannot be " + std::to_string(duration)};
  }
  if (at < 0) return {invalidTime, "a movie has no time " + std::to_string(at)};
  const int64_t end = duration > source_end - start ? source_end : start + duration;
  const int64_t length = rescale(end - start, source.time_scale(), target.time_scale());
  if (length > kTimeLimit - std::max(target.duration(), at)) {
    return {invalidDuration, "the movie would become longer than any movie can be"};
  }
  if (length == 0) return {};
  MovieInserter inserter(source, target);
  TRY(inserter.prepare(start, end));
  inserter.finish(at);
  return {};
}

}  // namespace toolbox
