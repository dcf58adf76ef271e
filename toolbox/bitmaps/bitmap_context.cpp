#include "bitmaps/bitmap_context.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "bitmaps/scaled_rows.h"

namespace toolbox {

Result<std::unique_ptr<BitmapContext>> BitmapContext::make(uint8_t* pixels, size_t width,
                                                           size_t height, size_t bytes_per_row,
                                                           PixelFormat format) {
  if (width == 0 || height == 0 || width > kMostPixels || height > kMostPixels)
    return Status(paramErr, "a bitmap is 1 to 32767 pixels wide and high");
  const size_t needed = width * format.bytes_per_pixel();
  if (bytes_per_row == 0) bytes_per_row = needed;
  if (bytes_per_row < needed || bytes_per_row > SIZE_MAX / 2 / height)
    return Status(paramErr, "the rows of the bitmap are too short or too long");
  PixelMemory own;
  if (pixels == nullptr) {
    own = allocate_pixels(height * bytes_per_row);
    if (!own) return Status(memFullErr, "there is no memory for the bitmap");
    pixels = own.get();
  }
  const Bitmap bitmap{pixels, static_cast<uint32_t>(width), static_cast<uint32_t>(height),
                      bytes_per_row, format};
  return std::unique_ptr<BitmapContext>(new BitmapContext(bitmap, std::move(own)));
}

Result<std::unique_ptr<BitmapImage>> BitmapContext::snapshot() const {
  Bitmap copy = bitmap_;
  copy.bytes_per_row = size_t{copy.width} * copy.format.bytes_per_pixel();
  PixelMemory memory = allocate_pixels(copy.height * copy.bytes_per_row);
  if (!memory) return Status(memFullErr, "there is no memory for the image");
  copy.pixels = memory.get();
  for (uint32_t i = 0; i < copy.height; ++i)
    std::memcpy(copy.row(i), bitmap_.row(i), copy.bytes_per_row);
  return std::make_unique<BitmapImage>(copy, std::move(memory));
}

void BitmapContext::draw(const BitmapImage& image, const PixelRect& place) {
  const int64_t first = std::max<int64_t>(place.left, 0);
  const int64_t end = std::min<int64_t>(place.right, bitmap_.width);
  const int64_t top = std::max<int64_t>(place.top, 0);
  const int64_t bottom = std::min<int64_t>(place.bottom, bitmap_.height);
  if (first >= end || top >= bottom) return;
  const auto count = static_cast<uint32_t>(end - first);
  std::vector<Pixel> under(count);
  ScaledRows rows(image.bitmap(), place, static_cast<uint32_t>(first - place.left), count);
  for (int64_t y = top; y < bottom; ++y) {
    const Pixel* const over = rows.row(static_cast<uint64_t>(y - place.top));
    uint8_t* const target = bitmap_.row(static_cast<uint32_t>(y)) +
                            static_cast<size_t>(first) * bitmap_.format.bytes_per_pixel();
    bitmap_.format.read(target, under.data(), count);
    for (uint32_t i = 0; i < count; ++i) {
      const Pixel source = over[i];
      const uint32_t through = 255u - source.alpha;
      if (through == 255) continue;
      Pixel& pixel = under[i];
      // No sum exceeds 255: every component of the source is at most its alpha.
      pixel = through == 0
                  ? source
                  : Pixel{static_cast<uint8_t>(source.red + scaled_by(pixel.red, through)),
                          static_cast<uint8_t>(source.green + scaled_by(pixel.green, through)),
                          static_cast<uint8_t>(source.blue + scaled_by(pixel.blue, through)),
                          static_cast<uint8_t>(source.alpha + scaled_by(pixel.alpha, through))};
    }
    bitmap_.format.write(under.data(), target, count);
  }
}

}  // namespace toolbox
