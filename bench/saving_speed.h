// What saving and editing cost, beside what the same bytes cost a plain C program and cp. Flushes
// to the disk are left out on both sides: they are the disk's speed, not ours.
#pragma once

#include <filesystem>

namespace bench {

/// The least of several runs in turn, in milliseconds.
struct SavingSpeed {
  // A two-hour movie is opened, one field of a track changes, the movie is saved into its file.
  double save_small = 0;    // 12 MiB of media data
  double save_large = 0;    // 12 GiB of media data, in a sparse file
  double rewrite_atom = 0;  // a plain read of the same movie atom and a write to where it was
  double flushed_save = 0;  // as save_large, with the flushes

  // A thousand segment edits on a track with a thousand edits.
  double thousand_edits = 0;

  // The same file written anew: as a movie, and by cp --reflink=auto.
  double save_as = 0;
  double copy = 0;
};

/// Writes its files into the folder. Ends the program with a message when a step fails.
SavingSpeed measure_saving(const std::filesystem::path& folder);

}  // namespace bench
