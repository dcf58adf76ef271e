// What setting a title in place costs, beside the tools that people set titles with.
#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// Milliseconds; 0 for a tool that is not installed.
struct ToolTimes {
  double krz = 0;
  double atomic_parsley = 0;
  double exiftool = 0;
};

/// Of a two-hour movie with 12 MiB of media data, in milliseconds, unless said otherwise.
struct MetadataSpeed {
  // In this process, with the flushes left out: the movie is opened, its title set, saved.
  double set_small = 0;
  double set_large = 0;      // 12 GiB of media data, in a sparse file
  uint64_t extra_bytes = 0;  // written beyond the movie atom

  double many_items = 0;  // 100,000 added to another movie, walked and saved

  // As whole processes, krz without flushes.
  ToolTimes first;        // a title for a movie that had none
  ToolTimes again;        // the same title once more, where no atom changes its size
  ToolTimes first_large;  // 12 GiB, which the others write anew; only with KRZ_BENCH_LARGE=1
};

/// Writes its files into the folder. Ends the program with a message when a step fails.
MetadataSpeed measure_metadata(const std::filesystem::path& krz,
                               const std::filesystem::path& folder);

}  // namespace bench
