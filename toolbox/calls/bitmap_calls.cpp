// The calls of ApplicationServices/CoreGraphics.h. They leave the current error.
#include <ApplicationServices/CoreGraphics.h>

#include <cmath>
#include <new>

#include "bitmaps/bitmap_context.h"
#include "calls/guard.h"

using namespace toolbox;

namespace {

BitmapContext* find_context(CGContextRef context) {
  return static_cast<BitmapContext*>(
      tokens::find(Kind::kBitmapContext, reinterpret_cast<uintptr_t>(context)));
}

BitmapImage* find_image(CGImageRef image) {
  return static_cast<BitmapImage*>(
      tokens::find(Kind::kBitmapImage, reinterpret_cast<uintptr_t>(image)));
}

/// The reference of what was made, which then lives until it is released; nil when it was not.
template <class Opaque, class Made>
Opaque hand_over(Result<std::unique_ptr<Made>> made) {
  if (!made.ok()) return nullptr;
  const Token token = made.value()->token();
  if (token == 0) return nullptr;
  (void)made.value().release();
  return reinterpret_cast<Opaque>(uintptr_t{token});
}

/// The answer of a context's bitmap; zero without a context.
template <class Question>
auto ask_bitmap(CGContextRef context, Question question) {
  const BitmapContext* const found = find_context(context);
  return found == nullptr ? decltype(question(found->bitmap())){} : question(found->bitmap());
}

// A coordinate as a whole one; far outside where nothing is drawn it does not matter where.
int64_t nearest(CGFloat coordinate) {
  constexpr CGFloat kFar = 1e9;
  return std::llround(std::fmin(std::fmax(coordinate, -kFar), kFar));
}

}  // namespace

TOOLBOX_CALL CGContextRef CGBitmapContextCreate(void* pixels, size_t width, size_t height,
                                                size_t bitsPerComponent, size_t bytesPerRow,
                                                CGColorSpaceRef, CGBitmapInfo info) {
  try {
    const auto format = PixelFormat::of(bitsPerComponent, info);
    if (!format) return nullptr;
    return hand_over<CGContextRef>(
        BitmapContext::make(static_cast<uint8_t*>(pixels), width, height, bytesPerRow, *format));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

TOOLBOX_CALL void CGContextRelease(CGContextRef context) { delete find_context(context); }

TOOLBOX_CALL void* CGBitmapContextGetData(CGContextRef context) {
  return ask_bitmap(context, [](const Bitmap& b) -> void* { return b.pixels; });
}
TOOLBOX_CALL size_t CGBitmapContextGetWidth(CGContextRef context) {
  return ask_bitmap(context, [](const Bitmap& b) -> size_t { return b.width; });
}
TOOLBOX_CALL size_t CGBitmapContextGetHeight(CGContextRef context) {
  return ask_bitmap(context, [](const Bitmap& b) -> size_t { return b.height; });
}
TOOLBOX_CALL size_t CGBitmapContextGetBitsPerPixel(CGContextRef context) {
  return ask_bitmap(context,
                    [](const Bitmap& b) -> size_t { return b.format.bytes_per_pixel() * 8; });
}
TOOLBOX_CALL size_t CGBitmapContextGetBytesPerRow(CGContextRef context) {
  return ask_bitmap(context, [](const Bitmap& b) { return b.bytes_per_row; });
}
TOOLBOX_CALL CGImageAlphaInfo CGBitmapContextGetAlphaInfo(CGContextRef context) {
  return ask_bitmap(context, [](const Bitmap& b) { return b.format.alpha_info(); });
}
TOOLBOX_CALL CGBitmapInfo CGBitmapContextGetBitmapInfo(CGContextRef context) {
  return ask_bitmap(context, [](const Bitmap& b) { return b.format.bitmap_info(); });
}

TOOLBOX_CALL CGImageRef CGBitmapContextCreateImage(CGContextRef context) {
  try {
    const BitmapContext* const found = find_context(context);
    return found == nullptr ? nullptr : hand_over<CGImageRef>(found->snapshot());
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

TOOLBOX_CALL void CGImageRelease(CGImageRef image) { delete find_image(image); }

TOOLBOX_CALL void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image) {
  BitmapContext* const target = find_context(context);
  const BitmapImage* const source = find_image(image);
  if (target == nullptr || source == nullptr) return;
  const CGFloat right = rect.x + rect.width;
  const CGFloat upper = rect.y + rect.height;
  if (std::isnan(right) || std::isnan(upper)) return;
  const int64_t height = target->bitmap().height;
  // Negative sizes name the same rectangle from its other corner.
  const PixelRect place{
      nearest(std::fmin(rect.x, right)), height - nearest(std::fmax(rect.y, upper)),
      nearest(std::fmax(rect.x, right)), height - nearest(std::fmin(rect.y, upper))};
  try {
    // A drawing that there is no memory for is left out, as the call has no way to tell.
    target->draw(*source, place);
  } catch (const std::bad_alloc&) {
  }
}

TOOLBOX_CALL void CGContextFlush(CGContextRef) {}
