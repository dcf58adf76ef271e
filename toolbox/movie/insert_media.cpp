#include "movie/insert_media.h"

#include <algorithm>

#include "movie/edit_splice.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

Status check(const Track& track, int64_t track_start, const MediaSpan& span) {
  if (track.media() == nullptr) return {invalidMedia, "the track has no media"};
  if (track_start < -1) return {invalidTime, "a track has no time " + std::to_string(track_start)};
  TRY_ASSIGN(const int64_t end, media_end(*track.media()));
  if (span.start < 0 || span.start > end) {
    return {invalidTime, "media time " + std::to_string(span.start) + " is outside of the media, " +
                             "which ends at " + std::to_string(end)};
  }
  if (span.duration > end - span.start) {
    return {invalidDuration, "the media ends at " + std::to_string(end) + ", before media time " +
                                 std::to_string(span.start + span.duration)};
  }
  return {};
}

}  // namespace

Result<int64_t> media_end(const Media& media) {
  TRY_ASSIGN(const int64_t duration, media.duration());
  TRY_ASSIGN(const SampleTable* table, media.samples());
  if (table->tables().times.offsets.row_count() == 0) return duration;
  TRY_ASSIGN(const std::optional<DisplayPoint> last,
             table->previous_displayed(SampleTable::Set::kAll, kTimeLimit));
  return last ? std::max(duration, advanced(last->time, last->delta)) : duration;
}

Status insert_media(Track& track, int64_t track_start, const MediaSpan& span) {
  if (span.rate <= 0) return {paramErr, "media is inserted at a rate above 0"};
  if (span.duration < 0) return {invalidDuration, "a span of media cannot be shorter than nothing"};
  if (span.duration == 0) return {};
  TRY(check(track, track_start, span));
  const TimeScales scales{.movie = track.movie().time_scale(),
                          .media = track.media()->time_scale()};
  const Edit edit{.duration = divide_nearest(Int128{span.duration} * scales.movie * kRateOne,
                                             Int128{scales.media} * span.rate),
                  .media_start = span.start,
                  .rate = span.rate};
  // What is shorter than half a movie tick cannot be shown.
  if (edit.duration == 0) return {};
  const int64_t start = track_start == -1 ? track.duration() : track_start;
  if (edit.duration > kTimeLimit - std::max(start, track.duration())) {
    return {invalidDuration, "the track would become longer than any movie can be"};
  }
  std::vector<Edit> edits = filled_edits(track);
  splice_edits(edits, start, {&edit, 1}, scales);
  track.set_edits(explicit_list(std::move(edits)));
  return {};
}

}  // namespace toolbox
