// Going back to before a save, as long as what it replaced still stands in the file.
#pragma once

#include <vector>

#include "file/movie_file.h"

namespace toolbox {

/// A save that can be taken back.
struct UndoStep {
  uint64_t time = 0;             // of the save, seconds since 1904-01-01 UTC
  uint64_t replaced_offset = 0;  // of the movie atom that comes back
  uint64_t replaced_size = 0;    // bytes
};

/// The saves that can be taken back, the latest first: each one's movie atom must still stand as it
/// was, and lead on to the next. Fails: as reading the file fails.
Result<std::vector<UndoStep>> undo_steps(const OpenedMovie& opened);

/// Takes the latest save back with the switch that saves use: the replaced movie atom counts again.
/// What the save appended stays until the next save. `path` must not be open for writing.
/// Fails: paramErr when there is nothing to take back; as opening for writing; ioErr.
Status undo_save(const std::string& path);

/// Overwrites with zeros what is kept for undo: the movie atoms that saves replaced, and their
/// markers' records of them. Answers the bytes overwritten. Fails: as opening for writing; ioErr.
Result<uint64_t> commit_saves(const std::string& path);

}  // namespace toolbox
