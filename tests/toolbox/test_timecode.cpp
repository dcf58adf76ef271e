// Time codes against counting, frame by frame, as a clock that drops labels would.
#include <gtest/gtest.h>

#include <array>

#include "handlers/timecode.h"

namespace toolbox {
namespace {

using Definition = TimecodeDefinition;
constexpr uint32_t kDrop = Definition::kDropFrame;
constexpr uint32_t kWrap = Definition::k24Hours;
constexpr uint32_t kNegative = Definition::kNegativeAllowed;
constexpr uint32_t kCounter = Definition::kCounter;

/// The oracle: a clock that counts labels one by one and steps over those that are left out.
class Clock {
 public:
  Clock(unsigned frames, unsigned dropped) : frames_(frames), dropped_(dropped) {}

  TimecodeRecord now() const {
    return {static_cast<uint8_t>(hours_), static_cast<uint8_t>(minutes_),
            static_cast<uint8_t>(seconds_), static_cast<uint8_t>(frame_)};
  }
  bool is_next_day() const { return hours_ == 24; }

  void tick() {
    if (++frame_ < frames_) return;
    frame_ = 0;
    if (++seconds_ < 60) return;
    seconds_ = 0;
    if (++minutes_ == 60) {
      minutes_ = 0;
      ++hours_;
    }
    if (minutes_ % 10 != 0) frame_ = dropped_;
  }

 private:
  unsigned frames_, dropped_;
  unsigned hours_ = 0, minutes_ = 0, seconds_ = 0, frame_ = 0;
};

// Counts a whole day; checks each frame, there and back, in both directions of zero.
void check_a_day(uint8_t frames, bool drops, int64_t frames_a_day) {
  SCOPED_TRACE(frames);
  Clock clock(frames, drops ? frames / 30U * 2 : 0);
  const Definition plain{.flags = drops ? kDrop : 0, .frames = frames};
  const Definition wrapped{.flags = plain.flags | kWrap, .frames = frames};
  const Definition negative{.flags = plain.flags | kNegative, .frames = frames};
  int64_t frame = 0;
  for (; !clock.is_next_day(); clock.tick(), ++frame) {
    const TimecodeRecord label = clock.now();
    TimecodeRecord below = label;
    below.minutes |= TimecodeRecord::kNegative;
    const bool is_right = timecode_of_frame(plain, frame) == label &&
                          timecode_of_frame(wrapped, frame + frames_a_day) == label &&
                          timecode_of_frame(plain, frame - frames_a_day) ==
                              (frame == 0 ? timecode_of_frame(plain, 0) : label) &&
                          frame_of_timecode(plain, label) == frame &&
                          (frame == 0 || timecode_of_frame(negative, -frame) == below) &&
                          frame_of_timecode(negative, below) == -frame;
    ASSERT_TRUE(is_right) << "frame " << frame << ", " << timecode_text(plain, label);
  }
  EXPECT_EQ(frame, frames_a_day);
  EXPECT_EQ(plain.frames_a_day(), frames_a_day);
}

TEST(Timecode, EveryFrameOfADayIsCountedAsAClockCounts) {
  check_a_day(30, true, 2589408);
  check_a_day(60, true, 5178816);
  check_a_day(30, false, 2592000);
  check_a_day(60, false, 5184000);
}

TEST(Timecode, OtherRatesAreCountedAsAClockCounts) {
  for (const unsigned frames :
       {1, 8, 12, 15, 24, 25, 29, 48, 50, 59, 61, 72, 90, 100, 120, 150, 240, 255}) {
    for (const bool drops : {false, true}) {
      const uint32_t dropped = drops ? frames / 30 * 2 : 0;
      SCOPED_TRACE(frames);
      Clock clock(frames, dropped);
      const Definition definition{.flags = drops ? kDrop : 0,
                                  .frames = static_cast<uint8_t>(frames)};
      // Twenty-five minutes hold every kind of minute; beyond, single frames.
      for (int64_t frame = 0; frame < int64_t{frames} * 1500; ++frame, clock.tick()) {
        ASSERT_EQ(timecode_of_frame(definition, frame), clock.now()) << frame;
        ASSERT_EQ(frame_of_timecode(definition, clock.now()), frame);
      }
      for (int64_t frame = 1; frame < definition.frames_a_day(); frame = frame * 3 / 2 + 1) {
        ASSERT_EQ(frame_of_timecode(definition, *timecode_of_frame(definition, frame)), frame);
      }
    }
  }
}

TEST(Timecode, NumbersAndTexts) {
  const struct {
    uint32_t flags;
    uint8_t frames;
    int64_t frame;
    const char* text;
  } cases[] = {
      {kDrop, 30, 1799, "00:00:59;29"},
      {kDrop, 30, 1800, "00:01:00;02"},
      {kDrop, 30, 17982, "00:10:00;00"},
      {kDrop, 30, 107894, "01:00:00;02"},
      {kDrop, 30, 2589408, "24:00:00;00"},
      {kDrop | kWrap, 30, 2589408, "00:00:00;00"},
      {kDrop | kWrap, 30, -1, "23:59:59;29"},
      {0, 30, 2589408, "23:58:33:18"},
      {kDrop, 60, 3600, "00:01:00;04"},
      {kDrop, 24, 1440, "00:01:00;00"},  // nothing to drop at that rate
      {0, 25, 25 * 3600 * 100 + 7, "100:00:00:07"},
      {0, 25, int64_t{25} * 3600 * 256, "00:00:00:00"},  // hours have eight bits
      {0, 120, 119, "00:00:00:119"},
      {kNegative, 25, -250, "-00:00:10:00"},
      {kNegative | kWrap, 25, -25 * 86400 - 1, "-00:00:00:01"},
      {kNegative, 25, 0, "00:00:00:00"},
      {kWrap, 25, -25 * 86400 * 3 - 1, "23:59:59:24"},
      {kCounter, 0, -100, "-100"},
      {kCounter | kDrop | kWrap, 30, 2147483647, "2147483647"},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.text);
    const Definition definition{.flags = one.flags, .frames = one.frames};
    const auto record = timecode_of_frame(definition, one.frame);
    ASSERT_TRUE(record);
    EXPECT_EQ(timecode_text(definition, *record), one.text);
    const int64_t back = *frame_of_timecode(definition, *record);
    if (definition.is_counter() || (one.frame >= 0 && one.frame < definition.frames_a_day())) {
      EXPECT_EQ(back, one.frame);
    }
  }
  const Definition drop{.flags = kDrop, .frames = 30};
  EXPECT_EQ(frame_of_timecode(drop, {0, 1, 0, 0}), 1798) << "a label that is left out";
  const Definition negative{.flags = kNegative, .frames = 25};
  EXPECT_EQ(timecode_text(negative, {0, 0x80, 0, 0}), "00:00:00:00") << "nothing has no sign";
  EXPECT_EQ(frame_of_timecode({.frames = 25}, {0, 0x85, 0, 0}), 5 * 60 * 25)
      << "a sign that is not allowed";
}

TEST(Timecode, NothingIsDividedByZeroAndNoNumberIsTooLarge) {
  for (const uint32_t flags : {0U, kDrop, kWrap | kNegative, kDrop | kWrap | kNegative}) {
    const Definition none{.flags = flags, .frames = 0};
    EXPECT_EQ(timecode_of_frame(none, 1), std::nullopt);
    EXPECT_EQ(frame_of_timecode(none, {1, 2, 3, 4}), std::nullopt);
    for (const unsigned frames : {1, 29, 30, 255}) {
      const Definition definition{.flags = flags, .frames = static_cast<uint8_t>(frames)};
      for (const int64_t frame : {INT64_MIN, INT64_MIN + 1, int64_t{INT32_MIN}, int64_t{UINT32_MAX},
                                  int64_t{INT32_MAX}, INT64_MAX}) {
        const auto record = timecode_of_frame(definition, frame);
        ASSERT_TRUE(record);
        EXPECT_LT(record->minutes & 0x7F, 60);
        EXPECT_LT(record->seconds, 60);
        EXPECT_LT(record->frames, frames);
      }
    }
  }
}

TEST(Timecode, WhatPeopleWriteIsReadStrictly) {
  const Definition drop{.flags = kDrop | kWrap, .frames = 30};
  const Definition film{.flags = 0, .frames = 24};
  const Definition signed_film{.flags = kNegative | kWrap, .frames = 24};
  const Definition fast{.flags = kDrop, .frames = 120};
  const struct {
    const Definition& definition;
    const char* text;
    const char* read;  // what it says again, or what is wrong with it
  } cases[] = {
      {drop, "01:00:00;02", "01:00:00;02"},
      {drop, "1:2:3:4", "01:02:03;04"},
      {drop, "00;01;00;02", "00:01:00;02"},
      {drop, "00:10:00.00", "00:10:00;00"},
      {drop, "00:01:00;01", "leaves out the frames 00 to 01"},
      {drop, "00:01:01;00", "00:01:01;00"},
      {fast, "00:59:00;007", "leaves out the frames 00 to 07"},
      {fast, "00:59:00;008", "00:59:00;08"},
      {drop, "24:00:00;00", "hours go from 00 to 23"},
      {film, "24:00:00:00", "24:00:00:00"},
      {film, "256:00:00:00", "hours go from 00 to 255"},
      {film, "00:60:00:00", "from 00 to 59"},
      {film, "00:00:60:00", "from 00 to 59"},
      {film, "00:00:00:24", "frames go from 00 to 23"},
      {film, "00:00:00;00", "says drop-frame"},
      {film, "-00:00:01:00", "not allowed"},
      {signed_film, "-00:00:01:00", "-00:00:01:00"},
      {film, "", "write hours"},
      {film, "-", "write hours"},
      {film, "00:00:00", "write hours"},
      {film, "00:00:00:00:00", "write hours"},
      {film, "00:00:00:00x", "write hours"},
      {film, "00:00: 0:00", "write hours"},
      {film, "00:+1:00:00", "write hours"},
      {film, "99999999999:00:00:00", "write hours"},
      {film, "0000:00:00:00", "write hours"},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.text);
    const auto record = parse_timecode(one.definition, one.text);
    if (record.ok()) {
      EXPECT_EQ(timecode_text(one.definition, record.value()), one.read);
    } else {
      EXPECT_EQ(record.status().code(), paramErr);
      EXPECT_NE(record.status().message().find(one.read), std::string::npos)
          << record.status().message();
    }
  }
  const Definition counter{.flags = kCounter};
  EXPECT_EQ(parse_timecode(counter, "-7").value().counter(), -7);
  EXPECT_FALSE(parse_timecode(counter, "00:00:00:01").ok());
  EXPECT_FALSE(parse_timecode(counter, "2147483648").ok());
}

TEST(Timecode, FaultsOfDefinitionsAreNamed) {
  const struct {
    Definition definition;
    const char* fault;  // nothing: it is sound
  } cases[] = {
      {{kDrop | kWrap, 30000, 1001, 30}, nullptr},
      {{kDrop, 2997, 100, 30}, nullptr},
      {{kWrap, 24000, 1001, 24}, nullptr},
      {{0, 25, 1, 25}, nullptr},
      {{kCounter, 600, 20, 0}, nullptr},
      {{kDrop, 25, 1, 25}, "multiple of 30"},
      {{kDrop, 30, 1, 30}, "whole rate"},
      {{kCounter | kDrop, 30000, 1001, 30}, "exclude"},
      {{0x10, 25, 1, 25}, "unknown flags 0x10"},
      {{0, 0, 1, 25}, "no rate"},
      {{0, 25, 0, 25}, "no rate"},
      {{0, -25, 1, 25}, "no rate"},
      {{0, 25, 1, 0}, "0 frames"},
      {{0, 50, 1, 25}, "count 25 frames a second where 50.000 pass"},
      {{0, 24000, 1001, 25}, "count 25"},
  };
  for (const auto& one : cases) {
    const auto faults = timecode_faults(one.definition);
    ASSERT_EQ(faults.size(), one.fault == nullptr ? 0u : 1u) << (one.fault ? one.fault : faults[0]);
    if (one.fault) {
      EXPECT_NE(faults[0].find(one.fault), std::string::npos) << faults[0];
    }
  }
}

}  // namespace
}  // namespace toolbox
