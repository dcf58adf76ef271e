// The class Picture: what scripts and modules draw on.
#pragma once

#include <string>

#include "object/picture_pixels.h"
#include "registry/registry.h"

namespace krz {

/// What a picture's graphics draw with; it stays with the picture.
struct DrawingState {
  uint32_t fore_color = 0;  // 0x00RRGGBB
  int32_t pen_width = 1;    // pixels
  int32_t text_size = 12;   // pixels
  bool bold = false;
  std::string text_font;  // a family's name in UTF-8; empty for the usual one
};

/// A new picture, locked once: transparent with alpha, white without. Null for a size that is not 1
/// to 32767, and without memory.
REALpictureStruct* new_picture(int32_t width, int32_t height, bool has_alpha);

/// What a picture is made of; null for nil, for an object of another class, and for a picture that
/// has no size yet.
PicturePixels* picture_pixels(REALpictureStruct* picture);

/// REQUIRES: picture_pixels() is not null.
DrawingState& drawing_state(REALpictureStruct* picture);

void register_picture(Registry& registry);

}  // namespace krz
