#include "movie/edit_timeline.h"

#include <algorithm>
#include <cassert>

namespace toolbox {

namespace {

// How many movie ticks the media takes from `media_start` to its end at `rate`.
int64_t ticks_to_end(int64_t media_start, int32_t rate, TimeScales scales, int64_t media_duration) {
  if (rate <= 0 || media_start >= media_duration) return 0;
  return divide_nearest(Int128{media_duration - media_start} * scales.movie * kRateOne,
                        Int128{scales.media} * rate);
}

}  // namespace

int64_t EditSpan::media_time(int64_t tick, TimeScales scales) const {
  if (is_held()) return media_start;
  return media_start +
         divide_down(Int128{tick - start} * scales.media * rate, Int128{scales.movie} * kRateOne);
}

int64_t EditSpan::first_tick(int64_t time, TimeScales scales) const {
  return start + divide_up(Int128{time - media_start} * scales.movie * kRateOne,
                           Int128{scales.media} * rate);
}

EditTimeline::EditTimeline(const EditList& list, TimeScales scales, int64_t media_duration)
    : scales_(scales) {
  assert(scales.movie > 0 && scales.media > 0);
  if (list.is_implicit()) {
    const int64_t whole = ticks_to_end(0, kRateOne, scales, media_duration);
    if (whole > 0) spans_.push_back({.duration = whole, .media_start = 0});
    return;
  }
  spans_.reserve(list.edits().size());
  int64_t start = 0;
  bool only_empties_so_far = true;
  for (const Edit& edit : list.edits()) {
    EditSpan span{start, edit.duration, edit.media_start, edit.rate};
    if (only_empties_so_far && !edit.is_empty() && edit.duration == 0) {
      span.duration = ticks_to_end(edit.media_start, edit.rate, scales, media_duration);
    }
    span.duration = std::min(span.duration, kTimeLimit - start);
    only_empties_so_far = only_empties_so_far && edit.is_empty();
    spans_.push_back(span);
    start = span.end();
  }
  check_invariants();
}

int64_t EditTimeline::leading_empty() const {
  int64_t length = 0;
  for (const EditSpan& span : spans_) {
    if (!span.is_empty()) break;
    length = span.end();
  }
  return length;
}

size_t EditTimeline::span_at(int64_t tick) const {
  if (tick < 0 || tick >= duration()) return spans_.size();
  // Of spans that start at one tick, all but the last are of no length.
  const auto above =
      std::upper_bound(spans_.begin(), spans_.end(), tick,
                       [](int64_t t, const EditSpan& span) { return t < span.start; });
  return static_cast<size_t>(above - spans_.begin()) - 1;
}

int64_t EditTimeline::media_time(int64_t tick) const {
  const size_t place = span_at(tick);
  if (place == spans_.size() || spans_[place].is_empty()) return -1;
  return spans_[place].media_time(tick, scales_);
}

void EditTimeline::check_invariants() const {
  [[maybe_unused]] int64_t end = 0;
  for ([[maybe_unused]] const EditSpan& span : spans_) {
    assert(span.start == end && span.duration >= 0 && span.end() <= kTimeLimit);
    end = span.end();
  }
}

}  // namespace toolbox
