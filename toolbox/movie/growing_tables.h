// Sample tables that grow in memory, sample after sample, in the layout that files have.
#pragma once

#include <memory>
#include <vector>

#include "base/bytes.h"
#include "file/byte_source.h"
#include "movie/sample_table.h"

namespace toolbox {

/// What the growing tables of one file may still cost together. For fragments: a little, and more
/// for every byte of fragments that the file really has, so that a small file cannot ask for much.
class TableBudget {
 public:
  /// Rows; vectors that have grown ahead of them may take as much again.
  static constexpr uint64_t kFirstBytes = 12 * 1024 * 1024;
  static constexpr uint64_t kMostBytes = 128 * 1024 * 1024;
  static constexpr uint64_t kMostSamples = 100'000'000;
  static constexpr uint64_t kMostEditedBytes = 1024 * 1024 * 1024;

  TableBudget() = default;

  /// What the tables of a media may cost that somebody adds samples to.
  static TableBudget for_edits();

  /// A fragment of that many bytes was met. A row of ours is at most twice as long as the fields
  /// that it comes from.
  void earn(uint64_t fragment_bytes);

  /// Fail: memFullErr; nothing is taken then.
  Status take_bytes(uint64_t bytes);
  Status take_samples(uint64_t samples);

  /// Whether as many bytes and samples could still be taken.
  bool has(uint64_t bytes, uint64_t samples) const {
    return bytes <= bytes_earned_ - bytes_taken_ && samples <= samples_left_;
  }

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

  /// Whether so many samples in so many chunks can be appended without spending the budget. (The
  /// tables of a failed append are of no more use.)
  bool has_room_for(uint64_t samples, uint64_t chunks) const;

  /// Whether samples that are appended now go into the chunk of those before.
  bool is_chunk_open() const { return is_chunk_open_; }

  /// Makes the last sample longer. REQUIRES: sample_count() > 0.
  Status lengthen_last(uint64_t ticks);

  uint32_t sample_count() const { return sample_count_; }

  /// When the next sample will be decoded, media ticks.
  int64_t decode_end() const { return decode_end_; }

  /// The tables up to here; closes the chunk. The views borrow this object and keep showing what
  /// they show now while more is appended. `name` is what people call the tables.
  Result<SampleTables> tables(const std::string& name);

 private:
  /// A table of runs; the last row grows while values are equal.
  struct RunRows {
    Bytes rows;
    uint32_t count = 0;
    uint32_t value = 0;
  };

  Status append_run(RunRows& runs, uint32_t count, uint32_t value);
  Status begin_run(RunRows& runs, uint32_t count, uint32_t value);
  Status append_deltas(uint32_t count, uint32_t delta);
  Status append_sizes(uint32_t count, uint32_t size);
  Status append_sync(uint32_t first_sample, uint32_t count, bool is_sync);
  Status list_sync(uint32_t first_sample, uint32_t count);
  Status close_chunk();

  Status copy_times(const TimeTables& times);
  Status copy_sync(const SampleTable& table);
  Status copy_sizes(const SampleTable& table);
  Status copy_chunks(const SampleTables& tables);

  TableView view(const Bytes& rows, uint32_t row_size, const std::string& name);

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
  bool is_chunk_open_ = false;
  uint64_t chunk_offset_ = kNowhere;  // of the open chunk
  uint32_t chunk_description_ = 1;
  uint32_t chunk_samples_ = 0;
  uint32_t chunk_count_ = 0;
  Bytes chunk_offsets_;
  Bytes chunk_runs_;
  std::vector<std::unique_ptr<ByteSource>> sources_;  // one for each vector above that was viewed
};

}  // namespace toolbox
