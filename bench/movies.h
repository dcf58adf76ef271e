// The movies that the benchmarks look at: sample tables written directly, media data as a hole in
// the file.
#pragma once

#include <cstdint>
#include <filesystem>

#include "file/movie_builder.h"

namespace bench {

struct Movies {
  std::filesystem::path ten_seconds;          // video and sound
  std::filesystem::path ten_million_samples;  // one video track, every table at full length
  std::filesystem::path two_hundred_tracks;
};

/// Writes the movies into a folder. Ends the program with a message when that fails.
Movies make_movies(const std::filesystem::path& folder);

/// One video track whose tables are at full length: a time, an offset, a size and a chunk for every
/// sample.
void write_long_movie(const std::filesystem::path& path, uint32_t samples);

/// Two hours of pictures and sound, half a million samples, with tables as encoders write them.
void write_two_hours(const std::filesystem::path& path, uint64_t media_bytes,
                     toolbox::BuiltMovie::Brand brand = toolbox::BuiltMovie::Brand::kQuickTime);

}  // namespace bench
