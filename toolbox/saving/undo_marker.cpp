#include "saving/undo_marker.h"

#include "atoms/read_atom.h"
#include "saving/checksum.h"

namespace toolbox {

uint64_t UndoMarkerAtom::own_checksum() const {
  uint64_t sum = 0;
  for (const uint64_t word : {magic, replaced_offset, replaced_size, replaced_checksum, time}) {
    sum = mix(sum, word);
  }
  return sum;
}

std::optional<UndoMarkerAtom> read_undo_marker(const AtomTree& tree, AtomIndex atom) {
  const AtomNode& node = tree.node(atom);
  if (node.type != UndoMarkerAtom::kType.type || node.size != UndoMarkerAtom::kAtomBytes) return {};
  Result<UndoMarkerAtom> marker = read_atom<UndoMarkerAtom>(tree, atom);
  if (!marker.ok()) return {};
  if (marker.value().magic != UndoMarkerAtom::kMagic) return {};
  if (marker.value().checksum != marker.value().own_checksum()) return {};
  return marker.take();
}

std::vector<PlacedUndoMarker> undo_markers(const AtomTree& tree) {
  std::vector<PlacedUndoMarker> markers;
  for (AtomIndex atom = tree.first_top_level(); atom != kNoAtom;
       atom = tree.node(atom).next_sibling) {
    if (std::optional<UndoMarkerAtom> marker = read_undo_marker(tree, atom)) {
      markers.push_back({tree.node(atom).offset, *marker});
    }
  }
  return markers;
}

}  // namespace toolbox
