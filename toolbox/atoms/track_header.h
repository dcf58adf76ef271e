// The atoms of a track itself: its header, its aperture dimensions and its references to other
// tracks.
#pragma once

#include "atoms/atom_type.h"

namespace toolbox {

struct TrackHeaderAtom : FullAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("tkhd"), {.parent = four_cc("trak"), .max_version = 1});
  enum Flags : uint32_t { kEnabled = 1, kInMovie = 2, kInPreview = 4, kInPoster = 8 };

  uint64_t creation_time = 0;      // seconds since 1904-01-01
  uint64_t modification_time = 0;  // seconds since 1904-01-01
  uint32_t track_id = 0;           // never 0 in an undamaged file
  uint32_t reserved_after_id = 0;
  uint64_t duration = 0;  // MOVIE ticks: the sum of the edits, empty ones included
  std::array<uint8_t, 8> reserved_after_duration{};
  int16_t layer = 0;             // lower is nearer to the viewer
  uint16_t alternate_group = 0;  // 0: none; tracks of one group are alternatives
  int16_t volume = 0;            // 8.8; negative is muted
  uint16_t reserved_after_volume = 0;
  AtomMatrix matrix = kIdentityMatrix;
  int32_t width = 0;   // 16.16, before the matrix
  int32_t height = 0;  // 16.16, before the matrix

  /// All ones, in the width of the version read: the length is only known from the fragments.
  bool duration_unknown() const { return duration == (version == 0 ? UINT32_MAX : UINT64_MAX); }

  template <class Io>
  void fields(Io& io) {
    io.wide("creation_time", creation_time);
    io.wide("modification_time", modification_time);
    io("track_id", track_id);
    io("reserved_after_id", reserved_after_id);
    io.wide("duration", duration);
    io("reserved_after_duration", reserved_after_duration);
    io("layer", layer);
    io("alternate_group", alternate_group);
    io("volume", volume);
    io("reserved_after_volume", reserved_after_volume);
    io("matrix", matrix);
    io("width", width);
    io("height", height);
  }
};

/// One leaf of `tapt`: the size in one aperture mode (`clef` clean, `prof` production, `enof`
/// encoded pixels).
struct ApertureAtom : FullAtom {
  static constexpr AtomType kType = full_atom(kAnyType, {.parent = four_cc("tapt")});

  int32_t width = 0;   // 16.16
  int32_t height = 0;  // 16.16

  template <class Io>
  void fields(Io& io) {
    io("width", width);
    io("height", height);
  }
};

/// One child of `tref`; the atom's type is the type of the reference. IDs of 0 and of missing
/// tracks are holes.
struct TrackReferenceAtom : PlainAtom {
  static constexpr AtomType kType = plain_atom(kAnyType, {.parent = four_cc("tref")});

  std::vector<uint32_t> track_ids;

  template <class Io>
  void fields(Io& io) {
    io.rows("track_ids", track_ids, [](auto& row, uint32_t& id) { row("id", id); });
  }
};

}  // namespace toolbox
