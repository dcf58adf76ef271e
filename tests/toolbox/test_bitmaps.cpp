// Bitmap contexts: every pixel format, drawing with alpha and scaling, and sizes that are refused.
#include <ApplicationServices/CoreGraphics.h>
#include <Toolbox/Toolbox.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace toolbox {
namespace {

using Bytes = std::vector<uint8_t>;

CGContextRef context_over(Bytes& bytes, size_t width, size_t height, CGBitmapInfo info,
                          size_t bits_per_component = 8) {
  return CGBitmapContextCreate(bytes.data(), width, height, bits_per_component,
                               bytes.size() / height, nullptr, info);
}

/// The bytes of one context of these pixels after the image of another one was drawn on it.
Bytes draw(Bytes from, CGBitmapInfo from_info, size_t from_width, size_t from_height, CGRect rect,
           Bytes onto, CGBitmapInfo onto_info, size_t onto_width, size_t onto_height,
           size_t onto_bits = 8) {
  const CGContextRef source = context_over(from, from_width, from_height, from_info);
  const CGContextRef target = context_over(onto, onto_width, onto_height, onto_info, onto_bits);
  const CGImageRef image = CGBitmapContextCreateImage(source);
  EXPECT_NE(image, nullptr);
  CGContextDrawImage(target, rect, image);
  CGContextFlush(target);
  CGImageRelease(image);
  CGContextRelease(source);
  CGContextRelease(target);
  return onto;
}

TEST(Bitmaps, TellWhatTheyAreMadeOf) {
  Bytes bytes(2 * 20);
  const CGContextRef context = context_over(bytes, 3, 2, kCGImageAlphaPremultipliedFirst);
  EXPECT_LT(reinterpret_cast<uintptr_t>(context), uint64_t{1} << 32);
  EXPECT_EQ(CGBitmapContextGetData(context), bytes.data());
  EXPECT_EQ(CGBitmapContextGetWidth(context), 3u);
  EXPECT_EQ(CGBitmapContextGetHeight(context), 2u);
  EXPECT_EQ(CGBitmapContextGetBitsPerPixel(context), 32u);
  EXPECT_EQ(CGBitmapContextGetBytesPerRow(context), 20u);
  EXPECT_EQ(CGBitmapContextGetAlphaInfo(context), 2u);
  CGContextRelease(context);
  for (const CGContextRef none : {context, CGContextRef{nullptr}}) {
    EXPECT_EQ(CGBitmapContextGetData(none), nullptr);
    EXPECT_EQ(CGBitmapContextGetWidth(none), 0u);
    EXPECT_EQ(CGBitmapContextCreateImage(none), nullptr);
    CGContextDrawImage(none, {0, 0, 1, 1}, nullptr);
    CGContextRelease(none);
  }
}

TEST(Bitmaps, SizesAndFormatsThatAreNoneAreRefused) {
  const uint32_t before = ToolboxLiveReferences();
  Bytes bytes(64);
  const auto refused = [&](size_t width, size_t height, size_t bits, size_t row,
                           CGBitmapInfo info) {
    return CGBitmapContextCreate(bytes.data(), width, height, bits, row, nullptr, info) == nullptr;
  };
  EXPECT_TRUE(refused(0, 1, 8, 0, 2));
  EXPECT_TRUE(refused(1, 0, 8, 0, 2));
  EXPECT_TRUE(refused(32768, 1, 8, 0, 2));
  EXPECT_TRUE(refused(SIZE_MAX, SIZE_MAX, 8, 0, 2));
  EXPECT_TRUE(refused(2, 2, 8, 7, 2)) << "short rows";
  EXPECT_TRUE(refused(2, 2, 8, SIZE_MAX, 2));
  EXPECT_TRUE(refused(2, 2, 16, 0, 2));
  EXPECT_TRUE(refused(2, 2, 8, 0, 8)) << "no such alpha info";
  EXPECT_TRUE(refused(2, 2, 8, 0, 2 | kCGBitmapByteOrder16Little));
  EXPECT_TRUE(refused(2, 2, 5, 0, 2)) << "16 bits have no alpha";
  EXPECT_EQ(ToolboxLiveReferences(), before);
}

// One pixel, drawn from each format that is opaque or half covered into one of known order.
TEST(Bitmaps, EveryFormatIsReadAndWrittenAsItsAlphaInfoSays) {
  struct Case {
    CGBitmapInfo info;
    Bytes half;    // red 200, green 100, blue 50 under an alpha of 128
    Bytes opaque;  // the same in full
  };
  const Case cases[] = {
      {1, {100, 50, 25, 128}, {200, 100, 50, 255}},
      {2, {128, 100, 50, 25}, {255, 200, 100, 50}},
      {3, {200, 100, 50, 128}, {200, 100, 50, 255}},
      {4, {128, 200, 100, 50}, {255, 200, 100, 50}},
      {5, {}, {200, 100, 50, 9}},
      {6, {}, {9, 200, 100, 50}},
      {0, {}, {200, 100, 50}},
      {2 | kCGBitmapByteOrder32Little, {25, 50, 100, 128}, {50, 100, 200, 255}},
      {6 | kCGBitmapByteOrder32Little, {}, {50, 100, 200, 9}},
      {2 | kCGBitmapByteOrder32Big, {128, 100, 50, 25}, {255, 200, 100, 50}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.info);
    const CGRect whole{0, 0, 1, 1};
    EXPECT_EQ(draw(one.opaque, one.info, 1, 1, whole, {1, 2, 3, 4}, 1, 1, 1),
              (Bytes{200, 100, 50, 255}));
    // Skipped bytes stay what they were.
    Bytes onto(one.opaque.size(), 9);
    EXPECT_EQ(draw({200, 100, 50, 255}, 1, 1, 1, whole, onto, one.info, 1, 1), one.opaque);
    if (one.half.empty()) continue;
    EXPECT_EQ(draw(one.half, one.info, 1, 1, whole, {0, 0, 0, 0}, 1, 1, 1),
              (Bytes{100, 50, 25, 128}));
    const Bytes written = draw({100, 50, 25, 128}, 1, 1, 1, whole, Bytes(4, 0), one.info, 1, 1);
    for (size_t i = 0; i < 4; ++i) EXPECT_NEAR(written[i], one.half[i], 1) << i;
  }
}

TEST(Bitmaps, SixteenBitsAndAlphaAlone) {
  const CGRect whole{0, 0, 1, 1};
  // x rrrrr ggggg bbbbb of 255, 128, 8.
  EXPECT_EQ(draw({255, 128, 8, 255}, 1, 1, 1, whole, {0, 0}, 6 | kCGBitmapByteOrder16Big, 1, 1, 5),
            (Bytes{0x7E, 0x01}));
  EXPECT_EQ(
      draw({255, 128, 8, 255}, 1, 1, 1, whole, {0, 0}, 6 | kCGBitmapByteOrder16Little, 1, 1, 5),
      (Bytes{0x01, 0x7E}));
  EXPECT_EQ(draw({10, 20, 30, 40}, 1, 1, 1, whole, {100}, kCGImageAlphaOnly, 1, 1),
            (Bytes{40 + 84}));
  EXPECT_EQ(draw({128}, kCGImageAlphaOnly, 1, 1, whole, {200, 100, 50}, 0, 1, 1),
            (Bytes{100, 50, 25}));
}

TEST(Bitmaps, DrawingPutsTheImageOverWhatIsThere) {
  // Half a red over blue: 128 + 0, 0, 255 * 127 / 255.
  EXPECT_EQ(draw({128, 128, 0, 0}, 2, 1, 1, {0, 0, 1, 1}, {255, 0, 0, 255}, 2, 1, 1),
            (Bytes{255, 128, 0, 127}));
  // Two half coverings are three quarters.
  EXPECT_EQ(draw({128, 0, 0, 0}, 2, 1, 1, {0, 0, 1, 1}, {128, 0, 0, 0}, 2, 1, 1),
            (Bytes{192, 0, 0, 0}));
  // Nothing is seen through an alpha of 0; colours that exceed their alpha are cut to it.
  EXPECT_EQ(draw({0, 99, 99, 99}, 2, 1, 1, {0, 0, 1, 1}, {255, 1, 2, 3}, 2, 1, 1),
            (Bytes{255, 1, 2, 3}));
  EXPECT_EQ(draw({128, 255, 255, 255}, 2, 1, 1, {0, 0, 1, 1}, {255, 200, 200, 200}, 2, 1, 1),
            (Bytes{255, 228, 228, 228}));
}

TEST(Bitmaps, RectanglesBeginAtTheBottomAndAreCutAtTheEdges) {
  const Bytes two{255, 0, 255, 255};  // alpha only: a row of 255 0, below it 255 255
  const auto onto = [&](CGRect rect) { return draw(two, 7, 2, 2, rect, Bytes(16, 0), 7, 4, 4); };
  EXPECT_EQ(onto({0, 0, 2, 2}), (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 255, 255, 0, 0}));
  EXPECT_EQ(onto({2, 2, 2, 2}), (Bytes{0, 0, 255, 0, 0, 0, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(onto({4, 4, -2, -2}), onto({2, 2, 2, 2}));
  EXPECT_EQ(onto({-1, 3, 2, 2}), (Bytes{255, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(onto({0, 0, 4, 4}),  // larger by interpolation
            (Bytes{255, 191, 64, 0, 255, 207, 112, 64, 255, 239, 207, 191, 255, 255, 255, 255}));
  const CGFloat infinite = std::numeric_limits<CGFloat>::infinity();
  for (const CGRect rect : {CGRect{0, 0, 0, 0}, CGRect{9, 9, 2, 2}, CGRect{NAN, 0, 2, 2},
                            CGRect{0, 0, NAN, 2}, CGRect{-infinite, 0, infinite, 1}})
    EXPECT_EQ(onto(rect), Bytes(16, 0));
}

TEST(Bitmaps, SmallerIsTheAverageOfWhatIsCovered) {
  // 3 x 2 become 2 x 1: each takes one and a half columns, whose own averages are 255, 30 and 60.
  EXPECT_EQ(draw({255, 0, 90, 255, 60, 30}, 7, 3, 2, {0, 0, 2, 1}, {0, 0}, 7, 2, 1),
            (Bytes{180, 50}));
  // A huge rectangle costs what is visible of it.
  EXPECT_EQ(draw({77}, 7, 1, 1, {-1e12, -1e12, 2e12, 2e12}, {0, 0, 0, 0}, 7, 2, 2), Bytes(4, 77));
}

TEST(Bitmaps, AnImageKeepsWhatTheContextShowed) {
  const uint32_t before = ToolboxLiveReferences();
  const CGContextRef own = CGBitmapContextCreate(nullptr, 2, 1, 8, 0, nullptr, kCGImageAlphaOnly);
  auto* const pixels = static_cast<uint8_t*>(CGBitmapContextGetData(own));
  ASSERT_NE(pixels, nullptr);
  EXPECT_EQ(pixels[0] | pixels[1], 0);
  pixels[0] = 50;
  const CGImageRef image = CGBitmapContextCreateImage(own);
  pixels[0] = 0;
  CGContextDrawImage(own, {0, 0, 2, 1}, image);
  EXPECT_EQ(pixels[0], 50);
  CGContextRelease(own);
  CGImageRelease(image);
  CGImageRelease(image);
  CGImageRelease(nullptr);
  EXPECT_EQ(ToolboxLiveReferences(), before);
}

}  // namespace
}  // namespace toolbox
