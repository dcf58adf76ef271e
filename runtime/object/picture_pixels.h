// The pixels of a host picture, in the way that the host keeps them and shows them to modules.
#pragma once

#include <ApplicationServices/CoreGraphics.h>
#include <krz/abi.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace krz {

/// The most pixels that a picture has in one direction.
inline constexpr int32_t kMostPicturePixels = 32767;

/// Where in the four bytes of a pixel the components lie.
struct PixelPlaces {
  uint8_t alpha;
  uint8_t red;
  uint8_t green;
  uint8_t blue;
};

/// 32-bit pixels, with alpha (colours multiplied by it) or without (its byte means nothing).
class PicturePixels {
 public:
  /// A picture of that kind: transparent with alpha, white without. Null when the size is not 1 to
  /// kMostPicturePixels or memory is short.
  static std::unique_ptr<PicturePixels> make(REALpictureDescriptionType kind, int32_t width,
                                             int32_t height, bool has_alpha);
  ~PicturePixels();
  PicturePixels(const PicturePixels&) = delete;
  PicturePixels& operator=(const PicturePixels&) = delete;

  int32_t width() const { return width_; }
  int32_t height() const { return height_; }
  bool has_alpha() const { return has_alpha_; }
  PixelPlaces places() const;

  uint8_t* row(int32_t y) const { return bytes_ + size_t(y) * bytes_per_row(); }
  uint8_t* pixel(int32_t x, int32_t y) const { return row(y) + size_t(x) * 4; }
  size_t bytes_per_row() const { return size_t(width_) * 4; }

  /// A context over a part of the pixels, for the caller to release; null without memory. REQUIRES:
  /// the part lies inside.
  CGContextRef context_over(int32_t x, int32_t y, int32_t width, int32_t height) const;

  /// What modules see; it stays as long as the pixels. Fails: type 0 without memory.
  REALpictureDescription description();

 private:
  PicturePixels() = default;

  REALpictureDescriptionType kind_ = kPictureBitmapContext;
  int32_t width_ = 0;
  int32_t height_ = 0;
  bool has_alpha_ = false;
  uint8_t* bytes_ = nullptr;
  // What modules are shown, made when the first one asks.
  CGContextRef context_ = nullptr;
  std::vector<void*> rows_;
  REALpixelBuffer buffer_{};
};

}  // namespace krz
