#include "graphics/pixels.h"

#include <algorithm>

#include "base/big_endian.h"

namespace toolbox {

namespace {

constexpr Color kOpaque = 0xFF000000;
constexpr uint32_t kFullLuminance = 100 * 255;

uint32_t luminance(Color color) {
  return 30 * (color >> 16 & 0xFF) + 59 * (color >> 8 & 0xFF) + 11 * (color & 0xFF);
}

Color grey(uint32_t level) { return kOpaque | level * 0x010101; }

Color from_five_bits(uint16_t word) {
  const auto widen = [&](int shift) {
    const uint32_t five = word >> shift & 0x1F;
    return five << 3 | five >> 2;
  };
  return kOpaque | widen(10) << 16 | widen(5) << 8 | widen(0);
}

uint16_t to_five_bits(Color color) {
  return static_cast<uint16_t>((color >> 9 & 0x7C00) | (color >> 6 & 0x3E0) | (color >> 3 & 0x1F));
}

/// Thresholds that spread evenly over each square of eight pixels, 0 to 63.
uint32_t spread(int32_t x, int32_t y) {
  uint32_t threshold = 0;
  for (int bit = 0; bit < 3; ++bit) {
    const auto across = static_cast<uint32_t>(x >> bit & 1),
               down = static_cast<uint32_t>(y >> bit & 1);
    threshold |= ((across ^ down) << 1 | down) << (4 - 2 * bit);
  }
  return threshold;
}

bool is_black(Color color, int32_t x, int32_t y, Nearest nearest) {
  const uint32_t threshold = nearest == Nearest::kPlain
                                 ? kFullLuminance / 2
                                 : kFullLuminance * (2 * spread(x, y) + 1) / 128;
  return luminance(color) < threshold;
}

}  // namespace

bool is_known_depth(int depth) {
  switch (depth) {
    case 1:
    case 2:
    case 4:
    case 8:
    case 16:
    case 24:
    case 32:
      return true;
    default:
      return false;
  }
}

void read_pixels(const Pixels& pixels, int32_t y, int32_t left, std::span<Color> colors) {
  const uint8_t* const row = pixels.row(y);
  auto x = static_cast<size_t>(left - pixels.bounds.left);
  switch (pixels.depth) {
    case 32:
      for (Color& color : colors) color = load_big_endian<uint32_t>(row + 4 * x++);
      break;
    case 24:
      for (Color& color : colors) {
        const uint8_t* const at = row + 3 * x++;
        color = kOpaque | Color{at[0]} << 16 | Color{at[1]} << 8 | at[2];
      }
      break;
    case 16:
      for (Color& color : colors) color = from_five_bits(load_big_endian<uint16_t>(row + 2 * x++));
      break;
    case 8:
      for (Color& color : colors) color = grey(row[x++]);
      break;
    case 1:
      for (Color& color : colors) {
        color = row[x / 8] >> (7 - x % 8) & 1 ? kBlack : kWhite;
        ++x;
      }
      break;
    default: {
      const auto depth = static_cast<size_t>(pixels.depth), in_byte = 8 / depth;
      const uint32_t most = (1u << depth) - 1;
      for (Color& color : colors) {
        const size_t shift = 8 - depth - x % in_byte * depth;
        color = grey((row[x / in_byte] >> shift & most) * 255 / most);
        ++x;
      }
    }
  }
}

void write_pixels(const Pixels& pixels, int32_t y, int32_t left, std::span<const Color> colors,
                  Nearest nearest) {
  uint8_t* const row = pixels.row(y);
  auto x = static_cast<size_t>(left - pixels.bounds.left);
  const auto put_bits = [&](size_t depth, uint32_t value) {
    const size_t in_byte = 8 / depth, shift = 8 - depth - x % in_byte * depth;
    uint8_t& byte = row[x / in_byte];
    const uint32_t mask = ((1u << depth) - 1) << shift;
    byte = static_cast<uint8_t>((byte & ~mask) | value << shift);
    ++x;
  };
  switch (pixels.depth) {
    case 32:
      for (const Color color : colors) store_big_endian(row + 4 * x++, color);
      break;
    case 24:
      for (const Color color : colors) {
        uint8_t* const at = row + 3 * x++;
        at[0] = static_cast<uint8_t>(color >> 16);
        at[1] = static_cast<uint8_t>(color >> 8);
        at[2] = static_cast<uint8_t>(color);
      }
      break;
    case 16:
      for (const Color color : colors) store_big_endian(row + 2 * x++, to_five_bits(color));
      break;
    case 8:
      for (const Color color : colors) {
        row[x++] = static_cast<uint8_t>((luminance(color) + 50) / 100);
      }
      break;
    case 1:
      for (const Color color : colors) put_bits(1, is_black(color, left++, y, nearest) ? 1 : 0);
      break;
    default: {
      const uint32_t most = (1u << pixels.depth) - 1;
      for (const Color color : colors) {
        put_bits(static_cast<size_t>(pixels.depth),
                 (luminance(color) * most + kFullLuminance / 2) / kFullLuminance);
      }
    }
  }
}

}  // namespace toolbox
