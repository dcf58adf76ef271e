// Interesting times against a walk over every tick of the track.
#include <gtest/gtest.h>

#include <map>

#include "expanded_samples.h"
#include "movie/interesting_times.h"

namespace toolbox::testing {
namespace {

constexpr int32_t kOne = 0x10000;

// What appears at a tick: for how long, and whether a sync sample is among it.
struct Appearance {
  int64_t duration = 0;
  bool sync = false;
};

// Samples in the order of their display times, those of one time together.
struct Group {
  int64_t time = 0;
  int64_t until = 0;
  bool sync = false;
};

std::vector<Group> groups_of(const std::vector<ExpandedSample>& samples) {
  std::map<int64_t, Group> by_time;
  for (const ExpandedSample& sample : samples) {
    Group& group = by_time[sample.display()];
    group = {sample.display(), sample.display() + sample.delta, group.sync || sample.sync};
  }
  std::vector<Group> groups;
  for (const auto& [time, group] : by_time) {
    if (!groups.empty()) groups.back().until = time;
    groups.push_back(group);
  }
  // A last sample of no duration is shown as long as there is an edit.
  if (!groups.empty() && groups.back().until == groups.back().time) groups.back().until = INT32_MAX;
  return groups;
}

// Every start in a track: walks the ticks and looks what each one shows.
std::map<int64_t, Appearance> appearances(const EditTimeline& timeline,
                                          const std::vector<ExpandedSample>& samples) {
  const std::vector<Group> groups = groups_of(samples);
  std::map<int64_t, Appearance> found;
  for (const EditSpan& span : timeline.spans()) {
    if (span.is_empty()) continue;
    size_t reached = 0;  // groups that have begun
    Appearance* running = nullptr;
    for (int64_t tick = span.start; tick < span.end(); ++tick) {
      const int64_t media_time = timeline.media_time(tick);
      const size_t before = reached;
      while (reached < groups.size() && groups[reached].time <= media_time) ++reached;
      bool appears = reached != before;
      bool sync = false;
      if (appears && tick == span.start) {
        appears = groups[reached - 1].until > media_time;
        sync = groups[reached - 1].sync;
      } else {
        for (size_t i = before; i < reached; ++i) sync = sync || groups[i].sync;
      }
      if (appears) {
        running = &found[tick];
        *running = {.duration = 1, .sync = sync};
      } else if (running != nullptr && groups[reached - 1].until > media_time) {
        ++running->duration;
      }
    }
  }
  return found;
}

struct Expected {
  int64_t time = 0;
  int64_t duration = 0;
};

std::vector<Expected> expected(Interest interest, const EditTimeline& timeline,
                               const std::vector<ExpandedSample>& samples) {
  std::vector<Expected> all;
  if (interest == Interest::kSample || interest == Interest::kSyncSample) {
    for (const auto& [tick, what] : appearances(timeline, samples)) {
      if (interest == Interest::kSample || what.sync) all.push_back({tick, what.duration});
    }
    return all;
  }
  for (const EditSpan& span : timeline.spans()) {
    if (span.duration == 0 || (interest == Interest::kMediaEdit && span.is_empty())) continue;
    all.push_back({span.start, span.duration});
  }
  if (interest == Interest::kTrackEdit && timeline.duration() > 0)
    all.push_back({timeline.duration(), 0});
  return all;
}

void expect_same(const Expected* wanted, const Result<std::optional<InterestingTime>>& got) {
  ASSERT_TRUE(got.ok()) << got.status().message();
  ASSERT_EQ(wanted != nullptr, got.value().has_value());
  if (wanted == nullptr) return;
  EXPECT_EQ(wanted->time, got.value()->time);
  EXPECT_EQ(wanted->duration, got.value()->duration);
}

EditList random_edits(std::mt19937& random, int64_t media_duration) {
  const auto number = [&](int64_t low, int64_t high) {
    return std::uniform_int_distribution<int64_t>(low, high)(random);
  };
  const int32_t rates[] = {kOne, kOne, kOne, kOne / 2, kOne * 2, 0};
  std::vector<Edit> edits;
  for (int64_t i = number(0, 6); i-- > 0;) {
    edits.push_back({.duration = number(0, 25),
                     .media_start = number(0, 3) == 0 ? -1 : number(0, media_duration + 3),
                     .rate = rates[number(0, 5)]});
  }
  return EditList(std::move(edits));
}

TEST(InterestingTimes, AgreeWithAWalkOverEveryTick) {
  for (uint32_t seed = 1; seed <= 400; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    TestTables tables;
    fill_randomly(tables,
                  {.samples = seed % 25,
                   .largest_delta = 1 + seed % 6,
                   .largest_offset = seed % 2 == 0 ? 0 : static_cast<int32_t>(seed % 9),
                   .sync = seed % 3 != 0},
                  random);
    const SampleTable table(tables.make());
    const int64_t media_duration = table.duration().value();
    const TimeScales scales{.movie = 1 + static_cast<uint32_t>(random() % 9),
                            .media = 1 + static_cast<uint32_t>(random() % 9)};
    const EditTimeline timeline(random_edits(random, media_duration), scales, media_duration);
    const InterestingTimes times(timeline, table);
    for (const Interest interest :
         {Interest::kSample, Interest::kSyncSample, Interest::kMediaEdit, Interest::kTrackEdit}) {
      SCOPED_TRACE("interest " + std::to_string(static_cast<int>(interest)));
      const std::vector<Expected> all = expected(interest, timeline, tables.samples);
      for (int64_t tick = -2; tick <= timeline.duration() + 2; ++tick) {
        SCOPED_TRACE("tick " + std::to_string(tick));
        const auto next =
            std::find_if(all.begin(), all.end(), [&](auto& e) { return e.time >= tick; });
        expect_same(next == all.end() ? nullptr : &*next, times.next(interest, tick));
        const auto previous =
            std::find_if(all.rbegin(), all.rend(), [&](auto& e) { return e.time <= tick; });
        expect_same(previous == all.rend() ? nullptr : &*previous, times.previous(interest, tick));
        if (HasFatalFailure()) return;
      }
    }
    if (HasNonfatalFailure()) return;
  }
}

TEST(InterestingTimes, ReportChapterStartsThatLeadBackToTheirOwnSample) {
  TestTables tables;
  tables.samples = {
      {.delta = 1001}, {.delta = 1001, .decode = 1001}, {.delta = 998, .decode = 2002}};
  const SampleTable table(tables.make());
  const EditTimeline timeline(EditList(), {.movie = 600, .media = 1000}, table.duration().value());
  const InterestingTimes times(timeline, table);
  EXPECT_EQ(601, times.next(Interest::kSample, 1).value()->time);
  EXPECT_EQ(1001, timeline.media_time(601));
  EXPECT_EQ(1202, times.next(Interest::kSample, 602).value()->time);
  EXPECT_EQ(2003, timeline.media_time(1202));
  EXPECT_EQ(598, times.next(Interest::kSample, 602).value()->duration);
}

}  // namespace
}  // namespace toolbox::testing
