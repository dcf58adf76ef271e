// Answers in which chunk a sample lies.
#pragma once

#include <cstdint>
#include <vector>

#include "file/table_view.h"

namespace toolbox {

/// Where a sample lies among the chunks. Chunks and samples count from 0.
struct ChunkPlace {
  uint32_t chunk = 0;
  uint32_t first_sample = 0;  // of the chunk
  uint32_t sample_count = 0;  // in the chunk, as the table says: may reach beyond the last sample
  uint32_t description = 0;   // sample description, from 1
  uint32_t run = 0;           // the row of the table that says so
  uint64_t run_end_chunk = 0;
};

/// An index over the table of chunk runs (first chunk from 1, samples a chunk, description). The
/// first run begins at the first chunk whatever it says, the last one reaches to the last chunk;
/// what stands behind a run that does not ascend is ignored. Made in one pass.
class ChunkIndex {
 public:
  /// Borrows `runs`. Fails: as ByteSource::read.
  static Result<ChunkIndex> make(const TableView& runs, uint64_t chunk_count);

  /// Fails: invalidSampleTable when the chunks end before the sample, and as ByteSource::read.
  Result<ChunkPlace> place_of(uint32_t sample) const;

  /// The next chunk that has samples. Fails: as place_of().
  Result<ChunkPlace> place_behind(const ChunkPlace& place) const;

 private:
  struct Run {
    uint64_t first_chunk = 0;
    uint64_t chunks = 0;
    uint32_t samples_a_chunk = 0;
    uint32_t description = 0;
  };
  struct BlockStart {
    uint32_t row = 0;
    uint64_t first_sample = 0;
  };

  ChunkIndex(const TableView& runs, uint64_t chunk_count)
      : runs_(&runs), chunk_count_(chunk_count) {}
  Result<Run> run(uint32_t row) const;
  static Status ended(uint64_t sample);

  const TableView* runs_;
  uint64_t chunk_count_;
  uint32_t run_count_ = 0;  // runs that count
  std::vector<BlockStart> starts_;
};

}  // namespace toolbox
