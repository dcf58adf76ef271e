#include "movie/growing_tables.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <string>

namespace toolbox {

namespace {

template <std::integral T>
void append_number(Bytes& rows, T number) {
  rows.resize(rows.size() + sizeof number);
  store_big_endian(rows.data() + rows.size() - sizeof number, number);
}

void append_numbers(Bytes& rows, uint32_t count, uint32_t number) {
  const size_t begin = rows.size();
  rows.resize(begin + size_t{count} * sizeof number);
  for (uint32_t i = 0; i < count; ++i) {
    store_big_endian(rows.data() + begin + size_t{i} * sizeof number, number);
  }
}

// Bytes that still grow. What was there once stays in its place, save the count of a last run.
class GrowingBytes : public ByteSource {
 public:
  GrowingBytes(const Bytes& bytes, std::string name) : bytes_(&bytes), name_(std::move(name)) {}

  const Bytes& bytes() const { return *bytes_; }
  uint64_t size() const override { return bytes_->size(); }
  const std::string& name() const override { return name_; }

  Status read(uint64_t offset, std::span<uint8_t> bytes) const override {
    if (offset > bytes_->size() || bytes.size() > bytes_->size() - offset) {
      return {eofErr, name_ + ": rows behind the end of a table were wanted"};
    }
    if (!bytes.empty()) std::memcpy(bytes.data(), bytes_->data() + offset, bytes.size());
    return {};
  }

 private:
  const Bytes* bytes_;
  std::string name_;
};

}  // namespace

TableBudget TableBudget::for_edits() {
  TableBudget budget;
  budget.bytes_earned_ = kMostEditedBytes;
  return budget;
}

void TableBudget::earn(uint64_t fragment_bytes) {
  bytes_earned_ = std::min(bytes_earned_ + 2 * std::min(fragment_bytes, kMostBytes), kMostBytes);
}

Status TableBudget::take_bytes(uint64_t bytes) {
  if (bytes > bytes_earned_ - bytes_taken_) {
    const std::string limit = std::to_string(bytes_earned_ >> 20) + " MiB";
    if (bytes_earned_ == kMostEditedBytes) {
      return {memFullErr, "the sample tables of a media need more than " + limit +
                              ", the most that a media may have to which samples are added"};
    }
    return {memFullErr, "the sample tables of the fragments need more than " + limit +
                            ", which so few or so many fragments may not have"};
  }
  bytes_taken_ += bytes;
  return {};
}

Status TableBudget::take_samples(uint64_t samples) {
  if (samples > samples_left_) {
    return {memFullErr, "there are more than " + std::to_string(kMostSamples) +
                            " samples, the most that the tables in memory may have"};
  }
  samples_left_ -= samples;
  return {};
}

Status GrowingTables::begin_chunk(uint64_t offset, uint32_t description) {
  TRY(close_chunk());
  chunk_offset_ = offset;
  chunk_description_ = description;
  is_chunk_open_ = true;
  return {};
}

bool GrowingTables::has_room_for(uint64_t samples, uint64_t chunks) const {
  if (samples > TableBudget::kMostSamples || chunks > TableBudget::kMostSamples) return false;
  // Rows of sizes and sync samples, those of the samples so far if they had none; two new runs.
  const uint64_t bytes = (samples + sample_count_) * 8 + (chunks + 1) * 20 + 16;
  return budget_->has(bytes, samples);
}

Status GrowingTables::append(const EqualSamples& samples) {
  if (samples.count == 0) return {};
  TRY(budget_->take_samples(samples.count));
  TRY(append_deltas(samples.count, samples.delta));
  TRY(append_run(offsets_, samples.count, static_cast<uint32_t>(samples.offset)));
  TRY(append_sizes(samples.count, samples.size));
  TRY(append_sync(sample_count_, samples.count, samples.is_sync));
  chunk_samples_ += samples.count;
  sample_count_ += samples.count;
  return {};
}

Status GrowingTables::lengthen_last(uint64_t ticks) {
  assert(sample_count_ > 0 && deltas_.count > 0);
  const uint64_t longer = std::min<uint64_t>(ticks, UINT32_MAX - deltas_.value);
  const auto delta = static_cast<uint32_t>(deltas_.value + longer);
  if (delta != deltas_.value && deltas_.count == 1) {
    deltas_.value = delta;
    store_big_endian(deltas_.rows.data() + deltas_.rows.size() - 4, delta);
  } else if (delta != deltas_.value) {
    store_big_endian(deltas_.rows.data() + deltas_.rows.size() - 8, deltas_.count - 1);
    TRY(begin_run(deltas_, 1, delta));
  }
  decode_end_ = advanced(decode_end_, longer);
  return {};
}

Status GrowingTables::append_run(RunRows& runs, uint32_t count, uint32_t value) {
  if (runs.count == 0 || value != runs.value) return begin_run(runs, count, value);
  runs.count += count;
  store_big_endian(runs.rows.data() + runs.rows.size() - 8, runs.count);
  return {};
}

Status GrowingTables::begin_run(RunRows& runs, uint32_t count, uint32_t value) {
  TRY(budget_->take_bytes(8));
  append_number(runs.rows, count);
  append_number(runs.rows, value);
  runs.count = count;
  runs.value = value;
  return {};
}

Status GrowingTables::append_deltas(uint32_t count, uint32_t delta) {
  decode_end_ = advanced(decode_end_, uint64_t{count} * delta);
  return append_run(deltas_, count, delta);
}

Status GrowingTables::append_sizes(uint32_t count, uint32_t size) {
  const bool is_uniform =
      size_rows_.empty() && size != 0 && (sized_samples_ == 0 || size == uniform_size_);
  if (is_uniform) {
    uniform_size_ = size;
  } else {
    const uint32_t unlisted = size_rows_.empty() ? sized_samples_ : 0;
    TRY(budget_->take_bytes((uint64_t{unlisted} + count) * 4));
    append_numbers(size_rows_, unlisted, uniform_size_);
    append_numbers(size_rows_, count, size);
  }
  sized_samples_ += count;
  return {};
}

Status GrowingTables::append_sync(uint32_t first_sample, uint32_t count, bool is_sync) {
  if (!is_sync && !has_sync_) {
    has_sync_ = true;
    return list_sync(0, first_sample);
  }
  return is_sync && has_sync_ ? list_sync(first_sample, count) : Status();
}

Status GrowingTables::list_sync(uint32_t first_sample, uint32_t count) {
  TRY(budget_->take_bytes(uint64_t{count} * 4));
  for (uint32_t i = 0; i < count; ++i) append_number(sync_rows_, first_sample + i + 1);
  return {};
}

Status GrowingTables::close_chunk() {
  is_chunk_open_ = false;
  if (chunk_samples_ == 0) return {};
  TRY(budget_->take_bytes(8));
  append_number(chunk_offsets_, chunk_offset_);
  ++chunk_count_;
  uint8_t row[8];
  store_big_endian(row, chunk_samples_);
  store_big_endian(row + 4, chunk_description_);
  chunk_samples_ = 0;
  if (!chunk_runs_.empty() && std::equal(row, row + 8, chunk_runs_.end() - 8)) return {};
  TRY(budget_->take_bytes(12));
  append_number(chunk_runs_, chunk_count_);
  chunk_runs_.insert(chunk_runs_.end(), row, row + 8);
  return {};
}

Status GrowingTables::append_all(const SampleTable& table) {
  assert(sample_count_ == 0);
  TRY(budget_->take_samples(table.sample_count()));
  TRY(copy_times(table.tables().times));
  TRY(copy_sizes(table));
  TRY(copy_sync(table));
  sample_count_ = table.sample_count();
  return copy_chunks(table.tables());
}

// Runs are read as TimeCursor reads them, so that no sample changes its time by being copied.
Status GrowingTables::copy_times(const TimeTables& times) {
  RunReader deltas(times.deltas);
  for (uint32_t left = times.sample_count; left > 0;) {
    const uint32_t available = deltas.available();
    if (deltas.failed()) return deltas.take_status();
    const uint32_t count = available == 0 ? left : std::min(available, left);
    TRY(append_deltas(count, deltas.value()));
    if (available != 0) deltas.use(count);
    left -= count;
  }
  RunReader offsets(times.offsets);
  for (uint32_t left = times.sample_count; left > 0;) {
    const uint32_t available = offsets.available();
    if (offsets.failed()) return offsets.take_status();
    const uint32_t count = available == 0 ? left : std::min(available, left);
    TRY(append_run(offsets_, count, available == 0 ? 0 : offsets.value()));
    if (available != 0) offsets.use(count);
    left -= count;
  }
  return {};
}

Status GrowingTables::copy_sizes(const SampleTable& table) {
  if (const uint32_t size = table.tables().sizes.uniform_size; size != 0) {
    return table.sample_count() > 0 ? append_sizes(table.sample_count(), size) : Status();
  }
  for (uint32_t sample = 0; sample < table.sample_count(); ++sample) {
    TRY_ASSIGN(const uint32_t size, table.size(sample));
    TRY(append_sizes(1, size));
  }
  return {};
}

Status GrowingTables::copy_sync(const SampleTable& table) {
  const SampleTables& tables = table.tables();
  has_sync_ = tables.has_sync && table.sample_count() > 0;
  if (!has_sync_) return {};
  uint32_t previous = 0;
  for (uint64_t row = 0; row < tables.sync.row_count(); ++row) {
    TRY_ASSIGN(const uint8_t* bytes, tables.sync.row(row));
    const auto number = load_big_endian<uint32_t>(bytes);
    if (number <= previous || number > table.sample_count()) break;
    TRY(list_sync(number - 1, 1));
    previous = number;
  }
  return {};
}

// Runs of chunks are read as ChunkIndex reads them. Samples that the chunks leave over get a chunk
// that lies nowhere, so that what follows keeps its own.
Status GrowingTables::copy_chunks(const SampleTables& tables) {
  const TableView& runs = tables.chunk_runs;
  const TableView& offsets = tables.chunk_offsets;
  uint32_t left = sample_count_;
  uint64_t chunk = 0;
  uint32_t first = 1;
  for (uint64_t row = 0; row < runs.row_count() && left > 0; ++row) {
    TRY_ASSIGN(const uint8_t* bytes, runs.row(row));
    const auto samples_a_chunk = load_big_endian<uint32_t>(bytes + 4);
    const auto description = load_big_endian<uint32_t>(bytes + 8);
    uint32_t next_first = 0;
    if (row + 1 < runs.row_count()) {
      TRY_ASSIGN(const uint8_t* next, runs.row(row + 1));
      next_first = load_big_endian<uint32_t>(next);
    }
    const bool is_last = next_first <= first;
    const uint64_t end =
        is_last ? offsets.row_count() : std::min<uint64_t>(offsets.row_count(), next_first - 1);
    if (samples_a_chunk == 0) chunk = std::max(chunk, end);
    for (; chunk < end && left > 0; ++chunk) {
      TRY_ASSIGN(const uint8_t* place, offsets.row(chunk));
      TRY(begin_chunk(offsets.row_size() == 8 ? load_big_endian<uint64_t>(place)
                                              : load_big_endian<uint32_t>(place),
                      description));
      chunk_samples_ = std::min(samples_a_chunk, left);
      left -= chunk_samples_;
    }
    if (is_last) break;
    first = next_first;
  }
  if (left == 0) return {};
  TRY(begin_chunk(kNowhere, 1));
  chunk_samples_ = left;
  return {};
}

TableView GrowingTables::view(const Bytes& rows, uint32_t row_size, const std::string& name) {
  if (rows.empty()) return {};
  const auto is_of_rows = [&](const auto& source) {
    return &static_cast<const GrowingBytes&>(*source).bytes() == &rows;
  };
  auto found = std::find_if(sources_.begin(), sources_.end(), is_of_rows);
  if (found == sources_.end()) {
    found = sources_.insert(found, std::make_unique<GrowingBytes>(rows, name));
  }
  return {{found->get(), 0, rows.size()}, row_size, rows.size() / row_size};
}

Result<SampleTables> GrowingTables::tables(const std::string& name) {
  TRY(close_chunk());
  const bool has_offsets = offsets_.rows.size() > 8 || offsets_.value != 0;
  SampleTables tables;
  tables.times.sample_count = sample_count_;
  tables.times.deltas = view(deltas_.rows, 8, name);
  if (has_offsets) tables.times.offsets = view(offsets_.rows, 8, name);
  tables.has_sync = has_sync_;
  tables.sync = view(sync_rows_, 4, name);
  tables.sizes.uniform_size = size_rows_.empty() ? uniform_size_ : 0;
  tables.sizes.rows = view(size_rows_, 4, name);
  tables.chunk_runs = view(chunk_runs_, 12, name);
  tables.chunk_offsets = view(chunk_offsets_, 8, name);
  return tables;
}

}  // namespace toolbox
