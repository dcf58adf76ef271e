// What adding and listing chapters costs, beside the tools that people do it with.
#pragma once

#include <filesystem>

namespace bench {

/// Whole processes on a two-hour movie with 12 MiB of media data, the least of several, in
/// milliseconds. Flushes are left out.
struct ChapterSpeed {
  double import = 0;  // 2,000 chapters, in place
  double ffmpeg = 0;  // the same into a new file, its one way
  double list = 0;    // of the 2,000
  double ffprobe = 0;
  double few_each = 0;       // a chapter more, from 100 to 3,000
  double many_each = 0;      // from 3,000 to 30,000
  uint64_t extra_bytes = 0;  // of the 2,000, beyond their samples and the movie atom
};

/// Writes its files into the folder. Ends the program with a message when a step fails.
ChapterSpeed measure_chapters(const std::filesystem::path& krz,
                              const std::filesystem::path& folder);

}  // namespace bench
