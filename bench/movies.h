// The movies that the benchmarks look at: sample tables written directly, media data as a hole in
// the file.
#pragma once

#include <filesystem>

namespace bench {

struct Movies {
  std::filesystem::path ten_seconds;          // video and sound
  std::filesystem::path ten_million_samples;  // one video track, every table at full length
  std::filesystem::path two_hundred_tracks;
};

/// Writes the movies into a folder. Ends the program with a message when that fails.
Movies make_movies(const std::filesystem::path& folder);

}  // namespace bench
