// The description of classic text samples: how the text is drawn where a sample does not say.
#pragma once

#include "atoms/sample_description.h"

namespace toolbox {

/// The Pascal string of the font's name is the tail.
struct TextDescription : DescriptionHeader {
  using Color = std::array<uint16_t, 3>;  // red, green, blue

  uint32_t display_flags = 0;
  int32_t justification = 0;  // 0 left, 1 centre, -1 right, -2 left in any script
  Color background{};
  std::array<int16_t, 4> box{};  // top, left, bottom, right
  uint32_t style_start = 0;
  uint16_t line_height = 0;  // 0: players work it out
  uint16_t ascent = 0;       // likewise
  int16_t font = 0;
  uint8_t face = 0;  // bits: bold, italic, underline, outline, shadow, condense, extend
  uint8_t filler = 0;
  uint16_t size = 0;  // points
  Color color{};

  template <class Io>
  void fields(Io& io) {
    DescriptionHeader::fields(io);
    io("display_flags", display_flags);
    io("justification", justification);
    io("background", background);
    io("box", box);
    io("style_start", style_start);
    io("line_height", line_height);
    io("ascent", ascent);
    io("font", font);
    io("face", face);
    io("filler", filler);
    io("size", size);
    io("color", color);
  }
};

}  // namespace toolbox
