// The short list of chapters in a movie's user data, `udta/chpl`, which some players read in place
// of a chapter track.
#pragma once

#include "base/bytes.h"
#include "base/status.h"

namespace toolbox {

class Movie;

/// More do not fit the list: its count is one byte to most readers.
inline constexpr size_t kMostShortChapters = 255;

/// The whole entries of the list, one behind the other as they stand in the file: start (signed 64
/// bits big-endian, units of 100 ns), length of the title in bytes (8 bits), title (UTF-8). Empty
/// when there is no list; a damaged list ends where the damage begins. Fails: ioErr, eofErr,
/// memFullErr.
Result<Bytes> read_short_chapters(Movie& movie);

/// Takes entries of that form in place of the movie's list; none removes it. All else of the user
/// data stays. Fails: paramErr for more than 255 or a damaged entry, memFullErr for user data of
/// more than 64 MiB, ioErr, eofErr; nothing is changed then.
Status set_short_chapters(Movie& movie, ByteView entries);

}  // namespace toolbox
