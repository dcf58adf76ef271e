// Sample tables against the same samples written out one by one.
#include <gtest/gtest.h>

#include "expanded_samples.h"

namespace toolbox::testing {
namespace {

using Set = SampleTable::Set;

// The first or last of the samples that a test wants, found the slow way; of equal times the last
// sample.
template <class Wanted, class Better>
std::optional<DisplayPoint> pick(const std::vector<ExpandedSample>& samples, Wanted wanted,
                                 Better better) {
  std::optional<DisplayPoint> best;
  for (size_t i = 0; i < samples.size(); ++i) {
    const int64_t time = samples[i].display();
    if (!wanted(samples[i], time)) continue;
    if (!best || !better(best->time, time))
      best = {time, static_cast<uint32_t>(i), samples[i].delta};
  }
  return best;
}

void expect_same(const std::optional<DisplayPoint>& wanted,
                 const Result<std::optional<DisplayPoint>>& got) {
  ASSERT_TRUE(got.ok()) << got.status().message();
  ASSERT_EQ(wanted.has_value(), got.value().has_value());
  if (!wanted) return;
  EXPECT_EQ(wanted->time, got.value()->time);
  EXPECT_EQ(wanted->sample, got.value()->sample);
  EXPECT_EQ(wanted->delta, got.value()->delta);
}

void expect_searches_agree(const SampleTable& table, const std::vector<ExpandedSample>& samples,
                           int64_t time) {
  SCOPED_TRACE("time " + std::to_string(time));
  for (const Set set : {Set::kAll, Set::kSync}) {
    const auto in_set = [&](const ExpandedSample& s) { return set == Set::kAll || s.sync; };
    expect_same(
        pick(
            samples, [&](auto& s, int64_t t) { return in_set(s) && t > time; }, std::less<>()),
        table.next_displayed(set, time));
    expect_same(
        pick(
            samples, [&](auto& s, int64_t t) { return in_set(s) && t <= time; }, std::greater<>()),
        table.previous_displayed(set, time));
  }
  std::optional<uint32_t> decoded;
  for (size_t i = 0; i < samples.size(); ++i) {
    if (samples[i].decode <= time) decoded = static_cast<uint32_t>(i);
  }
  const int64_t end = samples.empty() ? 0 : samples.back().decode + samples.back().delta;
  if (time < 0 || time >= end) decoded.reset();
  const auto found = table.sample_at_decode_time(time);
  ASSERT_TRUE(found.ok());
  EXPECT_EQ(decoded, found.value());
}

void expect_sample_agrees(const SampleTable& table, const std::vector<ExpandedSample>& samples,
                          uint32_t index) {
  SCOPED_TRACE("sample " + std::to_string(index));
  const ExpandedSample& sample = samples[index];
  const auto times = table.times(index);
  ASSERT_TRUE(times.ok()) << times.status().message();
  EXPECT_EQ(sample.decode, times.value().decode);
  EXPECT_EQ(sample.display(), times.value().display);
  EXPECT_EQ(sample.delta, times.value().delta);
  EXPECT_EQ(sample.sync, table.is_sync(index).value());
  const auto location = table.location(index);
  ASSERT_TRUE(location.ok()) << location.status().message();
  EXPECT_EQ(sample.file_offset, location.value().offset);
  EXPECT_EQ(sample.size, location.value().size);
  EXPECT_EQ(sample.chunk, location.value().chunk);
  EXPECT_EQ(sample.description, location.value().description);
}

TEST(SampleTable, AgreesWithExpandedSamplesOnSmallMedia) {
  for (uint32_t seed = 1; seed <= 120; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    TestTables tables;
    tables.wide_chunk_offsets = seed % 2 == 0;
    tables.size_bits = std::array<uint8_t, 4>{4, 8, 16, 32}[seed % 4];
    if (seed % 5 == 0) tables.uniform_size = 7;
    fill_randomly(tables,
                  {.samples = seed % 60,
                   .largest_delta = 1 + seed % 4,
                   .largest_offset = seed % 3 == 0 ? 0 : static_cast<int32_t>(seed % 13),
                   .sync = seed % 4 != 1},
                  random);
    const SampleTable table(tables.make());
    ASSERT_EQ(tables.samples.size(), table.sample_count());
    int64_t duration = 0;
    for (const ExpandedSample& sample : tables.samples) duration += sample.delta;
    EXPECT_EQ(duration, table.duration().value());
    for (int64_t time = -20; time <= duration + 20; ++time)
      expect_searches_agree(table, tables.samples, time);
    for (uint32_t i = 0; i < table.sample_count(); ++i)
      expect_sample_agrees(table, tables.samples, i);
    if (HasFatalFailure()) return;
  }
}

TEST(SampleTable, AgreesAcrossManyBlocksOfTheIndex) {
  for (const int32_t largest_offset : {0, 6, 100'000}) {
    SCOPED_TRACE("offsets up to " + std::to_string(largest_offset));
    std::mt19937 random(static_cast<uint32_t>(7 + largest_offset));
    TestTables tables;
    fill_randomly(tables,
                  {.samples = 20'000,
                   .largest_delta = 5,
                   .largest_offset = largest_offset,
                   .sync = true,
                   .change = 0.9},
                  random);
    const SampleTable table(tables.make());
    const int64_t duration = table.duration().value();
    for (int i = 0; i < 60; ++i) {
      expect_searches_agree(table, tables.samples,
                            std::uniform_int_distribution<int64_t>(-10, duration + 10)(random));
      expect_sample_agrees(table, tables.samples,
                           static_cast<uint32_t>(random() % tables.samples.size()));
    }
  }
}

TEST(SampleTable, ShowsEachSampleUntilTheNextOneInDisplayOrder) {
  TestTables tables;
  tables.has_offsets = true;  // displayed in the order 0 2 1 3
  tables.samples = {{.delta = 10, .offset = 0},
                    {.delta = 10, .offset = 10, .decode = 10},
                    {.delta = 10, .offset = -10, .decode = 20},
                    {.delta = 4, .offset = 0, .decode = 30}};
  const SampleTable table(tables.make());
  EXPECT_EQ(10, *table.shown_until({.time = 0}).value());
  EXPECT_EQ(20, *table.shown_until({.time = 10}).value());
  EXPECT_EQ(34, *table.shown_until({.time = 30}).value());
  EXPECT_EQ(2u, table.next_displayed(Set::kAll, 0).value()->sample);
}

// Builds tables from raw rows, so that they may lie.
struct RawTables : TestTables {
  TableView rows(std::vector<uint32_t> numbers, uint32_t row_size) {
    Bytes bytes;
    for (const uint32_t number : numbers) append(bytes, number);
    return table(std::move(bytes), row_size);
  }
};

TEST(SampleTable, GivesDamagedTimeTablesAMeaning) {
  RawTables raw;
  struct Case {
    const char* what;
    std::vector<uint32_t> runs;
    uint32_t samples;
    int64_t duration;
    int64_t start_of_last;
  };
  const Case cases[] = {
      {"runs of no length are skipped", {0, 9, 2, 5, 0, 7, 1, 3}, 3, 13, 10},
      {"a missing tail repeats the last delta", {2, 5}, 4, 20, 15},
      {"runs beyond the samples are ignored", {2, 5, 100, 9}, 3, 19, 10},
      {"a last delta of 0 adds nothing", {2, 5, 1, 0}, 3, 10, 10},
      {"without rows all samples start at 0", {}, 3, 0, 0},
      {"four thousand million samples cost nothing",
       {UINT32_MAX, 2},
       UINT32_MAX,
       8589934590,
       8589934588},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.what);
    SampleTables tables;
    tables.times.sample_count = each.samples;
    tables.times.deltas = raw.rows(each.runs, 8);
    const SampleTable table(std::move(tables));
    EXPECT_EQ(each.duration, table.duration().value());
    EXPECT_EQ(each.start_of_last, table.times(each.samples - 1).value().decode);
    EXPECT_EQ(each.start_of_last, table.previous_displayed(Set::kAll, kTimeLimit).value()->time);
    EXPECT_EQ(invalidSampleNum, table.times(each.samples).status().code());
  }
}

TEST(SampleTable, SaturatesTimesThatOverflow) {
  RawTables raw;
  std::vector<uint32_t> runs;
  for (int i = 0; i < 40; ++i) runs.insert(runs.end(), {0x10000000, UINT32_MAX});
  SampleTables tables;
  tables.times.sample_count = UINT32_MAX;
  tables.times.deltas = raw.rows(runs, 8);
  const SampleTable table(std::move(tables));
  EXPECT_EQ(kTimeLimit, table.duration().value());
  EXPECT_EQ(kTimeLimit, table.times(UINT32_MAX - 1).value().decode);
  EXPECT_FALSE(table.next_displayed(Set::kAll, kTimeLimit).value());
}

TEST(SampleTable, IgnoresWhatFollowsARowOutOfOrder) {
  RawTables raw;
  SampleTables tables;
  tables.times.sample_count = 10;
  tables.times.deltas = raw.rows({10, 1}, 8);
  tables.has_sync = true;
  tables.sync = raw.rows({1, 5, 4, 9}, 4);
  tables.sizes.uniform_size = 2;
  tables.chunk_runs = raw.rows({1, 2, 1, 3, 1, 2, 2, 50, 3}, 12);
  tables.chunk_offsets = raw.rows({100, 200, 300, 400}, 4);
  const SampleTable table(std::move(tables));
  EXPECT_TRUE(table.is_sync(4).value());
  EXPECT_FALSE(table.is_sync(3).value());
  EXPECT_FALSE(table.is_sync(8).value());
  EXPECT_EQ(202u, table.location(3).value().offset);
  EXPECT_EQ(400u, table.location(5).value().offset);
  EXPECT_EQ(invalidSampleTable, table.location(6).status().code());
}

TEST(SampleTable, WithoutSyncTableEverySampleIsSyncAndWithAnEmptyOneNone) {
  RawTables raw;
  for (const bool has_sync : {false, true}) {
    SampleTables tables;
    tables.times.sample_count = 3;
    tables.times.deltas = raw.rows({3, 1}, 8);
    tables.has_sync = has_sync;
    const SampleTable table(std::move(tables));
    EXPECT_EQ(!has_sync, table.is_sync(1).value());
    EXPECT_EQ(!has_sync, table.next_displayed(Set::kSync, -1).value().has_value());
  }
}

TEST(SampleTable, PassesOnReadErrors) {
  struct FailingSource : MemorySource {
    using MemorySource::MemorySource;
    Status read(uint64_t, std::span<uint8_t>) const override { return Status(ioErr, "gone"); }
  };
  const FailingSource source(Bytes(64), "test");
  SampleTables tables;
  tables.times.sample_count = 8;
  tables.times.deltas = TableView(source.whole(), 8, 8);
  tables.sizes.uniform_size = 1;
  tables.chunk_runs = TableView(source.whole(), 12, 5);
  tables.chunk_offsets = TableView(source.whole(), 4, 16);
  const SampleTable table(std::move(tables));
  EXPECT_EQ(ioErr, table.duration().status().code());
  EXPECT_EQ(ioErr, table.times(0).status().code());
  EXPECT_EQ(ioErr, table.next_displayed(Set::kAll, 0).status().code());
  EXPECT_EQ(ioErr, table.location(0).status().code());
}

}  // namespace
}  // namespace toolbox::testing
