// How a timecode media counts and how it is drawn.
#pragma once

#include "atoms/sample_description.h"

namespace toolbox {

/// A timecode description. Its tail is the source reference: items of user data one behind the
/// other, without an atom around them.
struct TimecodeDescription : DescriptionHeader {
  uint32_t reserved_number = 0;
  uint32_t flags = 0;           // see handlers/timecode.h
  uint32_t time_scale = 0;      // units a second
  uint32_t frame_duration = 0;  // in time_scale
  uint8_t frames = 0;           // a second, as labels count them; of a counter, frames a tick
  uint8_t padding = 0;

  template <class Io>
  void fields(Io& io) {
    DescriptionHeader::fields(io);
    io("reserved_number", reserved_number);
    io("flags", flags);
    io("time_scale", time_scale);
    io("frame_duration", frame_duration);
    io("frames", frames);
    io("padding", padding);
  }
};

/// How the time code is drawn. The Pascal string of the font's name is the tail. Some files lack
/// the padding, with everything behind it two bytes earlier.
struct TimecodeInfoAtom : FullAtom {
  static constexpr AtomType kType = full_atom(four_cc("tcmi"), {.max_version = 1});
  static constexpr uint32_t kShow = 1;  // flag: the time code is shown

  using Color = std::array<uint16_t, 3>;  // red, green, blue

  int16_t font = 0;   // 0: the system font
  int16_t face = 0;   // bits: bold, italic, underline, outline, shadow, condense, extend
  int16_t size = 12;  // points
  uint16_t padding = 0;
  Color color{};
  Color background = {0xFFFF, 0xFFFF, 0xFFFF};

  template <class Io>
  void fields(Io& io) {
    io("font", font);
    io("face", face);
    io("size", size);
    io("padding", padding);
    io("color", color);
    io("background", background);
  }
};

}  // namespace toolbox
