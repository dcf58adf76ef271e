#include "movie/sample_table.h"

#include <algorithm>
#include <string>

namespace toolbox {

namespace {

// Makes an index when it is first wanted.
template <class Index, class Make>
Result<const Index*> made(std::optional<Index>& index, Make make) {
  if (!index) {
    TRY_ASSIGN(index, make());
  }
  return &*index;
}

}  // namespace

Status SampleTable::check(uint32_t sample) const {
  if (sample < sample_count()) return {};
  return Status(invalidSampleNum, "sample " + std::to_string(uint64_t{sample} + 1) +
                                      " does not exist, the media has " +
                                      std::to_string(sample_count()));
}

Result<const TimeIndex*> SampleTable::time_index() const {
  return made(time_index_, [&] { return TimeIndex::make(tables_.times); });
}
Result<const SyncIndex*> SampleTable::sync_index() const {
  return made(sync_index_, [&] { return SyncIndex::make(tables_.times, tables_.sync); });
}
Result<const ChunkIndex*> SampleTable::chunk_index() const {
  return made(chunk_index_, [&] {
    return ChunkIndex::make(tables_.chunk_runs, tables_.chunk_offsets.row_count());
  });
}

Result<int64_t> SampleTable::duration() const {
  if (time_index_) return time_index_->duration();
  // Display offsets do not change it, and theirs may be the longest table of all.
  const TimeTables decode_times{tables_.times.deltas, {}, tables_.times.sample_count};
  TimeCursor cursor(decode_times);
  Stretch stretch;
  while (cursor.next(stretch)) {
  }
  TRY(cursor.take_status());
  return cursor.decode();
}

Result<Stretch> SampleTable::stretch_of(uint32_t sample) const {
  TRY(check(sample));
  TRY_ASSIGN(const TimeIndex* index, time_index());
  return index->stretch_of(sample);
}

Result<TimePlace> SampleTable::time_place_of(uint32_t sample) const {
  TRY(check(sample));
  if (sample == 0) return TimePlace{};
  TRY_ASSIGN(const TimeIndex* index, time_index());
  return index->place_of(sample);
}

Status SampleTable::take_stretch(TimePlace& place, Stretch& stretch) const {
  TimeCursor cursor(tables_.times, place);
  if (!cursor.next(stretch)) {
    TRY(cursor.take_status());
    return check(place.sample);
  }
  place = cursor.place();
  return {};
}

Result<SyncPlace> SampleTable::sync_from(uint32_t sample) const {
  if (sample == 0) return sync_at(0, 0);
  TRY_ASSIGN(const SyncIndex* index, sync_index());
  return index->place_from(sample);
}

Result<SyncPlace> SampleTable::sync_behind(const SyncPlace& place) const {
  if (place.sample == SyncPlace::kNone) return place;
  return sync_at(place.row + 1, place.sample + 1);
}

// The table ends where its numbers do not ascend, as the index has it.
Result<SyncPlace> SampleTable::sync_at(uint32_t row, uint32_t least) const {
  if (row >= tables_.sync.row_count()) return SyncPlace{row, SyncPlace::kNone};
  TRY_ASSIGN(const uint8_t* bytes, tables_.sync.row(row));
  const auto number = load_big_endian<uint32_t>(bytes);
  if (number <= least || number > sample_count()) return SyncPlace{row, SyncPlace::kNone};
  return SyncPlace{row, number - 1};
}

Result<SampleTimes> SampleTable::times(uint32_t sample) const {
  TRY_ASSIGN(const Stretch stretch, stretch_of(sample));
  return SampleTimes{stretch.decode_of(sample), stretch.display_of(sample), stretch.delta};
}

Result<bool> SampleTable::is_sync(uint32_t sample) const {
  TRY(check(sample));
  if (!tables_.has_sync) return true;
  TRY_ASSIGN(const SyncIndex* index, sync_index());
  return index->contains(sample);
}

Result<uint32_t> SampleTable::size(uint32_t sample) const {
  TRY(check(sample));
  const SizeTable& sizes = tables_.sizes;
  if (sizes.uniform_size != 0) return sizes.uniform_size;
  switch (sizes.bits) {
    case 4: {
      TRY_ASSIGN(const uint8_t* pair, sizes.rows.row(sample / 2));
      return uint32_t{sample % 2 == 0 ? uint8_t(*pair >> 4) : uint8_t(*pair & 15)};
    }
    case 8: {
      TRY_ASSIGN(const uint8_t* byte, sizes.rows.row(sample));
      return uint32_t{*byte};
    }
    case 16: {
      // A window may end between the two bytes of a size.
      TRY_ASSIGN(const uint8_t* high, sizes.rows.row(uint64_t{sample} * 2));
      const uint32_t high_byte = *high;
      TRY_ASSIGN(const uint8_t* low, sizes.rows.row(uint64_t{sample} * 2 + 1));
      return high_byte << 8 | *low;
    }
    default: {
      TRY_ASSIGN(const uint8_t* row, sizes.rows.row(sample));
      return load_big_endian<uint32_t>(row);
    }
  }
}

Result<uint64_t> SampleTable::bytes_between(uint32_t first, uint32_t end) const {
  if (tables_.sizes.uniform_size != 0) return uint64_t{tables_.sizes.uniform_size} * (end - first);
  uint64_t sum = 0;
  for (uint32_t sample = first; sample < end; ++sample) {
    TRY_ASSIGN(const uint32_t bytes, size(sample));
    sum += bytes;
  }
  return sum;
}

Result<SampleChunk> SampleTable::chunk_of(uint32_t sample) const {
  TRY(check(sample));
  TRY_ASSIGN(const ChunkIndex* index, chunk_index());
  TRY_ASSIGN(const ChunkPlace place, index->place_of(sample));
  SampleChunk chunk;
  TRY(fill_chunk(place, chunk));
  return chunk;
}

Status SampleTable::go_behind(SampleChunk& chunk) const {
  TRY_ASSIGN(const ChunkIndex* index, chunk_index());
  TRY_ASSIGN(const ChunkPlace place, index->place_behind(chunk.place));
  TRY(check(place.first_sample));
  return fill_chunk(place, chunk);
}

Status SampleTable::fill_chunk(const ChunkPlace& place, SampleChunk& chunk) const {
  TRY_ASSIGN(const uint8_t* row, tables_.chunk_offsets.row(place.chunk));
  const uint64_t offset = tables_.chunk_offsets.row_size() == 8 ? load_big_endian<uint64_t>(row)
                                                                : load_big_endian<uint32_t>(row);
  const uint32_t count = std::min(place.sample_count, sample_count() - place.first_sample);
  chunk.chunk = place.chunk;
  chunk.first_sample = place.first_sample;
  chunk.end_sample = place.first_sample + count;
  chunk.description = place.description;
  chunk.offset = offset;
  chunk.place = place;
  return {};
}

Result<SampleLocation> SampleTable::location(uint32_t sample) const {
  TRY_ASSIGN(const SampleChunk chunk, chunk_of(sample));
  TRY_ASSIGN(const uint64_t before, bytes_between(chunk.first_sample, sample));
  TRY_ASSIGN(const uint32_t bytes, size(sample));
  if (chunk.offset > UINT64_MAX - before - bytes) {
    return Status(invalidSampleTable, "sample " + std::to_string(uint64_t{sample} + 1) +
                                          " lies beyond the end of any file");
  }
  return SampleLocation{chunk.chunk, chunk.description, chunk.offset + before, bytes};
}

Result<std::optional<uint32_t>> SampleTable::sample_at_decode_time(int64_t time) const {
  TRY_ASSIGN(const TimeIndex* index, time_index());
  return index->sample_at_decode_time(time);
}

Result<std::optional<DisplayPoint>> SampleTable::next_displayed(Set set, int64_t after) const {
  if (set == Set::kAll || !tables_.has_sync) {
    TRY_ASSIGN(const TimeIndex* index, time_index());
    return index->next_displayed(after);
  }
  TRY_ASSIGN(const SyncIndex* index, sync_index());
  return index->next_displayed(after);
}

Result<std::optional<DisplayPoint>> SampleTable::previous_displayed(Set set, int64_t last) const {
  if (set == Set::kAll || !tables_.has_sync) {
    TRY_ASSIGN(const TimeIndex* index, time_index());
    return index->previous_displayed(last);
  }
  TRY_ASSIGN(const SyncIndex* index, sync_index());
  return index->previous_displayed(last);
}

Result<std::optional<int64_t>> SampleTable::shown_until(const DisplayPoint& point) const {
  TRY_ASSIGN(const TimeIndex* index, time_index());
  TRY_ASSIGN(const std::optional<DisplayPoint> next, index->next_displayed(point.time));
  if (next) return std::optional<int64_t>(next->time);
  const DisplayPoint& last = *index->last_displayed();
  if (last.delta == 0) return std::optional<int64_t>{};
  return std::optional<int64_t>(last.time + last.delta);
}

}  // namespace toolbox
