// The movie header: time scale, duration and how the movie was left when it was saved.
#pragma once

#include "atoms/atom_type.h"

namespace toolbox {

struct MovieHeaderAtom : FullAtom {
  static constexpr AtomType kType =
      full_atom(four_cc("mvhd"), {.parent = four_cc("moov"), .max_version = 1});

  uint64_t creation_time = 0;          // seconds since 1904-01-01
  uint64_t modification_time = 0;      // seconds since 1904-01-01
  uint32_t time_scale = 600;           // movie ticks a second; 0 is damage
  uint64_t duration = 0;               // movie ticks
  int32_t preferred_rate = kFixedOne;  // 16.16
  int16_t preferred_volume = 0x0100;   // 8.8
  std::array<uint8_t, 10> reserved{};
  AtomMatrix matrix = kIdentityMatrix;
  uint32_t preview_time =
      0;  // movie ticks, as are the five that follow; ISO files hold 0 in all six
  uint32_t preview_duration = 0;
  uint32_t poster_time = 0;
  uint32_t selection_time = 0;
  uint32_t selection_duration = 0;
  uint32_t current_time = 0;
  uint32_t next_track_id = 1;  // often too small, or all ones

  /// All ones, in the width of the version read: the length is only known from the fragments.
  bool duration_unknown() const { return duration == (version == 0 ? UINT32_MAX : UINT64_MAX); }

  template <class Io>
  void fields(Io& io) {
    io.wide("creation_time", creation_time);
    io.wide("modification_time", modification_time);
    io("time_scale", time_scale);
    io.wide("duration", duration);
    io("preferred_rate", preferred_rate);
    io("preferred_volume", preferred_volume);
    io("reserved", reserved);
    io("matrix", matrix);
    io("preview_time", preview_time);
    io("preview_duration", preview_duration);
    io("poster_time", poster_time);
    io("selection_time", selection_time);
    io("selection_duration", selection_duration);
    io("current_time", current_time);
    io("next_track_id", next_track_id);
  }
};

}  // namespace toolbox
