#include "movie/sync_index.h"

#include <algorithm>

namespace toolbox {

namespace {
constexpr uint32_t kSyncRowsInBlock = 512;
constexpr uint64_t kTimeRowsInBlock = 1024;
}  // namespace

Result<SyncIndex> SyncIndex::make(const TimeTables& times, const TableView& sync) {
  SyncIndex index(times, sync);
  TimeCursor cursor(times);
  TimeCursor::Place stretch_place;
  Stretch stretch;
  BlockStart start;
  int64_t smallest = 0;
  int64_t largest = 0;
  uint32_t previous_number = 0;
  uint32_t row = 0;
  const uint8_t* bytes = nullptr;
  uint64_t rows_ahead = 0;
  for (; row < sync.row_count(); ++row, bytes += 4, --rows_ahead) {
    if (rows_ahead == 0) {
      TRY_ASSIGN(bytes, sync.row(row));
      rows_ahead = sync.rows_in_window(row);
    }
    const auto number = load_big_endian<uint32_t>(bytes);
    if (number <= previous_number || number > times.sample_count) break;
    previous_number = number;
    const uint32_t sample = number - 1;
    while (stretch.count == 0 || sample > stretch.last_sample()) {
      stretch_place = cursor.place();
      if (!cursor.next(stretch)) return cursor.take_status();
    }
    const bool is_full = row - start.row >= kSyncRowsInBlock ||
                         stretch_place.rows() - start.place.rows() >= kTimeRowsInBlock;
    if (row == 0 || is_full) {
      if (row != 0) {
        index.starts_.push_back(start);
        index.blocks_.add(smallest, largest);
      }
      start = {row, sample, stretch_place};
      smallest = largest = stretch.display_of(sample);
    }
    smallest = std::min(smallest, stretch.display_of(sample));
    largest = std::max(largest, stretch.display_of(sample));
  }
  if (row != 0) {
    index.starts_.push_back(start);
    index.blocks_.add(smallest, largest);
  }
  index.row_count_ = row;
  index.blocks_.finish();
  return index;
}

Result<bool> SyncIndex::contains(uint32_t sample) const {
  TRY_ASSIGN(const SyncPlace place, place_from(sample));
  return place.sample == sample;
}

Result<SyncPlace> SyncIndex::place_from(uint32_t sample) const {
  const auto above =
      std::upper_bound(starts_.begin(), starts_.end(), sample,
                       [](uint32_t s, const BlockStart& start) { return s < start.first_sample; });
  uint32_t low = 0;
  uint32_t high = 0;
  if (above != starts_.begin()) {
    low = above[-1].row;
    high = end_row(static_cast<size_t>(above - starts_.begin()) - 1);
  }
  SyncPlace place{high, SyncPlace::kNone};
  while (low < high) {
    const uint32_t middle = low + (high - low) / 2;
    TRY_ASSIGN(const uint8_t* bytes, sync_->row(middle));
    const uint32_t found = load_big_endian<uint32_t>(bytes) - 1;
    if (found >= sample) place = {middle, found};
    if (found == sample) return place;
    if (found < sample) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  if (place.sample == SyncPlace::kNone && place.row < row_count_) {
    TRY_ASSIGN(const uint8_t* bytes, sync_->row(place.row));
    place.sample = load_big_endian<uint32_t>(bytes) - 1;
  }
  return place;
}

template <class Search>
Status SyncIndex::look(size_t block, Search& search) const {
  TimeCursor cursor(*times_, starts_[block].place);
  Stretch stretch;
  const uint32_t end = end_row(block);
  for (uint32_t row = starts_[block].row; row < end; ++row) {
    TRY_ASSIGN(const uint8_t* bytes, sync_->row(row));
    const uint32_t sample = load_big_endian<uint32_t>(bytes) - 1;
    while (stretch.count == 0 || sample > stretch.last_sample()) {
      if (!cursor.next(stretch)) return cursor.take_status();
    }
    search.offer({stretch.display_of(sample), sample, stretch.delta});
  }
  return {};
}

Result<std::optional<DisplayPoint>> SyncIndex::next_displayed(int64_t after) const {
  return blocks_.next(after, [&](size_t block, NextPoint& next) { return look(block, next); });
}

Result<std::optional<DisplayPoint>> SyncIndex::previous_displayed(int64_t last) const {
  return blocks_.previous(
      last, [&](size_t block, PreviousPoint& previous) { return look(block, previous); });
}

}  // namespace toolbox
