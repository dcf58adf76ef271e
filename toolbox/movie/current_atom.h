// A child atom of a track or media as it is now: as it was changed, else as its file has it.
#pragma once

#include <optional>

#include "atoms/atom_reader.h"
#include "file/atom_tree.h"
#include "movie/atom_changes.h"

namespace toolbox {

/// The first child of `parent` with that type, whole; nothing when there is none. `parent` may be
/// kNoAtom. Fails: ioErr, eofErr, memFullErr for an atom larger than kLargestLoadedAtom.
inline Result<std::optional<Bytes>> current_atom(const AtomTree& tree, AtomIndex parent,
                                                 const AtomChanges& changes, FourCC type) {
  if (const AtomChanges::Change* change = changes.find(type)) return change->atom;
  const AtomIndex child = parent == kNoAtom ? kNoAtom : tree.find_child(parent, type);
  if (child == kNoAtom) return std::optional<Bytes>();
  const ByteRange whole = tree.whole(child);
  if (whole.size > kLargestLoadedAtom) {
    return tree.failure(child, memFullErr, "", tree.node(child).offset,
                        "is too large to be loaded");
  }
  Bytes bytes(static_cast<size_t>(whole.size));
  TRY(whole.source->read(whole.offset, bytes));
  return std::optional<Bytes>(std::move(bytes));
}

}  // namespace toolbox
