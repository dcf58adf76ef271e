// What time codes cost: their arithmetic, and adding a track of them beside the tool that people
// use.
#pragma once

#include <filesystem>

namespace bench {

struct TimecodeSpeed {
  // Nanoseconds a conversion, of ten million drop-frame ones, the checksum of which is right.
  double to_label_ns = 0;
  double to_frame_ns = 0;

  // Milliseconds of whole processes, flushes included, the least of several.
  double krz_small = 0;  // krz timecode add to a two-hour movie with 120 MB of media data
  double krz_large = 0;  // with 12 GiB, in a sparse file
  double ffmpeg = 0;     // ffmpeg -c copy -timecode of the smaller one; 0 when it is not installed
};

/// Writes its files into the folder. Ends the program with a message when a step fails.
TimecodeSpeed measure_timecode(const std::filesystem::path& krz,
                               const std::filesystem::path& folder);

}  // namespace bench
