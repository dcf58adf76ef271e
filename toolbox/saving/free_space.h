// Where in a file a new movie atom can go without the file growing.
#pragma once

#include <optional>

#include "file/atom_tree.h"

namespace toolbox {

/// Free atoms one behind the other that have room for a movie atom:
///
///   | free, shortened to its header and a few bytes | the movie atom | free: the rest |
///   begin                                           movie_offset                     end
struct Room {
  AtomIndex first = kNoAtom;  // the free atom at `begin`; the movie atom goes into its payload
  uint64_t begin = 0;
  uint64_t end = 0;
  uint64_t movie_offset = 0;
  bool is_joined = false;  // of several atoms: the first must be made longer before
  bool was_ours = false;   // holds what earlier saves replaced
};

/// How many saves can be taken back before their space is used again.
inline constexpr size_t kKeptUndoSteps = 8;

/// The first room for a movie atom of that size; nothing when there is none. Behind the media, what
/// the latest saves replaced is left alone; and the movie atom never comes to a place where one
/// stood that a marker speaks of.
std::optional<Room> find_room(const AtomTree& tree, uint64_t movie_bytes);

/// Whether bytes may be torn when they are written at once: they do not lie in one sector.
bool straddles(uint64_t offset, uint64_t size);

}  // namespace toolbox
