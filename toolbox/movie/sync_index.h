// Answers which samples can be shown without others, and when those are displayed.
#pragma once

#include <optional>
#include <vector>

#include "movie/display_blocks.h"
#include "movie/time_cursor.h"

namespace toolbox {

/// A sync sample and its row in the table.
struct SyncPlace {
  static constexpr uint32_t kNone = UINT32_MAX;
  uint32_t row = 0;
  uint32_t sample = kNone;  // from 0; kNone behind the last
};

/// An index over a table of sync samples (sample numbers from 1, ascending). What stands behind a
/// number that does not ascend, or behind one beyond the sample count, is ignored. Made in one pass
/// over the sync and the time tables.
class SyncIndex {
 public:
  /// Borrows both tables. Fails: as ByteSource::read.
  static Result<SyncIndex> make(const TimeTables& times, const TableView& sync);

  /// Whether the sample (from 0) is in the table.
  Result<bool> contains(uint32_t sample) const;

  /// The first sync sample in decode order that is `sample` or behind it.
  Result<SyncPlace> place_from(uint32_t sample) const;

  /// The sync sample displayed next after `after`, and the one displayed last up to and including
  /// `last`.
  Result<std::optional<DisplayPoint>> next_displayed(int64_t after) const;
  Result<std::optional<DisplayPoint>> previous_displayed(int64_t last) const;

 private:
  struct BlockStart {
    uint32_t row = 0;
    uint32_t first_sample = 0;  // that row's
    TimeCursor::Place place;    // of the stretch which holds it
  };

  SyncIndex(const TimeTables& times, const TableView& sync) : times_(&times), sync_(&sync) {}

  template <class Search>
  Status look(size_t block, Search& search) const;

  uint32_t end_row(size_t block) const {
    return block + 1 < starts_.size() ? starts_[block + 1].row : row_count_;
  }

  const TimeTables* times_;
  const TableView* sync_;
  uint32_t row_count_ = 0;  // rows that count
  std::vector<BlockStart> starts_;
  DisplayBlocks blocks_;
};

}  // namespace toolbox
