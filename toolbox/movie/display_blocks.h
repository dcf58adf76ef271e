// Finds display times among blocks of samples of which only the smallest and the largest time is
// kept.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/status.h"

namespace toolbox {

/// A sample and when it is displayed.
struct DisplayPoint {
  int64_t time = 0;     // media ticks
  uint32_t sample = 0;  // from 0
  uint32_t delta = 0;   // ticks to the next sample in decode order
};

/// Keeps the best of the points offered to it: of equal times the last sample.
class NextPoint {
 public:
  explicit NextPoint(int64_t after) : after_(after) {}
  void offer(const DisplayPoint& point) {
    if (point.time <= after_) return;
    if (!best || point.time < best->time ||
        (point.time == best->time && point.sample > best->sample))
      best = point;
  }
  std::optional<DisplayPoint> best;

 private:
  int64_t after_;
};
class PreviousPoint {
 public:
  explicit PreviousPoint(int64_t last) : last_(last) {}
  void offer(const DisplayPoint& point) {
    if (point.time > last_) return;
    if (!best || point.time > best->time ||
        (point.time == best->time && point.sample > best->sample))
      best = point;
  }
  std::optional<DisplayPoint> best;

 private:
  int64_t last_;
};

/// The range of display times of each block, blocks in decode order. Reordering is local in real
/// files, so that a search looks into one to three blocks; in a file made to upset us it looks into
/// more, and is still right.
class DisplayBlocks {
 public:
  void add(int64_t smallest, int64_t largest) {
    const int64_t so_far =
        blocks_.empty() ? largest : std::max(blocks_.back().largest_up_to, largest);
    blocks_.push_back({smallest, largest, so_far, smallest});
  }

  /// To be called once, when the last block is there.
  void finish() {
    for (size_t i = blocks_.size(); i-- > 1;) {
      blocks_[i - 1].smallest_from = std::min(blocks_[i - 1].smallest, blocks_[i].smallest_from);
    }
  }

  size_t count() const { return blocks_.size(); }

  /// The point with the smallest time > `after`. `look(block, next)` offers every point of a block,
  /// or at least its best.
  template <class Look>
  Result<std::optional<DisplayPoint>> next(int64_t after, Look look) const {
    NextPoint next(after);
    auto block = std::partition_point(blocks_.begin(), blocks_.end(),
                                      [&](const Block& b) { return b.largest_up_to <= after; });
    for (; block != blocks_.end(); ++block) {
      if (next.best && block->smallest_from > next.best->time) break;
      if (block->largest <= after || (next.best && block->smallest > next.best->time)) continue;
      TRY(look(static_cast<size_t>(block - blocks_.begin()), next));
    }
    return next.best;
  }

  /// The point with the largest time <= `last`.
  template <class Look>
  Result<std::optional<DisplayPoint>> previous(int64_t last, Look look) const {
    PreviousPoint previous(last);
    auto block = std::partition_point(blocks_.begin(), blocks_.end(),
                                      [&](const Block& b) { return b.smallest_from <= last; });
    while (block != blocks_.begin()) {
      --block;
      if (previous.best && block->largest_up_to < previous.best->time) break;
      if (block->smallest > last || (previous.best && block->largest < previous.best->time))
        continue;
      TRY(look(static_cast<size_t>(block - blocks_.begin()), previous));
    }
    return previous.best;
  }

 private:
  struct Block {
    int64_t smallest;
    int64_t largest;
    int64_t largest_up_to;  // of this block and those before it: ascends
    int64_t smallest_from;  // of this block and those behind it: ascends
  };
  std::vector<Block> blocks_;
};

}  // namespace toolbox
