// Reading an atom of a tree into its struct.
#pragma once

#include "atoms/atom_reader.h"
#include "file/atom_tree.h"

namespace toolbox {

/// Decodes the atom at `index` as an `Atom`. Tables stay behind views that borrow the tree's
/// sources; memory is bounded by the bytes of the atom that are really there. Fails:
/// badPublicMovieAtom (damaged; the text names file, path, field and offset), featureUnsupported (a
/// version that the struct does not know: keep the bytes), memFullErr (larger than
/// kLargestLoadedAtom), ioErr, eofErr.
template <class Atom>
Result<Atom> read_atom(const AtomTree& tree, AtomIndex index) {
  AtomFailure failure;
  std::optional<Atom> atom = decode_atom<Atom>(tree.payload(index), failure);
  if (atom) return std::move(*atom);
  return tree.failure(index, failure.code, failure.field, failure.offset, failure.text);
}

/// The first child of `parent` with the type of `Atom`; nullopt when there is none.
template <class Atom>
Result<std::optional<Atom>> read_child(const AtomTree& tree, AtomIndex parent) {
  static_assert(Atom::kType.type != kAnyType, "name the child by its index");
  const AtomIndex index = tree.find_child(parent, Atom::kType.type);
  if (index == kNoAtom) return std::optional<Atom>();
  TRY_ASSIGN(Atom atom, read_atom<Atom>(tree, index));
  return std::optional<Atom>(std::move(atom));
}

}  // namespace toolbox
