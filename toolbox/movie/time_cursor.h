// Walks the times of samples in stretches of equal step, from the time table and the display offset
// table together.
#pragma once

#include <algorithm>
#include <cstdint>

#include "movie/run_reader.h"
#include "movie/time_math.h"

namespace toolbox {

/// The tables that give samples their times. Samples count from 0 here.
struct TimeTables {
  TableView deltas;   // stts: samples, ticks to the next sample
  TableView offsets;  // ctts: samples, signed ticks from decode to display time; none without rows
  uint32_t sample_count = 0;
};

/// Samples whose decode and display times both advance by `delta`.
struct Stretch {
  uint32_t first_sample = 0;
  uint32_t count = 0;
  int64_t decode = 0;   // of the first sample, media ticks
  int64_t display = 0;  // of the first sample
  uint32_t delta = 0;

  int64_t decode_of(uint32_t sample) const { return at(decode, sample - first_sample); }
  int64_t display_of(uint32_t sample) const { return at(display, sample - first_sample); }
  int64_t last_display() const { return at(display, count - 1); }
  uint32_t last_sample() const { return first_sample + count - 1; }

 private:
  int64_t at(int64_t first, uint32_t steps) const {
    return advanced(first, uint64_t{steps} * delta);
  }
};

/// Where a walk over the times of samples can start.
struct TimePlace {
  uint32_t sample = 0;
  int64_t decode = 0;
  RunPlace delta;
  RunPlace offset;

  /// Rows gone by: what a walk to here from the start has cost.
  uint64_t rows() const { return uint64_t{delta.row} + offset.row; }
};

/// Walks stretches in decode order. Behind the end of the time table the last step goes on; behind
/// the end of the offset table offsets are 0; what the tables say beyond the sample count is
/// ignored. Errors stick, as in RunReader.
class TimeCursor {
 public:
  using Place = TimePlace;

  explicit TimeCursor(const TimeTables& tables, const Place& place = {})
      : sample_count_(tables.sample_count),
        sample_(place.sample),
        decode_(place.decode),
        deltas_(tables.deltas, place.delta),
        offsets_(tables.offsets, place.offset) {}

  /// Moves to the next stretch. False at the end, and after an error.
  bool next(Stretch& stretch) {
    if (sample_ >= sample_count_ || failed_) return false;
    uint32_t count = sample_count_ - sample_;
    const uint32_t of_delta = deltas_.available();
    const uint32_t of_offset = offsets_.available();
    if (deltas_.failed() || offsets_.failed()) return fail();
    if (of_delta != 0) count = std::min(count, of_delta);
    if (of_offset != 0) count = std::min(count, of_offset);
    const auto offset = of_offset == 0 ? 0 : static_cast<int32_t>(offsets_.value());
    stretch = {sample_, count, decode_, decode_ + offset, deltas_.value()};
    if (of_delta != 0) deltas_.use(count);
    if (of_offset != 0) offsets_.use(count);
    sample_ += count;
    decode_ = advanced(decode_, uint64_t{count} * stretch.delta);
    return true;
  }

  uint32_t sample() const { return sample_; }
  int64_t decode() const { return decode_; }

  /// As Place::rows().
  uint64_t rows() const { return uint64_t{deltas_.place().row} + offsets_.place().row; }

  Place place() const { return {sample_, decode_, deltas_.place(), offsets_.place()}; }
  Status take_status() { return std::move(status_); }

 private:
  bool fail() {
    failed_ = true;
    status_ = deltas_.failed() ? deltas_.take_status() : offsets_.take_status();
    return false;
  }

  uint32_t sample_count_;
  uint32_t sample_;
  int64_t decode_;
  RunReader deltas_;
  RunReader offsets_;
  Status status_;
  bool failed_ = false;
};

}  // namespace toolbox
