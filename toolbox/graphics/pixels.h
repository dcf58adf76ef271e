// Pixels in memory at every depth that worlds have, and what is drawn into them.
#pragma once

#include <cstdint>
#include <span>

#include "graphics/region.h"

namespace toolbox {

/// One colour, 0xAARRGGBB.
using Color = uint32_t;
inline constexpr Color kBlack = 0xFF000000;
inline constexpr Color kWhite = 0xFFFFFFFF;

/// Pixels of a bitmap or a world, borrowed. Depths and what their pixels are in memory:
///   1         a bit, 1 is black; the leftmost in the highest bit
///   2, 4, 8   a level of grey, 0 is black; the leftmost highest
///   16        big-endian, a spare bit and 5 bits each of red, green and blue
///   24        red, green, blue
///   32        alpha, red, green, blue
struct Pixels {
  uint8_t* base = nullptr;
  int64_t row_bytes = 0;
  int depth = 0;  // bits a pixel
  Box bounds;

  uint8_t* row(int32_t y) const { return base + (y - bounds.top) * row_bytes; }
};

/// Whether pixels of that depth can be read and drawn.
bool is_known_depth(int depth);

/// Reads a run of pixels of the row at `y` from the column `left` on; alpha is full but at
/// depth 32. REQUIRES: the run lies inside the bounds.
void read_pixels(const Pixels& pixels, int32_t y, int32_t left, std::span<Color> colors);

/// Writes a run; what a depth cannot say becomes the nearest that it can, by luminance (30 % red,
/// 59 % green, 11 % blue) where it is grey. At depth 32 all four bytes are written. With `dithers`,
/// black and white are mixed where a depth has nothing between them.
enum class Nearest { kPlain, kDithered };
void write_pixels(const Pixels& pixels, int32_t y, int32_t left, std::span<const Color> colors,
                  Nearest nearest = Nearest::kPlain);

/// Eight rows of eight bits, repeated from the origin; 1 the foreground.
struct Fill {
  const uint8_t* pattern;
  Color foreground = kBlack;
  Color background = kWhite;
};

/// Fills what of a region lies inside the pixels.
void fill(const Pixels& pixels, const Region& region, const Fill& with);

/// How a pixel that is drawn meets the one that is there. Ink is what black is full of: 1 bits at
/// depth 1.
enum class Transfer {
  kCopy,
  kOr,
  kXor,
  kClear,
  kNotCopy,
  kNotOr,
  kNotXor,
  kNotClear,
  kTransparent
};

struct Copy {
  Box from;
  Box to;
  Transfer transfer = Transfer::kCopy;
  Nearest nearest = Nearest::kPlain;
  const Region* mask = nullptr;  // in the places of the destination; null for none
  Color foreground = kBlack;     // what black becomes; white stays
};

/// Copies pixels, each the nearest of the source where sizes differ; white where the source has
/// none. Source and destination may be the same.
void copy(const Pixels& source, const Pixels& destination, const Copy& how);

}  // namespace toolbox
