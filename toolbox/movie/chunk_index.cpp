#include "movie/chunk_index.h"

#include <algorithm>
#include <string>

namespace toolbox {

namespace {
constexpr uint32_t kRunsInBlock = 1024;
constexpr uint64_t kSampleLimit = uint64_t{1} << 33;  // more than any sample number

uint32_t first_chunk_of(const uint8_t* row) { return load_big_endian<uint32_t>(row); }
}  // namespace

Result<ChunkIndex> ChunkIndex::make(const TableView& runs, uint64_t chunk_count) {
  ChunkIndex index(runs, chunk_count);
  uint64_t samples = 0;
  uint32_t previous_first = 0;
  uint32_t previous_samples_a_chunk = 0;
  const uint8_t* bytes = nullptr;
  uint64_t rows_ahead = 0;
  uint32_t row = 0;
  for (; row < runs.row_count(); ++row, bytes += runs.row_size(), --rows_ahead) {
    if (rows_ahead == 0) {
      TRY_ASSIGN(bytes, runs.row(row));
      rows_ahead = runs.rows_in_window(row);
    }
    const uint32_t first = row == 0 ? 1 : first_chunk_of(bytes);
    if (first <= previous_first) break;
    if (row > 0) {
      // Neither factor exceeds 32 bits.
      const uint64_t chunks = std::min<uint64_t>(first - 1, chunk_count) -
                              std::min<uint64_t>(previous_first - 1, chunk_count);
      samples = std::min(samples + chunks * previous_samples_a_chunk, kSampleLimit);
    }
    if (row % kRunsInBlock == 0) index.starts_.push_back({row, samples});
    previous_first = first;
    previous_samples_a_chunk = load_big_endian<uint32_t>(bytes + 4);
  }
  index.run_count_ = row;
  return index;
}

Result<ChunkIndex::Run> ChunkIndex::run(uint32_t row) const {
  uint64_t end = chunk_count_;
  if (row + 1 < run_count_) {
    TRY_ASSIGN(const uint8_t* next, runs_->row(row + 1));
    end = std::min(end, uint64_t{first_chunk_of(next)} - 1);
  }
  TRY_ASSIGN(const uint8_t* bytes, runs_->row(row));
  Run run;
  run.first_chunk = row == 0 ? 0 : std::min(end, uint64_t{first_chunk_of(bytes)} - 1);
  run.chunks = end - run.first_chunk;
  run.samples_a_chunk = load_big_endian<uint32_t>(bytes + 4);
  run.description = load_big_endian<uint32_t>(bytes + 8);
  return run;
}

Result<ChunkPlace> ChunkIndex::place_of(uint32_t sample) const {
  const auto above =
      std::upper_bound(starts_.begin(), starts_.end(), sample,
                       [](uint32_t s, const BlockStart& start) { return s < start.first_sample; });
  if (above != starts_.begin()) {
    uint64_t first_sample = above[-1].first_sample;
    const uint32_t end = above == starts_.end() ? run_count_ : above->row;
    for (uint32_t row = above[-1].row; row < end; ++row) {
      TRY_ASSIGN(const Run found, run(row));
      const uint64_t samples = found.chunks * found.samples_a_chunk;
      if (sample - first_sample < samples) {
        const uint64_t chunk = (sample - first_sample) / found.samples_a_chunk;
        return ChunkPlace{static_cast<uint32_t>(found.first_chunk + chunk),
                          static_cast<uint32_t>(first_sample + chunk * found.samples_a_chunk),
                          found.samples_a_chunk,
                          found.description,
                          row,
                          found.first_chunk + found.chunks};
      }
      first_sample += samples;
    }
  }
  return ended(sample);
}

Result<ChunkPlace> ChunkIndex::place_behind(const ChunkPlace& place) const {
  ChunkPlace next = place;
  const uint64_t first_sample = uint64_t{place.first_sample} + place.sample_count;
  if (first_sample > UINT32_MAX) return ended(first_sample);
  next.first_sample = static_cast<uint32_t>(first_sample);
  if (uint64_t{place.chunk} + 1 < place.run_end_chunk) {
    ++next.chunk;
    return next;
  }
  while (++next.run < run_count_) {
    TRY_ASSIGN(const Run found, run(next.run));
    if (found.chunks == 0 || found.samples_a_chunk == 0) continue;
    next.chunk = static_cast<uint32_t>(found.first_chunk);
    next.sample_count = found.samples_a_chunk;
    next.description = found.description;
    next.run_end_chunk = found.first_chunk + found.chunks;
    return next;
  }
  return ended(first_sample);
}

Status ChunkIndex::ended(uint64_t sample) {
  return {invalidSampleTable, "the chunks end before sample " + std::to_string(sample + 1)};
}

}  // namespace toolbox
