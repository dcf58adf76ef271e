#include "timecode_speed.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "handlers/timecode.h"
#include "movies.h"
#include "process.h"

namespace bench {

namespace {

namespace fs = std::filesystem;
using toolbox::TimecodeDefinition;
using toolbox::TimecodeRecord;

constexpr int64_t kConversions = 10'000'000;
constexpr int kRounds = 5;

[[noreturn]] void fail(const char* text) {
  std::fprintf(stderr, "%s\n", text);
  std::exit(1);
}

double nanoseconds_since(std::chrono::steady_clock::time_point begin) {
  const auto passed = std::chrono::steady_clock::now() - begin;
  return std::chrono::duration<double, std::nano>(passed).count() / kConversions;
}

void measure_conversions(TimecodeSpeed& speed) {
  const TimecodeDefinition definition{
      .flags = TimecodeDefinition::kDropFrame | TimecodeDefinition::k24Hours,
      .time_scale = 30000,
      .frame_duration = 1001,
      .frames = 30};
  const int64_t day = definition.frames_a_day();
  speed.to_label_ns = speed.to_frame_ns = 1e9;
  for (int round = 0; round < kRounds; ++round) {
    uint64_t frames = 0;
    uint64_t labels = 0;
    auto begin = std::chrono::steady_clock::now();
    // Frames far apart: all of a day are met, in no order that helps.
    for (int64_t i = 0, frame = 0; i < kConversions; ++i, frame += 7919) {
      if (frame >= day) frame -= day;
      labels += static_cast<uint32_t>(toolbox::timecode_of_frame(definition, frame)->counter());
    }
    speed.to_label_ns = std::min(speed.to_label_ns, nanoseconds_since(begin));
    begin = std::chrono::steady_clock::now();
    for (int64_t i = 0; i < kConversions; ++i) {
      const auto label = static_cast<uint32_t>(i * 2654435761);
      const TimecodeRecord record{.hours = static_cast<uint8_t>(label >> 24 & 15),
                                  .minutes = static_cast<uint8_t>(label >> 16 & 31),
                                  .seconds = static_cast<uint8_t>(label >> 8 & 31),
                                  .frames = static_cast<uint8_t>(2 + (label & 15))};
      frames += static_cast<uint64_t>(*toolbox::frame_of_timecode(definition, record));
    }
    speed.to_frame_ns = std::min(speed.to_frame_ns, nanoseconds_since(begin));
    if (labels == 0 || frames == 0) fail("time codes were not converted");
  }
}

std::vector<std::string> add_words(const fs::path& krz, const fs::path& movie) {
  return {krz.string(), "timecode", "add",       movie.string(), "--start", "01:00:00:00",
          "--rate",     "25",       "--replace", "-i",           "-q"};
}

}  // namespace

TimecodeSpeed measure_timecode(const fs::path& krz, const fs::path& folder) {
  constexpr uint64_t kSmall = 120'000'000;
  constexpr uint64_t kLarge = uint64_t{12} << 30;
  TimecodeSpeed speed;
  measure_conversions(speed);
  const fs::path small = folder / "timecode-small.mov";
  const fs::path large = folder / "timecode-large.mov";
  const fs::path copy = folder / "timecode-copy.mov";
  write_two_hours(small, kSmall);
  write_two_hours(large, kLarge);
  const bool has_ffmpeg = std::system("command -v ffmpeg >/dev/null 2>&1") == 0;
  std::vector<Command> commands = {{"krz", add_words(krz, small)}, {"krz", add_words(krz, large)}};
  if (has_ffmpeg) {
    commands.push_back({"ffmpeg",
                        {"ffmpeg", "-v", "error", "-y", "-i", small.string(), "-map", "0:v", "-map",
                         "0:a", "-c", "copy", "-timecode", "01:00:00:00", copy.string()}});
  }
  const std::vector<Timing> timings = time_in_turn(commands, kRounds);
  for (const Timing& timing : timings) {
    if (timing.exit_status != 0) fail("a timecode track was not added");
  }
  speed.krz_small = timings[0].least_ms;
  speed.krz_large = timings[1].least_ms;
  if (has_ffmpeg) speed.ffmpeg = timings[2].least_ms;
  for (const fs::path& path : {small, large, copy}) fs::remove(path);
  return speed;
}

}  // namespace bench
