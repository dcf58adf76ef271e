// The steps of composing a movie atom, each for one level of it.
#pragma once

#include <algorithm>

#include "saving/compose.h"

namespace toolbox::composing {

/// What the steps share.
struct Composer {
  const Movie& movie;
  const Composition& composition;
  AtomPieces pieces;

  const OffsetMap& map() const { return *composition.map; }

  /// Whether an atom that did not change may be copied although it holds sample tables.
  bool copies_tables() const { return map().keeps_file() && !composition.is_flat; }
};

/// What is written of a media's data in other files; null when its own tables say it.
inline const OtherFilesData::Tables* other_tables(const Composer& composer, const Media& media) {
  const OtherFilesData* const others = composer.composition.other_files;
  return others == nullptr ? nullptr : others->tables_of(media);
}

Status compose_track(Composer& composer, const Track& track);
Status compose_media(Composer& composer, const Media& media);

/// The `stbl` atom; `stbl` is kNoAtom for a new media.
Status compose_samples(Composer& composer, const Media& media, AtomIndex stbl);

/// Copies an atom of the movie's file.
inline void copy_atom(Composer& composer, AtomIndex index) {
  composer.pieces.copy(composer.movie.opened().tree.whole(index));
}

/// The children of an atom in file order: `visit(index, type)` answers a Status, and whether it has
/// dealt with the child in `bool& done`; a child that it has not is copied. Loose bytes behind the
/// last child are copied as well.
template <class Visit>
Status compose_children(Composer& composer, AtomIndex parent, const AtomChanges& changes,
                        Visit visit) {
  const AtomTree& tree = composer.movie.opened().tree;
  std::vector<FourCC> seen;
  std::vector<const AtomChanges::Change*> changed;
  const auto add_new = [&] {
    for (const AtomChanges::Change& change : changes.list()) {
      if (!change.atom || std::find(changed.begin(), changed.end(), &change) != changed.end()) {
        continue;
      }
      changed.push_back(&change);
      composer.pieces.raw(*change.atom);
    }
  };
  for (AtomIndex child = parent == kNoAtom ? kNoAtom : tree.node(parent).first_child;
       child != kNoAtom; child = tree.node(child).next_sibling) {
    const FourCC type = tree.node(child).type;
    bool done = false;
    TRY(visit(child, type, done));
    if (done) continue;
    const AtomChanges::Change* change = nullptr;
    if (!changes.empty()) {
      const auto number = std::count(seen.begin(), seen.end(), type);
      seen.push_back(type);
      change = changes.find(type, static_cast<uint32_t>(number));
    }
    if (change == nullptr) {
      // A child that claims more than there is, the last one, would swallow what came behind it.
      if (tree.node(child).is_clipped) add_new();
      copy_atom(composer, child);
      continue;
    }
    changed.push_back(change);
    if (change->atom) composer.pieces.raw(*change->atom);
  }
  add_new();
  if (parent != kNoAtom) composer.pieces.copy(tree.loose_tail(parent));
  return {};
}

}  // namespace toolbox::composing
