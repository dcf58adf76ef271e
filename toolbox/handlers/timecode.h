// The arithmetic of time codes: labels, frame numbers and counters, by the definition of a media.
//
// Drop-frame counting leaves labels out, never frames: at 30 frames a second the labels 00 and 01
// of every minute but the tenth ones. So the hour of labels lasts as long as the hour of a clock.
//
//   label      00:00:59;28  00:00:59;29  00:01:00;02  00:01:00;03
//   frame             1798         1799         1800         1801
#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"

namespace toolbox {

/// How time codes count.
struct TimecodeDefinition {
  static constexpr uint32_t kDropFrame = 1;
  static constexpr uint32_t k24Hours = 2;  // 23:59:59 is followed by 00:00:00
  static constexpr uint32_t kNegativeAllowed = 4;
  static constexpr uint32_t kCounter = 8;  // a number, no label; the other flags say nothing
  static constexpr uint32_t kAllFlags = 15;

  uint32_t flags = 0;
  int32_t time_scale = 0;      // units a second
  int32_t frame_duration = 0;  // in time_scale
  uint8_t frames = 0;          // a second, as labels count them

  bool is_counter() const { return (flags & kCounter) != 0; }
  bool drops_frames() const { return (flags & kDropFrame) != 0; }

  /// Labels that are left out of a minute: 2 for each 30 frames a second.
  uint32_t dropped() const { return drops_frames() ? frames / 30U * 2 : 0; }

  /// Frames of 24 hours of labels.
  uint32_t frames_a_day() const { return 86400U * frames - 1296 * dropped(); }
};

/// One time code, or the counter in its place.
struct TimecodeRecord {
  static constexpr uint8_t kNegative = 0x80;  // in the minutes

  uint8_t hours = 0;
  uint8_t minutes = 0;
  uint8_t seconds = 0;
  uint8_t frames = 0;

  static TimecodeRecord of_counter(int32_t counter) {
    return std::bit_cast<TimecodeRecord>(counter);
  }
  int32_t counter() const { return std::bit_cast<int32_t>(*this); }
  bool operator==(const TimecodeRecord&) const = default;
};
static_assert(sizeof(TimecodeRecord) == sizeof(int32_t));

/// The frame of a label, which is taken as it stands: a label that is left out is that many frames
/// behind its minute. Nothing for a definition of 0 frames a second.
std::optional<int64_t> frame_of_timecode(const TimecodeDefinition& definition,
                                         TimecodeRecord record);

/// The label of a frame. A negative frame that the definition does not allow is as many whole days
/// later as it takes; of hours above 255 the low 8 bits are kept. Nothing for a definition of 0
/// frames a second.
std::optional<TimecodeRecord> timecode_of_frame(const TimecodeDefinition& definition,
                                                int64_t frame);

/// "01:00:00:02", "01:00:00;02" where frames are dropped, "-" in front of a negative one; a counter
/// as its number.
std::string timecode_text(const TimecodeDefinition& definition, TimecodeRecord record);

/// Reads what people write, strictly. Any of ":;.," may separate the parts; a last one that is not
/// ":" says drop-frame. Fails: paramErr; the text says why the label cannot be.
Result<TimecodeRecord> parse_timecode(const TimecodeDefinition& definition, std::string_view text);

/// What is wrong with a definition, a sentence for each fault.
std::vector<std::string> timecode_faults(const TimecodeDefinition& definition);

}  // namespace toolbox
