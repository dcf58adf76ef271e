// Sample tables made from plain lists for tests, and the same lists as the oracle that the tables
// are held against.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "file/memory_source.h"
#include "movie/sample_table.h"

namespace toolbox::testing {

/// One sample with everything said about it.
struct ExpandedSample {
  uint32_t delta = 0;
  int32_t offset = 0;
  bool sync = true;
  uint32_t size = 0;
  int64_t decode = 0;
  uint64_t file_offset = 0;
  uint32_t chunk = 0;
  uint32_t description = 1;
  int64_t display() const { return decode + offset; }
};

/// The tables of a list of samples, in memory, with run lengths packed as files have them.
class TestTables {
 public:
  bool has_offsets = false;
  bool has_sync = false;
  bool wide_chunk_offsets = false;
  uint8_t size_bits = 32;
  uint32_t uniform_size = 0;
  std::vector<ExpandedSample> samples;

  SampleTables make() {
    SampleTables tables;
    tables.times.sample_count = static_cast<uint32_t>(samples.size());
    tables.times.deltas = runs([](const ExpandedSample& s) { return s.delta; });
    if (has_offsets) {
      tables.times.offsets =
          runs([](const ExpandedSample& s) { return static_cast<uint32_t>(s.offset); });
    }
    tables.has_sync = has_sync;
    if (has_sync) {
      Bytes rows;
      for (size_t i = 0; i < samples.size(); ++i) {
        if (samples[i].sync) append(rows, static_cast<uint32_t>(i + 1));
      }
      tables.sync = table(std::move(rows), 4);
    }
    tables.sizes.uniform_size = uniform_size;
    tables.sizes.bits = size_bits;
    if (uniform_size == 0) tables.sizes.rows = sizes();
    Bytes chunks;
    Bytes chunk_runs;
    std::optional<std::pair<uint32_t, uint32_t>> run;
    for (size_t i = 0; i < samples.size();) {
      size_t end = i;
      while (end < samples.size() && samples[end].chunk == samples[i].chunk) ++end;
      const std::pair<uint32_t, uint32_t> here(static_cast<uint32_t>(end - i),
                                               samples[i].description);
      if (run != here) {
        append(chunk_runs, samples[i].chunk + 1);
        append(chunk_runs, here.first);
        append(chunk_runs, here.second);
        run = here;
      }
      if (wide_chunk_offsets) {
        append(chunks, samples[i].file_offset);
      } else {
        append(chunks, static_cast<uint32_t>(samples[i].file_offset));
      }
      i = end;
    }
    tables.chunk_runs = table(std::move(chunk_runs), 12);
    tables.chunk_offsets = table(std::move(chunks), wide_chunk_offsets ? 8 : 4);
    return tables;
  }

  /// A view over bytes that live as long as this.
  TableView table(Bytes bytes, uint32_t row_size) {
    sources_.push_back(std::make_unique<MemorySource>(std::move(bytes), "test"));
    const ByteRange range = sources_.back()->whole();
    return TableView(range, row_size, range.size / row_size);
  }

  template <class T>
  static void append(Bytes& bytes, T value) {
    bytes.resize(bytes.size() + sizeof value);
    store_big_endian(bytes.data() + bytes.size() - sizeof value, value);
  }

 private:
  template <class Value>
  TableView runs(Value value) {
    Bytes rows;
    for (size_t i = 0; i < samples.size();) {
      size_t end = i;
      while (end < samples.size() && value(samples[end]) == value(samples[i])) ++end;
      append(rows, static_cast<uint32_t>(end - i));
      append(rows, value(samples[i]));
      i = end;
    }
    return table(std::move(rows), 8);
  }

  TableView sizes() {
    Bytes rows;
    for (size_t i = 0; i < samples.size(); ++i) {
      const uint32_t size = samples[i].size;
      if (size_bits == 32) append(rows, size);
      if (size_bits == 16) append(rows, static_cast<uint16_t>(size));
      if (size_bits == 8) append(rows, static_cast<uint8_t>(size));
      if (size_bits == 4 && i % 2 == 0) append(rows, static_cast<uint8_t>(size << 4));
      if (size_bits == 4 && i % 2 == 1) rows.back() = static_cast<uint8_t>(rows.back() | size);
    }
    return table(std::move(rows), size_bits == 32 ? 4 : 1);
  }

  std::vector<std::unique_ptr<MemorySource>> sources_;
};

/// How a random media is shaped.
struct RandomShape {
  size_t samples = 40;
  uint32_t largest_delta = 3;
  int32_t largest_offset = 0;  // 0: no offset table
  bool sync = false;
  double change = 0.5;  // how likely a value differs from the one before
};

inline void fill_randomly(TestTables& tables, const RandomShape& shape, std::mt19937& random) {
  const auto number = [&](int64_t low, int64_t high) {
    return std::uniform_int_distribution<int64_t>(low, high)(random);
  };
  const auto happens = [&](double chance) { return std::bernoulli_distribution(chance)(random); };
  tables.has_offsets = shape.largest_offset != 0;
  tables.has_sync = shape.sync;
  tables.samples.resize(shape.samples);
  ExpandedSample last{.delta = 1};
  uint32_t left_in_chunk = 0;
  for (size_t i = 0; i < shape.samples; ++i) {
    ExpandedSample& sample = tables.samples[i];
    sample.decode = i == 0 ? 0 : last.decode + last.delta;
    sample.delta =
        happens(shape.change) ? static_cast<uint32_t>(number(0, shape.largest_delta)) : last.delta;
    sample.offset = happens(shape.change)
                        ? static_cast<int32_t>(number(-shape.largest_offset, shape.largest_offset))
                        : last.offset;
    sample.sync = !shape.sync || happens(0.2);
    const uint32_t largest_size = tables.size_bits == 32 ? 70000 : (1u << tables.size_bits) - 1;
    sample.size = tables.uniform_size != 0 ? tables.uniform_size
                                           : static_cast<uint32_t>(number(1, largest_size));
    if (left_in_chunk == 0) {
      left_in_chunk = happens(0.5) ? 3 : static_cast<uint32_t>(number(1, 5));
      sample.chunk = i == 0 ? 0 : last.chunk + 1;
      sample.description = static_cast<uint32_t>(number(1, 2));
      sample.file_offset = static_cast<uint64_t>(number(0, 1'000'000)) +
                           (tables.wide_chunk_offsets ? uint64_t{5} << 32 : 0);
    } else {
      sample.chunk = last.chunk;
      sample.description = last.description;
      sample.file_offset = last.file_offset + last.size;
    }
    --left_in_chunk;
    last = sample;
  }
}

}  // namespace toolbox::testing
