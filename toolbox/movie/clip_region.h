// The region that a track or a movie is cut to, in the `crgn` atom inside its `clip` atom.
#pragma once

#include "file/atom_tree.h"
#include "graphics/region.h"
#include "movie/atom_changes.h"

namespace toolbox {

/// The atoms of a clip's owner, as its changes leave them.
struct ClipOwner {
  const AtomTree& tree;
  AtomIndex atom;  // kNoAtom for an owner that is not in the file
  const AtomChanges& changes;
};

/// The clip region; nothing when there is none. Of a record with damaged rows its rectangle.
/// Fails: badPublicMovieAtom for one without even that, ioErr, eofErr.
Result<std::optional<Region>> read_clip(const ClipOwner& owner);

/// Changes `changes`, the owner's own, so that it is cut to `region`, or not at all. An owner that
/// already is is left alone, with the bytes of its file; so are other atoms beside the region.
/// Answers whether something changed.
/// Fails: rgnTooBigErr for a region that no record can hold, and as read_clip; nothing changes
/// then.
Result<bool> write_clip(const ClipOwner& owner, AtomChanges& changes,
                        const std::optional<Region>& region);

}  // namespace toolbox
