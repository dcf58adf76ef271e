// Sample tables that grow in memory, sample after sample, in the layout that files have.
#pragma once

#include <memory>
#include <vector>

#include "base/bytes.h"
#include "file/memory_source.h"
#include "movie/sample_table.h"

namespace toolbox {

/// What the growing tables of one file may still cost together: a little, and more for every byte
/// of fragments that the file really has, so that a small file cannot ask for much.
class TableBudget {
 public:
  /// Rows; vectors that have grown ahead of them may take as much again.
  static constexpr uint64_t kFirstBytes = 12 * 1024 * 1024;
  static constexpr uint64_t kMostBytes = 128 * 1024 * 1024;
  static constexpr uint64_t kMostSamples = 100'000'000;

  /// A fragment of that many bytes was met. A row of ours is at most twice as long as the fields
  /// that it comes from.
  void earn(uint64_t fragment_bytes);

  /// Fail: memFullErr; nothing is taken then.
  Status take_bytes(uint64_t bytes);
  Status take_samples(uint64_t samples);

 private:
  uint64_t bytes_earned_ = kFirstBytes;
  uint64_t bytes_taken_ = 0;
  uint64_t samples_left_ = kMostSamples;
};

/// Samples of a media that are alike in everything.
struct EqualSamples {
  uint32_t count = 0;
  uint32_t delta = 0;  // media ticks
  uint32_t size = 0;   // bytes
  int32_t offset = 0;  // from decode to display time, media ticks
  bool is_sync = true;
};

/// The tables of one media. What is alike costs no row of its own; every row is paid for before it
/// is made. Every call that can fail fails with memFullErr when the budget is spent.
class GrowingTables {
 public:
  /// A chunk offset for samples of which no place is known: asking for their place fails.
  static constexpr uint64_t kNowhere = UINT64_MAX;

  /// Borrows the budget.
  explicit GrowingTables(TableBudget& budget) : budget_(&budget) {}

  /// All samples of a table, which must come first. Fails also: as ByteSource::read.
  Status append_all(const SampleTable& table);

  /// Opens a chunk; samples that are appended from now on lie in it, one behind the other.
  Status begin_chunk(uint64_t offset, uint32_t description);
  Status append(const EqualSamples& samples);

  /// Makes the last sample longer. REQUIRES: sample_count() > 0.
  Status lengthen_last(uint64_t ticks);

  uint32_t sample_count() const { return sample_count_; }

  /// When the next sample will be decoded, media ticks.
  int64_t decode_end() const { return decode_end_; }

  /// The tables; nothing can be appended any more. The views borrow this object. `name` is what
  /// people call the tables.
  Result<SampleTables> finish(const std::string& name);

 private:
  /// A table of runs, and the run at its end, which is still growing.
  struct RunRows {
    Bytes rows;
    uint32_t count = 0;
    uint32_t value = 0;
  };

  Status append_run(RunRows& runs, uint32_t count, uint32_t value);
  Status close_run(RunRows& runs);
  Status append_deltas(uint32_t count, uint32_t delta);
  Status append_sizes(uint32_t count, uint32_t size);
  Status append_sync(uint32_t first_sample, uint32_t count, bool is_sync);
  Status list_sync(uint32_t first_sample, uint32_t count);
  Status close_chunk();

  Status copy_times(const TimeTables& times);
  Status copy_sync(const SampleTable& table);
  Status copy_sizes(const SampleTable& table);
  Status copy_chunks(const SampleTables& tables);

  TableView view(Bytes rows, uint32_t row_size, const std::string& name);

  TableBudget* budget_;
  uint32_t sample_count_ = 0;
  int64_t decode_end_ = 0;
  RunRows deltas_;
  RunRows offsets_;
  uint32_t sized_samples_ = 0;
  uint32_t uniform_size_ = 0;  // while size_rows_ is empty
  Bytes size_rows_;
  bool has_sync_ = false;
  Bytes sync_rows_;
  uint64_t chunk_offset_ = kNowhere;  // of the open chunk
  uint32_t chunk_description_ = 1;
  uint32_t chunk_samples_ = 0;
  uint32_t chunk_count_ = 0;
  Bytes chunk_offsets_;
  Bytes chunk_runs_;
  std::vector<std::unique_ptr<MemorySource>> sources_;
};

}  // namespace toolbox
