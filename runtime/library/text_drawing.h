// Texts on pictures, through the framework that holds fonts.
#pragma once

#include <string_view>

#include "library/picture.h"
#include "library/raster.h"

namespace krz {

/// Draws a text in UTF-8 that begins at `x` and stands on the line `y`.
/// Fails: raises an UnsupportedFormatException where the framework is missing.
void draw_text(Raster& raster, const DrawingState& state, std::string_view text, int32_t x,
               int32_t y);

/// How wide a text is, in pixels; fails as draw_text does.
double text_width(const DrawingState& state, std::string_view text);

}  // namespace krz
