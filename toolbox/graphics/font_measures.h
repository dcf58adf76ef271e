// How large a font is in pixels.
#pragma once

#include <ApplicationServices/QuickDraw.h>

namespace toolbox {

/// Font, face and size of text, as a port has them.
struct TextSettings {
  int16_t font = 0;
  int16_t face = 0;  // bits: 1 bold, 2 italic, 32 condense, 64 extend matter here
  int16_t size = 0;  // points; 0 and less stand for 12

  bool operator==(const TextSettings&) const = default;
};

/// The measures of the installed font that is nearest to these settings, a point being a pixel. All
/// zero when no font is installed or it cannot be read.
FontInfo measure_font(const TextSettings& settings);

}  // namespace toolbox
