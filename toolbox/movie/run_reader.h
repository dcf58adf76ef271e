// Walks a table of runs (how many samples, which value) from any row on, one window after the
// other.
#pragma once

#include <cstdint>

#include "file/table_view.h"

namespace toolbox {

/// A place in a run table: a row and how much of its run is used up, and the value in force there.
struct RunPlace {
  uint32_t row = 0;
  uint32_t used = 0;
  uint32_t value = 0;
};

/// Rows are a 32-bit count and a 32-bit value. Runs of no length are skipped. Only one reader at a
/// time may walk a view. Errors stick: after a failed read the table seems to end, and status()
/// tells why.
class RunReader {
 public:
  explicit RunReader(const TableView& view, RunPlace place = {}) : view_(&view), place_(place) {}

  /// Samples left in the run at hand; 0 behind the last run. value() is then that of the last run.
  uint32_t available() {
    while (place_.row < view_->row_count()) {
      if (!loaded_ && !load()) return 0;
      if (place_.used < count_) {
        place_.value = row_value_;
        return count_ - place_.used;
      }
      ++place_.row;
      place_.used = 0;
      loaded_ = false;
    }
    return 0;
  }

  uint32_t value() const { return place_.value; }

  /// REQUIRES: samples <= available().
  void use(uint32_t samples) { place_.used += samples; }

  /// Where a reader has to start to go on from here.
  const RunPlace& place() const { return place_; }

  bool failed() const { return failed_; }
  Status take_status() { return std::move(status_); }

 private:
  bool load() {
    if (rows_ahead_ == 0) {
      Result<const uint8_t*> row = view_->row(place_.row);
      if (!row.ok()) return fail(row.take_status());
      next_ = row.value();
      rows_ahead_ = view_->rows_in_window(place_.row);
    }
    count_ = load_big_endian<uint32_t>(next_);
    row_value_ = load_big_endian<uint32_t>(next_ + 4);
    next_ += 8;
    --rows_ahead_;
    loaded_ = true;
    return true;
  }

  bool fail(Status status) {
    failed_ = true;
    status_ = std::move(status);
    place_.row = static_cast<uint32_t>(view_->row_count());
    return false;
  }

  const TableView* view_;
  RunPlace place_;
  uint32_t count_ = 0;
  uint32_t row_value_ = 0;
  bool loaded_ = false;
  const uint8_t* next_ = nullptr;
  uint64_t rows_ahead_ = 0;
  bool failed_ = false;
  Status status_;
};

}  // namespace toolbox
