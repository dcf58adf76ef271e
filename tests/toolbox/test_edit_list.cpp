// Edit lists against an array that says for each tick of a track which media time it shows.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "movie/edit_timeline.h"

namespace toolbox {
namespace {

constexpr int32_t kOne = 0x10000;

TEST(EditList, MapsEveryTickAsTheSegmentsSay) {
  for (uint32_t seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto number = [&](int low, int high) {
      return std::uniform_int_distribution<int>(low, high)(random);
    };
    const TimeScales scales{.movie = static_cast<uint32_t>(number(1, 50)),
                            .media = static_cast<uint32_t>(number(1, 50))};
    const int32_t rates[] = {kOne, kOne, kOne / 2, kOne * 2, kOne * 3, 0};
    std::vector<Edit> edits;
    std::vector<int64_t> shown;  // media time by tick
    int64_t leading_empty = 0;
    for (int i = number(1, 8); i-- > 0;) {
      // The first edit that shows media must have a length: of no length it would mean the whole
      // media.
      const bool only_empties =
          std::all_of(edits.begin(), edits.end(), [](const Edit& e) { return e.is_empty(); });
      Edit edit{.duration = number(only_empties ? 1 : 0, 12),
                .media_start = number(0, 2) == 0 ? -1 : number(0, 100),
                .rate = rates[number(0, 5)]};
      for (int64_t tick = 0; tick < edit.duration; ++tick) {
        // Exact in double: small numbers, and a rate of few bits.
        const double gone = double(tick) * scales.media * edit.rate / (double(scales.movie) * kOne);
        shown.push_back(
            edit.is_empty() ? -1 : edit.media_start + static_cast<int64_t>(std::floor(gone)));
      }
      edits.push_back(edit);
    }
    for (const Edit& edit : edits) {
      if (!edit.is_empty()) break;
      leading_empty += edit.duration;
    }
    const EditTimeline timeline(EditList(edits), scales, 1000);
    ASSERT_EQ(static_cast<int64_t>(shown.size()), timeline.duration());
    for (int64_t tick = -3; tick < timeline.duration() + 3; ++tick) {
      const bool inside = tick >= 0 && tick < timeline.duration();
      ASSERT_EQ(inside ? shown[static_cast<size_t>(tick)] : -1, timeline.media_time(tick))
          << "tick " << tick;
    }
    EXPECT_EQ(leading_empty, timeline.leading_empty());
  }
}

TEST(EditList, FillsInWhatTheFileLeavesOpen) {
  struct Case {
    const char* what;
    std::vector<Edit> edits;
    int64_t media_duration;
    int64_t duration;
    int64_t leading_empty;
  };
  const Case cases[] = {
      {"no edits: the whole media, to the nearest tick", {}, 1001, 601, 0},
      {"no edits: halves go up", {}, 1500, 900, 0},
      {"no edits and no media", {}, 0, 0, 0},
      {"a first edit of no length: to the end of the media", {{0, 1000, kOne}}, 3000, 1200, 0},
      {"the same at double rate", {{0, 1000, 2 * kOne}}, 3000, 600, 0},
      {"the same behind empty time", {{50, -1, kOne}, {0, 0, kOne}}, 1000, 650, 50},
      {"a later edit of no length is of no length", {{60, 0, kOne}, {0, 0, kOne}}, 1000, 60, 0},
      {"a first edit of no length behind the end of the media", {{0, 5000, kOne}}, 1000, 0, 0},
      {"two empty edits in front", {{5, -1, kOne}, {7, -2, kOne}, {10, 0, kOne}}, 1000, 22, 12},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.what);
    const EditTimeline timeline(EditList(each.edits), {.movie = 600, .media = 1000},
                                each.media_duration);
    EXPECT_EQ(each.duration, timeline.duration());
    EXPECT_EQ(each.leading_empty, timeline.leading_empty());
  }
}

TEST(EditList, StartsRoundedUpMapBackToTheirOwnTime) {
  const EditTimeline timeline(EditList(), {.movie = 600, .media = 1000}, 10'000);
  const EditSpan& whole = timeline.spans().front();
  EXPECT_EQ(601, whole.first_tick(1001, timeline.scales()));
  EXPECT_EQ(1001, timeline.media_time(601));
  EXPECT_EQ(1000, timeline.media_time(600));
  EXPECT_EQ(1202, whole.first_tick(2002, timeline.scales()));
  EXPECT_EQ(2003, timeline.media_time(1202));
  EXPECT_EQ(2001, timeline.media_time(1201));
}

TEST(EditList, SurvivesNumbersThatOverflow) {
  const Edit huge{kTimeLimit, kTimeLimit, INT32_MAX};
  const EditTimeline timeline(EditList({huge, huge, huge}), {UINT32_MAX, UINT32_MAX}, kTimeLimit);
  EXPECT_EQ(kTimeLimit, timeline.duration());
  EXPECT_GE(timeline.media_time(kTimeLimit - 1), kTimeLimit);
  const EditTimeline implicit(EditList(), {UINT32_MAX, 1}, kTimeLimit);
  EXPECT_EQ(kTimeLimit, implicit.duration());
}

}  // namespace
}  // namespace toolbox
