#include "object/picture_pixels.h"

#include <bit>
#include <cstdlib>
#include <cstring>

#include "object/memory_budget.h"

namespace krz {

namespace {

constexpr bool kLittleEndian = std::endian::native == std::endian::little;

}  // namespace

std::unique_ptr<PicturePixels> PicturePixels::make(REALpictureDescriptionType kind, int32_t width,
                                                   int32_t height, bool has_alpha) {
  if (width < 1 || height < 1 || width > kMostPicturePixels || height > kMostPicturePixels)
    return nullptr;
  auto* const bytes = static_cast<uint8_t*>(
      memory_budget::take_block(std::calloc(size_t(height), size_t(width) * 4)));
  if (!bytes) return nullptr;
  std::unique_ptr<PicturePixels> pixels(new PicturePixels);
  pixels->kind_ = kind;
  pixels->width_ = width;
  pixels->height_ = height;
  pixels->has_alpha_ = has_alpha;
  pixels->bytes_ = bytes;
  if (!has_alpha) std::memset(bytes, 0xFF, size_t(height) * pixels->bytes_per_row());
  return pixels;
}

PicturePixels::~PicturePixels() {
  CGContextRelease(context_);
  memory_budget::free_block(bytes_);
}

PixelPlaces PicturePixels::places() const {
  // The older kind's pixels are numbers, the newer kind's are bytes in this order.
  if (kind_ == kPicturePixelBuffer && kLittleEndian) return {3, 2, 1, 0};
  return {0, 1, 2, 3};
}

CGContextRef PicturePixels::context_over(int32_t x, int32_t y, int32_t width,
                                         int32_t height) const {
  CGBitmapInfo info = has_alpha_ ? kCGImageAlphaPremultipliedFirst : kCGImageAlphaNoneSkipFirst;
  if (kind_ == kPicturePixelBuffer && kLittleEndian) info |= kCGBitmapByteOrder32Little;
  return CGBitmapContextCreate(pixel(x, y), size_t(width), size_t(height), 8, bytes_per_row(),
                               nullptr, info);
}

REALpictureDescription PicturePixels::description() {
  if (kind_ == kPicturePixelBuffer) {
    if (rows_.empty()) {
      rows_.reserve(size_t(height_));
      for (int32_t y = 0; y < height_; ++y) rows_.push_back(row(y));
      buffer_ = {has_alpha_, rows_.data()};
    }
    return {kind_, &buffer_, width_, height_};
  }
  if (!context_) context_ = context_over(0, 0, width_, height_);
  if (!context_) return {};
  return {kind_, context_, width_, height_};
}

}  // namespace krz
