#include "movie/edit_segments.h"

#include <algorithm>

#include "movie/edit_splice.h"
#include "movie/share_samples.h"

namespace toolbox {

namespace {

TimeScales scales_of(const Track& track) {
  const uint32_t movie = track.movie().time_scale();
  return {.movie = movie, .media = track.media() == nullptr ? movie : track.media()->time_scale()};
}

Status check_start(int64_t start, int64_t end) {
  if (start >= 0 && start <= end) return {};
  return {invalidTime, "time " + std::to_string(start) + " is not between 0 and the end, " +
                           std::to_string(end)};
}

Status check_duration(int64_t duration) {
  if (duration >= 0) return {};
  return {invalidDuration, "a duration cannot be " + std::to_string(duration)};
}

Status check_segment(int64_t start, int64_t duration, int64_t end) {
  TRY(check_start(start, end));
  return check_duration(duration);
}

Status check_room(int64_t length, int64_t added) {
  if (added <= kTimeLimit - length) return {};
  return {invalidDuration, "the track would become longer than any movie can be"};
}

/// `start` and `duration` later, not beyond `end`.
int64_t segment_end(int64_t start, int64_t duration, int64_t end) {
  return duration > end - start ? end : start + duration;
}

void put(Track& track, std::vector<Edit> edits) {
  track.set_edits(explicit_list(std::move(edits)));
}

/// Head, middle and tail put together; an edit that was cut and is whole again stays one.
std::vector<Edit> joined(std::vector<Edit> head, std::span<const Edit> middle,
                         std::span<const Edit> tail) {
  head.insert(head.end(), middle.begin(), middle.end());
  head.insert(head.end(), tail.begin(), tail.end());
  return head;
}

int64_t length_of(std::span<const Edit> edits) {
  int64_t length = 0;
  for (const Edit& edit : edits) length = advanced(length, static_cast<uint64_t>(edit.duration));
  return length;
}

int32_t scaled_rate(int32_t rate, int64_t old_duration, int64_t new_duration) {
  const int64_t scaled = divide_nearest(Int128{rate} * old_duration, new_duration);
  return static_cast<int32_t>(std::clamp<int64_t>(scaled, 1, INT32_MAX));
}

std::vector<Edit> scaled(std::span<const Edit> edits, int64_t old_duration, int64_t new_duration) {
  std::vector<Edit> result;
  int64_t at = 0;
  int64_t new_at = 0;
  for (Edit edit : edits) {
    at += edit.duration;
    const int64_t new_end = divide_nearest(Int128{at} * new_duration, old_duration);
    edit.duration = new_end - new_at;
    // A held picture is held longer.
    if (!edit.is_empty() && edit.rate > 0) {
      edit.rate = scaled_rate(edit.rate, old_duration, new_duration);
    }
    if (edit.duration > 0) result.push_back(edit);
    new_at = new_end;
  }
  return result;
}

bool has_same_media(const Track& a, const Track& b) {
  if (&a == &b) return true;
  if (a.media() == nullptr || b.media() == nullptr || &a.movie() != &b.movie()) return false;
  // A clone shares the samples of its original as long as neither got others.
  return a.media()->atom() != kNoAtom && a.media()->atom() == b.media()->atom() &&
         !a.media()->samples_changed() && !b.media()->samples_changed();
}

}  // namespace

Status delete_segment(Track& track, int64_t start, int64_t duration) {
  const int64_t end = track.duration();
  TRY(check_segment(start, duration, end));
  if (duration == 0 || start == end) return {};
  const TimeScales scales = scales_of(track);
  const std::vector<Edit> edits = filled_edits(track);
  put(track, joined(edits_between(edits, 0, start, scales), {},
                    edits_between(edits, segment_end(start, duration, end), end, scales)));
  return {};
}

Status insert_empty_segment(Track& track, int64_t start, int64_t duration) {
  const int64_t end = track.duration();
  TRY(check_segment(start, duration, end));
  if (start == end) {
    return {invalidTime,
            "empty time cannot be added at the end of a track, " + std::to_string(end)};
  }
  if (duration == 0) return {};
  TRY(check_room(end, duration));
  std::vector<Edit> edits = filled_edits(track);
  const Edit empty{.duration = duration};
  splice_edits(edits, start, {&empty, 1}, scales_of(track));
  put(track, std::move(edits));
  return {};
}

Status scale_segment(Track& track, int64_t start, int64_t old_duration, int64_t new_duration) {
  const int64_t end = track.duration();
  TRY(check_segment(start, old_duration, end));
  TRY(check_duration(new_duration));
  if (old_duration == 0) return {invalidDuration, "a segment of no duration cannot be scaled"};
  if (new_duration == 0) return delete_segment(track, start, old_duration);
  if (old_duration == new_duration || start == end) return {};
  TRY(check_room(end, new_duration));
  const TimeScales scales = scales_of(track);
  const std::vector<Edit> edits = filled_edits(track);
  const int64_t stop = segment_end(start, old_duration, end);
  put(track, joined(edits_between(edits, 0, start, scales),
                    scaled(edits_between(edits, start, stop, scales), old_duration, new_duration),
                    edits_between(edits, stop, end, scales)));
  return {};
}

Status insert_segment(const Track& source, int64_t start, int64_t duration, Track& target,
                      int64_t at) {
  TRY(check_segment(start, duration, source.duration()));
  if (at < 0) return {invalidTime, "a track has no time " + std::to_string(at)};
  const int64_t stop = segment_end(start, duration, source.duration());
  std::vector<Edit> taken = edits_between(filled_edits(source), start, stop, scales_of(source));
  TRY(check_room(std::max(target.duration(), at),
                 rescale(stop - start, source.movie().time_scale(), target.movie().time_scale())));
  if (!has_same_media(source, target)) {
    TRY_ASSIGN(taken, share_samples(source, taken, target));
  }
  if (taken.empty()) return {};
  std::vector<Edit> edits = filled_edits(target);
  splice_edits(edits, at, taken, scales_of(target));
  put(target, std::move(edits));
  return {};
}

Status set_offset(Track& track, int64_t offset) {
  if (offset < 0 || offset > kTimeLimit) {
    return {invalidTime, "a track cannot begin at " + std::to_string(offset)};
  }
  const std::vector<Edit> edits = filled_edits(track);
  const int64_t old_offset = track.timeline().leading_empty();
  if (offset == old_offset) return {};
  TRY(check_room(track.duration() - old_offset, offset));
  std::vector<Edit> moved = edits_between(edits, old_offset, track.duration(), scales_of(track));
  if (offset > 0) moved.insert(moved.begin(), Edit{.duration = offset});
  put(track, std::move(moved));
  return {};
}

Status delete_movie_segment(Movie& movie, int64_t start, int64_t duration) {
  TRY(check_segment(start, duration, movie.duration()));
  for (const auto& track : movie.tracks()) {
    if (start < track->duration()) TRY(delete_segment(*track, start, duration));
  }
  return {};
}

Status insert_empty_movie_segment(Movie& movie, int64_t start, int64_t duration) {
  const int64_t end = movie.duration();
  TRY(check_segment(start, duration, end));
  if (start == end) {
    return {invalidTime,
            "empty time cannot be added at the end of a movie, " + std::to_string(end)};
  }
  TRY(check_room(end, duration));
  for (const auto& track : movie.tracks()) {
    if (start < track->duration()) TRY(insert_empty_segment(*track, start, duration));
  }
  return {};
}

Status scale_movie_segment(Movie& movie, int64_t start, int64_t old_duration,
                           int64_t new_duration) {
  TRY(check_segment(start, old_duration, movie.duration()));
  TRY(check_duration(new_duration));
  if (old_duration == 0) return {invalidDuration, "a segment of no duration cannot be scaled"};
  TRY(check_room(movie.duration(), new_duration));
  for (const auto& track : movie.tracks()) {
    if (start < track->duration()) TRY(scale_segment(*track, start, old_duration, new_duration));
  }
  return {};
}

Status repeat_movie_segment(Movie& movie, int64_t start, int64_t duration, int64_t at) {
  TRY(check_segment(start, duration, movie.duration()));
  if (at < 0) return {invalidTime, "a movie has no time " + std::to_string(at)};
  const int64_t length = segment_end(start, duration, movie.duration()) - start;
  TRY(check_room(std::max(movie.duration(), at), length));
  if (length == 0) return {};
  for (const auto& track : movie.tracks()) {
    const TimeScales scales = scales_of(*track);
    std::vector<Edit> edits = filled_edits(*track);
    std::vector<Edit> taken = edits_between(edits, start, start + length, scales);
    const int64_t missing = length - length_of(taken);
    if (at >= track->duration()) {
      if (taken.empty()) continue;
    } else if (missing > 0) {
      taken.push_back({.duration = missing});
    }
    splice_edits(edits, at, taken, scales);
    put(*track, std::move(edits));
  }
  return {};
}

}  // namespace toolbox
