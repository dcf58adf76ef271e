// Bitmap contexts and images: pixels that are drawn on, and what they showed at one moment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/status.h"
#include "bitmaps/pixel_format.h"
#include "memory/pixel_memory.h"
#include "memory/tokens.h"

namespace toolbox {

/// The most pixels that a bitmap has in one direction.
inline constexpr size_t kMostPixels = 32767;

/// Rows of pixels in one format; the memory is somebody else's.
struct Bitmap {
  uint8_t* pixels;
  uint32_t width;
  uint32_t height;
  size_t bytes_per_row;
  PixelFormat format;

  uint8_t* row(uint32_t index) const { return pixels + index * bytes_per_row; }
};

/// A rectangle of whole pixels whose y runs downward from the top row; it may lie outside.
struct PixelRect {
  int64_t left;
  int64_t top;
  int64_t right;
  int64_t bottom;
};

/// Pixels that never change.
class BitmapImage {
 public:
  BitmapImage(Bitmap bitmap, PixelMemory memory) : bitmap_(bitmap), memory_(std::move(memory)) {}

  const Bitmap& bitmap() const { return bitmap_; }
  Token token() { return reference_.token(Kind::kBitmapImage, this); }

 private:
  Bitmap bitmap_;
  PixelMemory memory_;
  Reference reference_;
};

/// Pixels to draw on.
class BitmapContext {
 public:
  /// Over `pixels`, which must outlive the context, or over its own, all zero, for null.
  /// Units:  pixels, bytes; 0 bytes a row are as many as needed.
  /// Fails:  paramErr for sizes outside 1 to kMostPixels and for rows that are too short,
  ///         memFullErr.
  static Result<std::unique_ptr<BitmapContext>> make(uint8_t* pixels, size_t width, size_t height,
                                                     size_t bytes_per_row, PixelFormat format);

  const Bitmap& bitmap() const { return bitmap_; }
  Token token() { return reference_.token(Kind::kBitmapContext, this); }

  /// Fails: memFullErr.
  Result<std::unique_ptr<BitmapImage>> snapshot() const;

  /// Draws `image`, scaled to `place`, over what is there; nothing for an empty place.
  void draw(const BitmapImage& image, const PixelRect& place);

 private:
  BitmapContext(Bitmap bitmap, PixelMemory memory) : bitmap_(bitmap), memory_(std::move(memory)) {}

  Bitmap bitmap_;
  PixelMemory memory_;  // null when the pixels are somebody else's
  Reference reference_;
};

}  // namespace toolbox
