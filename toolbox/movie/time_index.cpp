#include "movie/time_index.h"

#include <algorithm>
#include <cassert>

namespace toolbox {

namespace {

constexpr uint64_t kRowsInBlock = 512;

// The points of a stretch that a search can want.
void offer(const Stretch& stretch, int64_t after, NextPoint& next) {
  uint32_t sample = stretch.first_sample;
  if (stretch.display <= after) {
    if (stretch.last_display() <= after) return;
    // The last sample is later than `after`, so the step is not 0 and the division stays in range.
    const auto steps = static_cast<uint64_t>(after - stretch.display) / stretch.delta + 1;
    sample += static_cast<uint32_t>(steps);
  } else if (stretch.delta == 0) {
    sample = stretch.last_sample();
  }
  next.offer({stretch.display_of(sample), sample, stretch.delta});
}

void offer(const Stretch& stretch, int64_t last, PreviousPoint& previous) {
  if (stretch.display > last) return;
  uint32_t sample = stretch.last_sample();
  if (stretch.last_display() > last) {
    const auto steps = static_cast<uint64_t>(last - stretch.display) / stretch.delta;
    sample = stretch.first_sample + static_cast<uint32_t>(steps);
  }
  previous.offer({stretch.display_of(sample), sample, stretch.delta});
}

}  // namespace

Result<TimeIndex> TimeIndex::make(const TimeTables& tables) {
  TimeIndex index(tables);
  TimeCursor cursor(tables);
  TimeCursor::Place start = cursor.place();
  int64_t smallest = 0;
  int64_t largest = 0;
  bool block_is_open = false;
  PreviousPoint latest(kTimeLimit * 2);
  const auto close_block = [&] {
    index.starts_.push_back(start);
    index.blocks_.add(smallest, largest);
    block_is_open = false;
  };
  for (Stretch stretch; cursor.next(stretch);) {
    smallest = block_is_open ? std::min(smallest, stretch.display) : stretch.display;
    largest = block_is_open ? std::max(largest, stretch.last_display()) : stretch.last_display();
    block_is_open = true;
    latest.offer({stretch.last_display(), stretch.last_sample(), stretch.delta});
    if (cursor.rows() - start.rows() >= kRowsInBlock) {
      close_block();
      start = cursor.place();
    }
  }
  TRY(cursor.take_status());
  if (block_is_open) close_block();
  index.blocks_.finish();
  index.duration_ = cursor.decode();
  index.last_displayed_ = latest.best;
  return index;
}

Result<TimePlace> TimeIndex::place_of(uint32_t sample) const {
  assert(sample < tables_->sample_count);
  const auto above =
      std::upper_bound(starts_.begin(), starts_.end(), sample,
                       [](uint32_t s, const TimeCursor::Place& place) { return s < place.sample; });
  TimePlace place = above[-1];
  TimeCursor cursor(*tables_, place);
  for (Stretch stretch; cursor.next(stretch); place = cursor.place()) {
    if (sample <= stretch.last_sample()) return place;
  }
  TRY(cursor.take_status());
  return Status(internalQuickTimeError, "the sample time index has lost a sample");
}

Result<Stretch> TimeIndex::stretch_of(uint32_t sample) const {
  TRY_ASSIGN(const TimePlace place, place_of(sample));
  TimeCursor cursor(*tables_, place);
  Stretch stretch;
  cursor.next(stretch);
  TRY(cursor.take_status());
  return stretch;
}

Result<std::optional<uint32_t>> TimeIndex::sample_at_decode_time(int64_t time) const {
  if (time < 0 || time >= duration_) return std::optional<uint32_t>{};
  const auto above =
      std::upper_bound(starts_.begin(), starts_.end(), time,
                       [](int64_t t, const TimeCursor::Place& place) { return t < place.decode; });
  TimeCursor cursor(*tables_, above[-1]);
  std::optional<uint32_t> found;
  for (Stretch stretch; cursor.next(stretch) && stretch.decode <= time;) {
    uint64_t steps = stretch.count - 1;
    if (stretch.delta != 0) {
      steps = std::min(steps, static_cast<uint64_t>(time - stretch.decode) / stretch.delta);
    }
    found = stretch.first_sample + static_cast<uint32_t>(steps);
  }
  TRY(cursor.take_status());
  return found;
}

Result<std::optional<DisplayPoint>> TimeIndex::next_displayed(int64_t after) const {
  return blocks_.next(after, [&](size_t block, NextPoint& next) {
    TimeCursor cursor(*tables_, starts_[block]);
    const uint32_t end = end_sample(block);
    for (Stretch stretch; cursor.sample() < end && cursor.next(stretch);)
      offer(stretch, after, next);
    return cursor.take_status();
  });
}

Result<std::optional<DisplayPoint>> TimeIndex::previous_displayed(int64_t last) const {
  return blocks_.previous(last, [&](size_t block, PreviousPoint& previous) {
    TimeCursor cursor(*tables_, starts_[block]);
    const uint32_t end = end_sample(block);
    for (Stretch stretch; cursor.sample() < end && cursor.next(stretch);)
      offer(stretch, last, previous);
    return cursor.take_status();
  });
}

}  // namespace toolbox
