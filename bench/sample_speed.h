// What looking at samples costs: walks over all of them, single ones by time, and lists.
#pragma once

#include <array>
#include <filesystem>
#include <string>

#include "process.h"

namespace bench {

struct SampleSpeed {
  // Every sample of ten million, through the C calls.
  double walk_ns = 0;      // a sample
  double walk_memory = 0;  // MiB that the walk adds to the process

  // One sample by its time, bytes aside, in movies of 10^3 to 10^7 samples.
  std::array<double, 5> access_ns{};

  // Two hours of pictures and sound as lines of text.
  Timing list;     // krz samples list --csv, both tracks
  Timing plain;    // a bare loop that decodes and prints
  Timing ffprobe;  // ffprobe -show_packets -of csv
};

/// Writes its files into the folder. Ends the program with a message when a step fails.
SampleSpeed measure_samples(const std::filesystem::path& folder, const std::filesystem::path& bin,
                            const std::filesystem::path& ten_million_samples);

}  // namespace bench
