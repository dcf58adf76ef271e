// Where each edit lies in movie time, and how movie time and media time map through it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "movie/edit_list.h"

namespace toolbox {

/// Units a second; neither is 0.
struct TimeScales {
  uint32_t movie = 600;
  uint32_t media = 600;
};

/// One edit in its place: movie ticks [start, start + duration) show media from `media_start` on.
struct EditSpan {
  int64_t start = 0;
  int64_t duration = 0;
  int64_t media_start = -1;
  int32_t rate = kRateOne;

  int64_t end() const { return start + duration; }
  bool is_empty() const { return media_start < 0; }
  bool is_held() const { return rate <= 0; }

  /// The media time that movie tick `tick` shows, rounded down; also before `start`. REQUIRES: not
  /// empty.
  int64_t media_time(int64_t tick, TimeScales scales) const;

  /// The first movie tick at which media time `time` is reached. Rounded up: rounded down,
  /// media_time() would lead back to the time before. REQUIRES: neither empty nor held.
  int64_t first_tick(int64_t time, TimeScales scales) const;
};

/// The edits of a track one behind the other, with what the file leaves open filled in:
/// without any edit, the whole media; for a first edit of duration 0, the media to its end.
class EditTimeline {
 public:
  EditTimeline() = default;

  /// `media_duration` in media ticks.
  EditTimeline(const EditList& list, TimeScales scales, int64_t media_duration);

  std::span<const EditSpan> spans() const { return spans_; }
  TimeScales scales() const { return scales_; }

  /// End of the last edit, movie ticks.
  int64_t duration() const { return spans_.empty() ? 0 : spans_.back().end(); }

  /// Length of the empty time in front, movie ticks.
  int64_t leading_empty() const;

  /// Place of the span that covers `tick`, or spans().size() when none does.
  size_t span_at(int64_t tick) const;

  /// Media time at a movie tick, rounded down; -1 in empty edits and outside the track.
  int64_t media_time(int64_t tick) const;

  void check_invariants() const;

 private:
  std::vector<EditSpan> spans_;
  TimeScales scales_;
};

}  // namespace toolbox
