// The edit list: which spans of the media make up a track.
#pragma once

#include "atoms/atom_type.h"

namespace toolbox {

/// The spans of media that make up a track, in playing order.
struct EditListAtom : FullAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("elst"), {.parent = four_cc("edts"), .max_version = 1});

  struct Entry {
    uint64_t length = 0;       // movie ticks
    int64_t media_start = -1;  // media ticks; -1 is an empty edit
    int32_t rate = kFixedOne;  // 16.16; 0 holds one instant
  };
  std::vector<Entry> entries;

  template <class Io>
  void fields(Io& io) {
    io.counted("entries", entries, [](auto& row, Entry& entry) {
      row.wide("length", entry.length);
      row.wide("media_start", entry.media_start);
      row("rate", entry.rate);
    });
  }
};

}  // namespace toolbox
