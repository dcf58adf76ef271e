// Answers when samples are decoded and displayed, without ever expanding a table.
#pragma once

#include <optional>
#include <vector>

#include "movie/display_blocks.h"
#include "movie/time_cursor.h"

namespace toolbox {

/// An index over the time tables: a place to start walking from, every thousand rows. Made in one
/// pass.
class TimeIndex {
 public:
  /// Borrows `tables`. Fails: as ByteSource::read.
  static Result<TimeIndex> make(const TimeTables& tables);

  /// Sum of all sample durations, media ticks.
  int64_t duration() const { return duration_; }

  /// The sample that is displayed last, if there is any sample.
  const std::optional<DisplayPoint>& last_displayed() const { return last_displayed_; }

  /// The stretch that holds a sample. REQUIRES: sample < the sample count.
  Result<Stretch> stretch_of(uint32_t sample) const;

  /// Where a cursor has to start whose first stretch is the one that holds the sample. REQUIRES: as
  /// stretch_of().
  Result<TimePlace> place_of(uint32_t sample) const;

  /// The sample being decoded at a media time; of several at one time the last.
  /// Nothing before 0 and from the duration on.
  Result<std::optional<uint32_t>> sample_at_decode_time(int64_t time) const;

  /// The sample displayed next after `after`, and the one displayed last up to and including
  /// `last`.
  Result<std::optional<DisplayPoint>> next_displayed(int64_t after) const;
  Result<std::optional<DisplayPoint>> previous_displayed(int64_t last) const;

 private:
  explicit TimeIndex(const TimeTables& tables) : tables_(&tables) {}

  // The walk over block `block` ends where the next one starts.
  uint32_t end_sample(size_t block) const {
    return block + 1 < starts_.size() ? starts_[block + 1].sample : tables_->sample_count;
  }

  const TimeTables* tables_;
  std::vector<TimeCursor::Place> starts_;
  DisplayBlocks blocks_;
  int64_t duration_ = 0;
  std::optional<DisplayPoint> last_displayed_;
};

}  // namespace toolbox
