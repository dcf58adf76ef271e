// Everything that is known of the samples of a media: when they are shown, which are sync, and
// where their bytes are.
#pragma once

#include <cstdint>
#include <optional>

#include "movie/chunk_index.h"
#include "movie/sync_index.h"
#include "movie/time_index.h"

namespace toolbox {

/// The size table in one of its forms.
struct SizeTable {
  uint32_t uniform_size = 0;  // bytes; 0: see the rows
  uint8_t bits = 32;          // of a size in the rows: 4, 8, 16 or 32
  TableView rows;             // rows of 4 bytes for 32-bit sizes, of 1 byte for packed ones
};

/// The tables as the file holds them.
struct SampleTables {
  TimeTables times;
  bool has_sync = false;  // without a sync table every sample is sync
  TableView sync;
  TableView chunk_runs;
  SizeTable sizes;
  TableView chunk_offsets;  // rows of 4 or 8 bytes
};

/// When a sample is decoded and displayed, media ticks.
struct SampleTimes {
  int64_t decode = 0;
  int64_t display = 0;
  uint32_t delta = 0;  // to the next sample in decode order
};

/// Where the bytes of a sample are.
struct SampleLocation {
  uint32_t chunk = 0;        // from 0
  uint32_t description = 0;  // from 1, as the table says: may point nowhere
  uint64_t offset = 0;       // in the file that the description's data reference names
  uint32_t size = 0;         // bytes
};

/// A chunk: samples whose bytes lie one behind the other.
struct SampleChunk {
  uint32_t chunk = 0;  // from 0
  uint32_t first_sample = 0;
  uint32_t end_sample = 0;
  uint32_t description = 0;  // from 1, as the table says: may point nowhere
  uint64_t offset = 0;       // in the file that the description's data reference names
  ChunkPlace place;          // for go_behind()
};

/// Views over the tables of a media, with an index on each that is made in one pass when first
/// needed. Samples count from 0. A media time that callers see is display time: decode time plus
/// display offset. Every call fails as ByteSource::read, and as said.
class SampleTable {
 public:
  enum class Set { kAll, kSync };

  SampleTable() = default;
  explicit SampleTable(SampleTables tables) : tables_(std::move(tables)) {}
  SampleTable(const SampleTable&) = delete;
  SampleTable& operator=(const SampleTable&) = delete;

  const SampleTables& tables() const { return tables_; }

  /// Read from the head of the size table alone.
  uint32_t sample_count() const { return tables_.times.sample_count; }

  /// Sum of the sample durations, media ticks.
  Result<int64_t> duration() const;

  /// Whether duration() is one short look at the table.
  bool duration_is_cheap() const { return tables_.times.deltas.row_count() <= 1024; }

  /// Fails: invalidSampleNum for a sample out of range.
  Result<SampleTimes> times(uint32_t sample) const;
  Result<bool> is_sync(uint32_t sample) const;

  /// The samples around a sample whose times advance evenly. Fails: as times().
  Result<Stretch> stretch_of(uint32_t sample) const;

  /// The chunk that a sample lies in. Fails: as location().
  Result<SampleChunk> chunk_of(uint32_t sample) const;

  // A walk in decode order, which other questions do not disturb. It begins at a sample, which
  // makes no index for the first one, and goes on from what it was told last.

  /// Moves on to the next chunk with samples. REQUIRES: the chunk does not hold the last sample.
  /// Fails: as location().
  Status go_behind(SampleChunk& chunk) const;

  /// Where the stretch that holds a sample begins; and the stretch that begins at a place, which is
  /// moved behind it. Fail: as times().
  Result<TimePlace> time_place_of(uint32_t sample) const;
  Status take_stretch(TimePlace& place, Stretch& stretch) const;

  /// The first sync sample that is `sample` or behind it, and the one behind another. REQUIRES:
  /// there is a sync table.
  Result<SyncPlace> sync_from(uint32_t sample) const;
  Result<SyncPlace> sync_behind(const SyncPlace& place) const;

  /// Fails: invalidSampleNum, invalidSampleTable when the tables lead nowhere. Adds up the sizes of
  /// the samples before it in its chunk.
  Result<SampleLocation> location(uint32_t sample) const;
  Result<uint32_t> size(uint32_t sample) const;

  /// Bytes of the samples from `first` up to `end`, as the size table states them. Fails: as
  /// size().
  Result<uint64_t> bytes_between(uint32_t first, uint32_t end) const;

  /// The sample decoded at a media time; nothing outside the media.
  Result<std::optional<uint32_t>> sample_at_decode_time(int64_t time) const;

  /// The sample of the set displayed next after `after`; and last, up to and including `last`.
  /// Samples stand in the order of their display times; of several at one time the last in decode
  /// order is meant.
  Result<std::optional<DisplayPoint>> next_displayed(Set set, int64_t after) const;
  Result<std::optional<DisplayPoint>> previous_displayed(Set set, int64_t last) const;

  /// When the sample at `point` stops being shown: when the next one appears. The last one is shown
  /// for its own duration; when that is 0 there is no end, and nothing is returned.
  Result<std::optional<int64_t>> shown_until(const DisplayPoint& point) const;

 private:
  Status check(uint32_t sample) const;
  Status fill_chunk(const ChunkPlace& place, SampleChunk& chunk) const;
  Result<SyncPlace> sync_at(uint32_t row, uint32_t least) const;
  Result<const TimeIndex*> time_index() const;
  Result<const SyncIndex*> sync_index() const;
  Result<const ChunkIndex*> chunk_index() const;

  SampleTables tables_;
  mutable std::optional<TimeIndex> time_index_;
  mutable std::optional<SyncIndex> sync_index_;
  mutable std::optional<ChunkIndex> chunk_index_;
};

}  // namespace toolbox
