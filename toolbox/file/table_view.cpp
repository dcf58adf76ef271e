#include "file/table_view.h"

#include <algorithm>
#include <cassert>

namespace toolbox {

namespace {
constexpr uint64_t kWindowBytes = 256 * 1024;
constexpr uint64_t kJumpBytes = 8 * 1024;
constexpr uint64_t kSmallTableBytes = 64 * 1024;
}  // namespace

TableView::TableView(ByteRange range, uint32_t row_size, uint64_t row_count)
    : range_(range), row_size_(row_size), row_count_(row_count) {
  assert(row_size > 0 && row_count <= range.size / row_size);
}

Result<const uint8_t*> TableView::row(uint64_t row) const {
  assert(row < row_count_);
  if (row < window_first_ || row - window_first_ >= window_rows_) TRY(load_window(row));
  return window_.data() + (row - window_first_) * row_size_;
}

// Windows start at multiples of their length, so that looking a few rows back does not read again.
// Who jumps about in a large table wants few rows of each place; who goes on from a window, either
// way, gets a longer one each time.
Status TableView::load_window(uint64_t row) const {
  const bool goes_on =
      window_rows_ != 0 && (row == window_first_ + window_rows_ || row + 1 == window_first_);
  uint64_t bytes = goes_on ? window_rows_ * row_size_ * 2 : kJumpBytes;
  if (row_count_ * row_size_ <= kSmallTableBytes) bytes = kSmallTableBytes;
  bytes = std::clamp(bytes, kJumpBytes, kWindowBytes);
  const uint64_t rows_a_window = std::max<uint64_t>(1, bytes / row_size_);
  const uint64_t first = row / rows_a_window * rows_a_window;
  const uint64_t rows = std::min(rows_a_window, row_count_ - first);
  window_rows_ = 0;
  window_.resize(rows * row_size_);
  TRY(range_.source->read(range_.offset + first * row_size_, window_));
  window_first_ = first;
  window_rows_ = rows;
  return {};
}

}  // namespace toolbox
