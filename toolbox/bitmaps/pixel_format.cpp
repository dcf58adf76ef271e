#include "bitmaps/pixel_format.h"

#include <ApplicationServices/CoreGraphics.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace toolbox {

namespace {

// A component without the alpha that it was multiplied by.
uint8_t divided_by(uint32_t component, uint32_t alpha) {
  return alpha == 0 ? 0
                    : static_cast<uint8_t>(std::min(255u, (component * 255 + alpha / 2) / alpha));
}

// Five bits as eight, so that all ones stay all ones.
uint8_t widened(uint32_t five) { return static_cast<uint8_t>(five << 3 | five >> 2); }

}  // namespace

std::optional<PixelFormat> PixelFormat::of(size_t bits_per_component, uint32_t bitmap_info) {
  if ((bitmap_info & ~uint32_t{kCGBitmapAlphaInfoMask | kCGBitmapByteOrderMask}) != 0)
    return std::nullopt;
  const uint32_t alpha = bitmap_info & kCGBitmapAlphaInfoMask;
  const uint32_t order = bitmap_info & kCGBitmapByteOrderMask;
  if (bits_per_component == 5) {
    const bool known = order == kCGBitmapByteOrderDefault || order == kCGBitmapByteOrder16Big ||
                       order == kCGBitmapByteOrder16Little;
    if (alpha != kCGImageAlphaNoneSkipFirst || !known) return std::nullopt;
    return PixelFormat(bitmap_info, 2);
  }
  if (bits_per_component != 8) return std::nullopt;
  if (alpha == kCGImageAlphaNone || alpha == kCGImageAlphaOnly) {
    if (order != kCGBitmapByteOrderDefault) return std::nullopt;
    PixelFormat format(bitmap_info, alpha == kCGImageAlphaNone ? 3 : 1);
    format.has_alpha_ = alpha == kCGImageAlphaOnly;
    return format;
  }
  const bool little = order == kCGBitmapByteOrder32Little;
  const bool known =
      little || order == kCGBitmapByteOrderDefault || order == kCGBitmapByteOrder32Big;
  if (alpha > kCGImageAlphaNoneSkipFirst || !known) return std::nullopt;
  PixelFormat format(bitmap_info, 4);
  format.has_alpha_ = alpha <= kCGImageAlphaFirst;
  format.premultiplied_ = alpha <= kCGImageAlphaPremultipliedFirst;
  if (alpha % 2 == 0) {  // alpha, or what is skipped, first
    format.alpha_ = 0;
    format.red_ = 1;
    format.green_ = 2;
    format.blue_ = 3;
  }
  if (little) {
    for (uint8_t* place : {&format.red_, &format.green_, &format.blue_, &format.alpha_})
      *place = static_cast<uint8_t>(3 - *place);
  }
  return format;
}

uint32_t PixelFormat::alpha_info() const { return info_ & kCGBitmapAlphaInfoMask; }

void PixelFormat::read(const uint8_t* from, Pixel* to, uint32_t count) const {
  if (bytes_ == 1) {
    for (uint32_t i = 0; i < count; ++i) to[i] = {0, 0, 0, from[i]};
    return;
  }
  if (bytes_ == 2) {
    const bool little = (info_ & kCGBitmapByteOrderMask) == kCGBitmapByteOrder16Little;
    for (uint32_t i = 0; i < count; ++i, from += 2) {
      const uint32_t word =
          little ? uint32_t{from[1]} << 8 | from[0] : uint32_t{from[0]} << 8 | from[1];
      to[i] = {widened(word >> 10 & 31), widened(word >> 5 & 31), widened(word & 31), 255};
    }
    return;
  }
  for (uint32_t i = 0; i < count; ++i, from += bytes_) {
    const uint8_t alpha = has_alpha_ ? from[alpha_] : 255;
    if (alpha == 255) {
      to[i] = {from[red_], from[green_], from[blue_], 255};
    } else if (premultiplied_) {
      // Who wrote the pixel may not have kept the rule.
      to[i] = {std::min(from[red_], alpha), std::min(from[green_], alpha),
               std::min(from[blue_], alpha), alpha};
    } else {
      to[i] = {scaled_by(from[red_], alpha), scaled_by(from[green_], alpha),
               scaled_by(from[blue_], alpha), alpha};
    }
  }
}

void PixelFormat::write(const Pixel* from, uint8_t* to, uint32_t count) const {
  if (bytes_ == 1) {
    for (uint32_t i = 0; i < count; ++i) to[i] = from[i].alpha;
    return;
  }
  if (bytes_ == 2) {
    const bool little = (info_ & kCGBitmapByteOrderMask) == kCGBitmapByteOrder16Little;
    for (uint32_t i = 0; i < count; ++i, to += 2) {
      const uint32_t word =
          uint32_t{from[i].red} >> 3 << 10 | uint32_t{from[i].green} >> 3 << 5 | from[i].blue >> 3;
      to[little ? 1 : 0] = static_cast<uint8_t>(word >> 8);
      to[little ? 0 : 1] = static_cast<uint8_t>(word);
    }
    return;
  }
  for (uint32_t i = 0; i < count; ++i, to += bytes_) {
    Pixel pixel = from[i];
    if (has_alpha_) {
      if (!premultiplied_ && pixel.alpha != 255) {
        pixel = {divided_by(pixel.red, pixel.alpha), divided_by(pixel.green, pixel.alpha),
                 divided_by(pixel.blue, pixel.alpha), pixel.alpha};
      }
      to[alpha_] = pixel.alpha;
    }
    to[red_] = pixel.red;
    to[green_] = pixel.green;
    to[blue_] = pixel.blue;
  }
}

}  // namespace toolbox
