// Copies of tracks inside one movie that share its samples.
#pragma once

#include "movie/track.h"

namespace toolbox {

enum class CloneEdits : uint8_t { kCopied, kNone };

/// Adds a copy of a track to its movie, behind the last one and with an ID of its own: the same
/// properties, atoms and references to other tracks, a media over the same sample tables. Without
/// edits, it shows nothing until some are inserted.
/// Fails: as Media::descriptions().
Result<Track*> clone_track(const Track& track, CloneEdits edits);

}  // namespace toolbox
