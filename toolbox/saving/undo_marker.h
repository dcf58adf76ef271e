// The small free atom in front of what a save appends: it says which movie atom the save replaced.
#pragma once

#include <optional>
#include <vector>

#include "atoms/atom_type.h"
#include "file/atom_tree.h"

namespace toolbox {

/// The payload of a marker. What it says of is still in the file, as a `free` atom.
struct UndoMarkerAtom : PlainAtom {
  static constexpr AtomType kType = plain_atom(four_cc("free"));
  static constexpr uint64_t kMagic = 0x6B727A2073746570;  // "krz step"
  static constexpr uint64_t kAtomBytes = 8 + 6 * 8;

  uint64_t magic = kMagic;
  uint64_t replaced_offset = 0;    // of the movie atom that was replaced
  uint64_t replaced_size = 0;      // bytes, header included
  uint64_t replaced_checksum = 0;  // of its payload
  uint64_t time = 0;               // of the save, seconds since 1904-01-01 UTC
  uint64_t checksum = 0;           // of the five numbers above

  uint64_t own_checksum() const;

  template <class Io>
  void fields(Io& io) {
    io("magic", magic);
    io("replaced_offset", replaced_offset);
    io("replaced_size", replaced_size);
    io("replaced_checksum", replaced_checksum);
    io("time", time);
    io("checksum", checksum);
  }
};

/// The marker that an atom is; nothing when it is none, or damaged.
std::optional<UndoMarkerAtom> read_undo_marker(const AtomTree& tree, AtomIndex atom);

struct PlacedUndoMarker {
  uint64_t offset = 0;  // of the marker's own atom
  UndoMarkerAtom marker;
};

/// The markers of a file in their order, which is that of the saves.
std::vector<PlacedUndoMarker> undo_markers(const AtomTree& tree);

}  // namespace toolbox
