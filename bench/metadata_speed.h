// What setting a title in place costs, beside the tools that people set titles with.
#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// Of a two-hour movie with 12 MiB of media data, in milliseconds, unless said otherwise.
struct MetadataSpeed {
  // In this process, with the flushes left out: the movie is opened, its title set, saved.
  double set_small = 0;
  double set_large = 0;      // 12 GiB of media data, in a sparse file
  uint64_t extra_bytes = 0;  // written beyond the movie atom

  double many_items = 0;  // 100,000 added to another movie, walked and saved

  // As whole processes, krz without flushes. 0 for a tool that is not installed.
  double krz = 0;
  double atomic_parsley = 0;
  double exiftool = 0;

  // The same with 12 GiB, which the others write anew; only with KRZ_BENCH_LARGE=1, else 0.
  double krz_large = 0;
  double atomic_parsley_large = 0;
  double exiftool_large = 0;
};

/// Writes its files into the folder. Ends the program with a message when a step fails.
MetadataSpeed measure_metadata(const std::filesystem::path& krz,
                               const std::filesystem::path& folder);

}  // namespace bench
