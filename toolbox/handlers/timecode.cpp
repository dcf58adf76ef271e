#include "handlers/timecode.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <limits>

namespace toolbox {

namespace {

// The label's frames of a frame: those that are left out before it are added.
//
//   ten minutes     600 N - 9 D frames   the first minute is whole, nine lack D labels each
//   first minute    60 N frames
//   other minutes   60 N - D frames
//
// Counting from D frames into the ten minutes makes the first minute as long as the others.
template <class Number>
Number with_left_out(Number frame, Number frames, Number dropped) {
  const Number ten_minutes = 600 * frames - 9 * dropped;
  const Number tens = frame / ten_minutes;
  const Number rest = frame - tens * ten_minutes;
  Number minutes = 9 * tens;
  if (rest >= dropped) minutes += (rest - dropped) / (60 * frames - dropped);
  return frame + dropped * minutes;
}

template <class Number>
TimecodeRecord split(Number frame, Number frames, Number dropped) {
  if (dropped != 0) frame = with_left_out(frame, frames, dropped);
  const Number seconds = frame / frames;
  const Number minutes = seconds / 60;
  const Number hours = minutes / 60;
  return {.hours = static_cast<uint8_t>(hours),
          .minutes = static_cast<uint8_t>(minutes - hours * 60),
          .seconds = static_cast<uint8_t>(seconds - minutes * 60),
          .frames = static_cast<uint8_t>(frame - seconds * frames)};
}

constexpr int64_t kShort = std::numeric_limits<int32_t>::max();

bool is_separator(char character) {
  return character == ':' || character == ';' || character == '.' || character == ',';
}

Status no_timecode(std::string_view text, const std::string& why) {
  return {paramErr, "\"" + std::string(text) + "\" is no time code: " + why};
}

std::string two_digits(unsigned value) { return (value < 10 ? "0" : "") + std::to_string(value); }

// The four numbers of a label; false when the text is not of that form.
bool read_parts(std::string_view text, unsigned (&parts)[4], char& last_separator) {
  const char* at = text.data();
  const char* const end = at + text.size();
  for (unsigned& part : parts) {
    const bool is_first = &part == parts;
    if (!is_first) {
      if (at == end || !is_separator(*at)) return false;
      last_separator = *at++;
    }
    const auto [next, error] = std::from_chars(at, end, part);
    if (error != std::errc() || next - at > 3) return false;
    at = next;
  }
  return at == end;
}

Result<TimecodeRecord> parse_counter(std::string_view text) {
  int32_t counter = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), counter);
  if (error != std::errc() || end != text.data() + text.size()) {
    return no_timecode(text, "the track counts frames; write a whole number");
  }
  return TimecodeRecord::of_counter(counter);
}

}  // namespace

std::optional<int64_t> frame_of_timecode(const TimecodeDefinition& definition,
                                         TimecodeRecord record) {
  if (definition.is_counter()) return record.counter();
  if (definition.frames == 0) return std::nullopt;
  const uint32_t minutes = record.hours * 60U + (record.minutes & ~TimecodeRecord::kNegative);
  const int64_t frame = int64_t{minutes * 60 + record.seconds} * definition.frames + record.frames -
                        int64_t{definition.dropped()} * (minutes - minutes / 10);
  const bool is_negative = (record.minutes & TimecodeRecord::kNegative) != 0 &&
                           (definition.flags & TimecodeDefinition::kNegativeAllowed) != 0;
  return is_negative ? -frame : frame;
}

std::optional<TimecodeRecord> timecode_of_frame(const TimecodeDefinition& definition,
                                                int64_t frame) {
  if (definition.is_counter()) return TimecodeRecord::of_counter(static_cast<int32_t>(frame));
  if (definition.frames == 0) return std::nullopt;
  const uint32_t dropped = definition.dropped();
  const uint32_t day = definition.frames_a_day();
  bool is_negative = false;
  if (frame < 0) {
    is_negative = (definition.flags & TimecodeDefinition::kNegativeAllowed) != 0;
    if (is_negative) {
      // The smallest number has no opposite; both are as good at that size.
      frame = frame == std::numeric_limits<int64_t>::min() ? std::numeric_limits<int64_t>::max()
                                                           : -frame;
    } else {
      frame = (frame % day + day) % day;
    }
  }
  if ((definition.flags & TimecodeDefinition::k24Hours) != 0 && frame >= day) frame %= day;
  // Short divisions take half the time, or less.
  constexpr int64_t kRoom = kShort - kShort / 100;
  const uint32_t frames = definition.frames;
  TimecodeRecord record;
  if (frame < kRoom) {
    record = split<uint32_t>(static_cast<uint32_t>(frame), frames, dropped);
  } else {
    constexpr int64_t kMostFrames = std::numeric_limits<int64_t>::max() / 2;
    record = split<uint64_t>(static_cast<uint64_t>(std::min(frame, kMostFrames)), frames, dropped);
  }
  if (is_negative) record.minutes |= TimecodeRecord::kNegative;
  return record;
}

std::string timecode_text(const TimecodeDefinition& definition, TimecodeRecord record) {
  if (definition.is_counter()) return std::to_string(record.counter());
  const unsigned minutes = record.minutes & ~TimecodeRecord::kNegative;
  const bool is_negative = (definition.flags & TimecodeDefinition::kNegativeAllowed) != 0 &&
                           (record.minutes & TimecodeRecord::kNegative) != 0 &&
                           (record.hours | minutes | record.seconds | record.frames) != 0;
  return (is_negative ? "-" : "") + two_digits(record.hours) + ":" + two_digits(minutes) + ":" +
         two_digits(record.seconds) + (definition.drops_frames() ? ";" : ":") +
         two_digits(record.frames);
}

Result<TimecodeRecord> parse_timecode(const TimecodeDefinition& definition, std::string_view text) {
  if (definition.is_counter()) return parse_counter(text);
  const bool is_negative = text.starts_with('-');
  unsigned parts[4] = {};
  char last_separator = ':';
  if (!read_parts(text.substr(is_negative ? 1 : 0), parts, last_separator)) {
    return no_timecode(text, "write hours, minutes, seconds and frames, as 01:00:00:00");
  }
  const auto [hours, minutes, seconds, frames] = parts;
  const bool wraps = (definition.flags & TimecodeDefinition::k24Hours) != 0;
  const unsigned most_hours = wraps ? 23 : 255;
  if (hours > most_hours) {
    return no_timecode(text, "hours go from 00 to " + std::to_string(most_hours) +
                                 (wraps ? " where the day wraps" : ""));
  }
  if (minutes > 59 || seconds > 59) {
    return no_timecode(text, "minutes and seconds go from 00 to 59");
  }
  if (frames >= definition.frames) {
    return no_timecode(
        text, "frames go from 00 to " + std::to_string(definition.frames - 1) + " at this rate");
  }
  if (last_separator != ':' && !definition.drops_frames()) {
    return no_timecode(text, std::string("\"") + last_separator +
                                 "\" in front of the frames says drop-frame, and this rate drops "
                                 "none; write \":\", or name a rate that ends in df");
  }
  if (frames < definition.dropped() && seconds == 0 && minutes % 10 != 0) {
    const std::string minute = two_digits(hours) + ":" + two_digits(minutes) + ":00;";
    return no_timecode(text, "drop-frame counting leaves out the frames 00 to " +
                                 two_digits(definition.dropped() - 1) +
                                 " of that minute, which begins with " + minute +
                                 two_digits(definition.dropped()));
  }
  if (is_negative && (definition.flags & TimecodeDefinition::kNegativeAllowed) == 0) {
    return no_timecode(text, "negative time codes are not allowed here");
  }
  return TimecodeRecord{
      .hours = static_cast<uint8_t>(hours),
      .minutes = static_cast<uint8_t>(minutes | (is_negative ? TimecodeRecord::kNegative : 0U)),
      .seconds = static_cast<uint8_t>(seconds),
      .frames = static_cast<uint8_t>(frames)};
}

std::vector<std::string> timecode_faults(const TimecodeDefinition& definition) {
  std::vector<std::string> faults;
  const uint32_t flags = definition.flags;
  if ((flags & ~TimecodeDefinition::kAllFlags) != 0) {
    char text[64];
    std::snprintf(text, sizeof text, "unknown flags 0x%X are set",
                  static_cast<unsigned>(flags & ~TimecodeDefinition::kAllFlags));
    faults.emplace_back(text);
  }
  const bool has_rate = definition.time_scale > 0 && definition.frame_duration > 0;
  if (!has_rate) {
    faults.push_back("a rate of " + std::to_string(definition.time_scale) + " units a second and " +
                     std::to_string(definition.frame_duration) + " a frame is no rate");
  }
  if (definition.is_counter()) {
    if ((flags & TimecodeDefinition::kDropFrame) != 0) {
      faults.emplace_back("the flags counter and drop-frame exclude each other");
    }
    return faults;
  }
  if (definition.frames == 0) faults.emplace_back("0 frames a second cannot be counted");
  if (definition.drops_frames() && (definition.frames == 0 || definition.frames % 30 != 0)) {
    faults.push_back("drop-frame counting needs a multiple of 30 frames a second, not " +
                     std::to_string(definition.frames));
  }
  if (has_rate && definition.frames != 0) {
    const double rate = double{1} * definition.time_scale / definition.frame_duration;
    if (rate > definition.frames + 0.5 || rate <= definition.frames - 1.0) {
      char text[96];
      std::snprintf(text, sizeof text, "labels count %u frames a second where %.3f pass",
                    unsigned{definition.frames}, rate);
      faults.emplace_back(text);
    } else if (definition.drops_frames() && definition.frames % 30 == 0 &&
               rate == definition.frames) {
      faults.emplace_back("drop-frame counting at a whole rate leaves clock time behind");
    }
  }
  return faults;
}

}  // namespace toolbox
