// Shapes as pixels, with smooth edges.
#pragma once

#include <cstdint>

#include "object/picture_pixels.h"

namespace krz {

/// Draws on a picture in one colour. What lies outside of the picture is not drawn.
class Raster {
 public:
  /// `color` is 0x00RRGGBB; `pixels` must outlive the raster.
  Raster(PicturePixels& pixels, uint32_t color);

  void fill_rect(int32_t x, int32_t y, int32_t width, int32_t height);

  /// The oval that fits into a rectangle.
  void fill_oval(int32_t x, int32_t y, int32_t width, int32_t height);

  /// A pen of that width moved from one pixel to another, both drawn.
  void line(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t width);

  /// Mixes the colour in, pixel by pixel: 0 not at all, 255 fully.
  void cover(int64_t left, int64_t top, int32_t width, int32_t height, const uint8_t* coverage,
             int32_t bytes_per_row);

 private:
  void mix(uint8_t* pixel, uint32_t coverage) const;

  /// Fills what lies between two edges; `edges(y, left, right)` gives them at a height.
  template <class Edges>
  void fill_between(double top, double bottom, Edges edges);

  PicturePixels& pixels_;
  PixelPlaces at_;
  uint8_t red_;
  uint8_t green_;
  uint8_t blue_;
};

}  // namespace krz
