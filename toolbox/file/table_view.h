// A table of equal big-endian rows that stays on disk and is looked at through one small window.
#pragma once

#include <cstdint>
#include <vector>

#include "base/big_endian.h"
#include "file/byte_source.h"

namespace toolbox {

/// Rows of `row_size` bytes each, read in windows of up to 256 KiB that are reused from call to
/// call. Walking a table in order costs one read a window and no memory beyond it; a jump into a
/// large table reads a few rows, and a small table is read once.
class TableView {
 public:
  TableView() = default;
  TableView(ByteRange range, uint32_t row_size, uint64_t row_count);

  uint64_t row_count() const { return row_count_; }
  uint32_t row_size() const { return row_size_; }
  const ByteRange& range() const { return range_; }

  /// The bytes of row `row`, valid until the next call; the following rows of the same window stand
  /// behind it. REQUIRES: row < row_count(). Fails: as ByteSource::read.
  Result<const uint8_t*> row(uint64_t row) const;

  /// How many rows, `row` included, lie in the window that row(row) has just loaded.
  uint64_t rows_in_window(uint64_t row) const { return window_first_ + window_rows_ - row; }

 private:
  Status load_window(uint64_t row) const;

  ByteRange range_;
  uint32_t row_size_ = 1;
  uint64_t row_count_ = 0;
  mutable std::vector<uint8_t> window_;
  mutable uint64_t window_first_ = 0;
  mutable uint64_t window_rows_ = 0;
};

}  // namespace toolbox
