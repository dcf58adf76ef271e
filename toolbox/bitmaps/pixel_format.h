// How pixels of bitmap contexts lie in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace toolbox {

/// A colour whose components are multiplied by its alpha, as compositing wants it.
struct Pixel {
  uint8_t red;
  uint8_t green;
  uint8_t blue;
  uint8_t alpha;
};

/// One of the formats that a context can have; rows of it become rows of Pixel and back.
class PixelFormat {
 public:
  /// The format of these numbers of CGBitmapContextCreate; none when there is no such.
  static std::optional<PixelFormat> of(size_t bits_per_component, uint32_t bitmap_info);

  uint32_t bitmap_info() const { return info_; }
  uint32_t alpha_info() const;
  uint32_t bytes_per_pixel() const { return bytes_; }

  /// A format without alpha is opaque; skipped bytes come out as 255.
  void read(const uint8_t* from, Pixel* to, uint32_t count) const;

  /// Skipped bytes are left as they are. REQUIRES: no component above its alpha.
  void write(const Pixel* from, uint8_t* to, uint32_t count) const;

 private:
  PixelFormat(uint32_t info, uint32_t bytes) : info_(info), bytes_(bytes) {}

  uint32_t info_;
  uint32_t bytes_;
  bool premultiplied_ = false;
  bool has_alpha_ = false;
  // Places of the components inside the bytes of a pixel; those of 16-bit pixels are bits.
  uint8_t red_ = 0;
  uint8_t green_ = 1;
  uint8_t blue_ = 2;
  uint8_t alpha_ = 3;
};

/// `value` * `factor` / 255, rounded to the nearest.
inline uint8_t scaled_by(uint32_t value, uint32_t factor) {
  const uint32_t product = value * factor + 128;
  return static_cast<uint8_t>((product + (product >> 8)) >> 8);
}

}  // namespace toolbox
