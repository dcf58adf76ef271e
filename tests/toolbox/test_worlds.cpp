// Offscreen worlds: their pixels at every depth, what is drawn into them, and what copying makes of
// them.
#include <ApplicationServices/ApplicationServices.h>
#include <Toolbox/Toolbox.h>

#include <random>

#include "quickdraw_routines.h"
#include "test_bytes.h"

namespace toolbox::testing {
namespace {

constexpr Pattern kSolid = {{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};
constexpr GWorldFlags kClip = 1u << 28, kStretch = 1u << 29, kDither = 1u << 30;

class Worlds : public ::testing::Test {
 protected:
  void SetUp() override { handles_ = ToolboxLiveHandles(); }
  void TearDown() override {
    for (const GWorldPtr world : worlds_) qd.DisposeGWorld(world);
    for (const RgnHandle region : regions_) qd.DisposeRgn(region);
    EXPECT_EQ(handles_, ToolboxLiveHandles());
  }

  /// A new world, which is then current.
  GWorldPtr world(SInt16 depth, const Rect& bounds) {
    GWorldPtr made = nullptr;
    EXPECT_EQ(noErr, qd.NewGWorld(&made, depth, &bounds, nullptr, nullptr, 0));
    worlds_.push_back(made);
    qd.SetGWorld(made, nullptr);
    return made;
  }
  RgnHandle region(const Bytes& record) {
    const RgnHandle made = qd.NewRgn();
    const auto handle = reinterpret_cast<Handle>(made);
    EXPECT_EQ(noErr, SetHandleSize(handle, static_cast<Size>(record.size())));
    std::copy(record.begin(), record.end(), *handle);
    regions_.push_back(made);
    return made;
  }
  uint8_t* base(GWorldPtr of) {
    return reinterpret_cast<uint8_t*>(qd.GetPixBaseAddr(qd.GetGWorldPixMap(of)));
  }
  /// The bytes of a row, padding included.
  Bytes row(GWorldPtr of, int32_t y) {
    const SInt32 bytes = qd.GetPixRowBytes(qd.GetGWorldPixMap(of));
    return {base(of) + y * bytes, base(of) + (y + 1) * bytes};
  }
  void fill(const Rect& rect, UInt16 red, UInt16 green, UInt16 blue,
            const Pattern& pattern = kSolid) {
    const RGBColor color = {red, green, blue};
    qd.RGBForeColor(&color);
    qd.FillRect(&rect, &pattern);
  }
  void copy(GWorldPtr from, GWorldPtr to, const Rect& source, const Rect& destination,
            SInt16 mode = 0, RgnHandle mask = nullptr) {
    qd.CopyBits(qd.GetPortBitMapForCopyBits(from), qd.GetPortBitMapForCopyBits(to), &source,
                &destination, mode, mask);
  }

  const QuickDrawRoutines qd;

 private:
  std::vector<GWorldPtr> worlds_;
  std::vector<RgnHandle> regions_;
  uint32_t handles_ = 0;
};

TEST_F(Worlds, HoldThePixelsOfTheirDepth) {
  const struct {
    SInt16 depth;
    const char* white;
    const char* drawn;  // columns 1 and 2 of 5 in one colour; at depth 1 the second is lighter
  } depths[] = {
      {1, "00000000", "40000000"},
      {2, "FFFFFFFF", "D7FFFFFF"},
      {4, "FFFFFFFF", "F77FFFFF"},
      {8, "FFFFFFFFFFFFFFFF", "FF7070FFFFFFFFFF"},
      {16, "7FFF7FFF7FFF7FFF7FFF7FFF", "7FFF121E121E7FFF7FFF7FFF"},
      {24, "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", "FFFFFF2080F02080F0FFFFFFFFFFFFFF"},
      {32, "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", "FFFFFFFFFF2080F0FF2080F0FFFFFFFFFFFFFFFF"},
  };
  for (const auto& each : depths) {
    SCOPED_TRACE(each.depth);
    const GWorldPtr made = world(each.depth, {-3, -7, 4, -2});
    EXPECT_EQ(each.depth, qd.GetPixDepth(qd.GetGWorldPixMap(made)));
    EXPECT_EQ(((5 * each.depth + 31) / 32) * 4, qd.GetPixRowBytes(qd.GetGWorldPixMap(made)));
    Rect bounds;
    EXPECT_EQ(&bounds, qd.GetPortBounds(made, &bounds));
    EXPECT_EQ(-3, bounds.top);
    EXPECT_EQ(-2, bounds.right);
    const Bytes white = row(made, 0);
    EXPECT_EQ(hex(each.white), white);
    fill({-2, -6, 0, -5}, 0x20FF, 0x80FF, 0xF0FF);
    fill({-2, -5, 0, -4}, 0x20FF, static_cast<UInt16>(each.depth == 1 ? 0xFFFF : 0x80FF), 0xF0FF);
    EXPECT_EQ(white, row(made, 0));
    EXPECT_EQ(hex(each.drawn), row(made, 1));
    EXPECT_EQ(row(made, 1), row(made, 2));
    EXPECT_EQ(white, row(made, 3));
  }
  const GWorldPtr deepest = world(0, {0, 0, 1, 1});
  EXPECT_EQ(32, qd.GetPixDepth(qd.GetPortPixMap(deepest)));
}

TEST_F(Worlds, RefuseWhatTheyCannotBe) {
  GWorldPtr made = reinterpret_cast<GWorldPtr>(1);
  const Rect empty = {0, 0, 0, 5}, inverted = {5, 5, 0, 0}, one = {0, 0, 1, 1};
  const Rect huge = {-32768, -32768, 32767, 32767};
  EXPECT_EQ(paramErr, qd.NewGWorld(&made, 32, &empty, nullptr, nullptr, 0));
  EXPECT_EQ(nullptr, made);
  EXPECT_EQ(paramErr, qd.NewGWorld(&made, 32, &inverted, nullptr, nullptr, 0));
  EXPECT_EQ(paramErr, qd.NewGWorld(&made, 32, nullptr, nullptr, nullptr, 0));
  EXPECT_EQ(paramErr, qd.NewGWorld(nullptr, 32, &one, nullptr, nullptr, 0));
  EXPECT_EQ(cDepthErr, qd.NewGWorld(&made, 7, &one, nullptr, nullptr, 0));
  EXPECT_EQ(cDepthErr, qd.NewGWorld(&made, -1, &one, nullptr, nullptr, 0));
  EXPECT_EQ(memFullErr, qd.NewGWorld(&made, 32, &huge, nullptr, nullptr, 0)) << "17 GB";
  EXPECT_EQ(nullptr, made);

  const GWorldPtr dead = world(32, one);
  const PixMapHandle pixels = qd.GetGWorldPixMap(dead);
  qd.DisposeGWorld(dead);
  const auto made_up = reinterpret_cast<GWorldPtr>(uintptr_t{0x12345});
  for (const GWorldPtr bad : {dead, made_up, GWorldPtr{nullptr}}) {
    GWorldPtr updated = bad;
    EXPECT_EQ(0x80000000u | static_cast<UInt16>(paramErr),
              qd.UpdateGWorld(&updated, 8, &one, nullptr, nullptr, 0));
    Rect bounds = {1, 2, 3, 4};
    qd.GetPortBounds(bad, &bounds);
    EXPECT_EQ(0, bounds.right);
    EXPECT_EQ(nullptr, qd.GetGWorldPixMap(bad));
    EXPECT_EQ(nullptr, qd.GetPortBitMapForCopyBits(bad));
    qd.DisposeGWorld(bad);
    qd.SetGWorld(bad, nullptr);
    fill({0, 0, 10, 10}, 0, 0, 0);
  }
  EXPECT_FALSE(qd.LockPixels(pixels));
  EXPECT_EQ(nullptr, qd.GetPixBaseAddr(pixels));
  EXPECT_EQ(0, qd.GetPixDepth(nullptr));
}

TEST_F(Worlds, HaveACurrentPortAtAllTimes) {
  CGrafPtr first = nullptr;
  GDHandle device = reinterpret_cast<GDHandle>(1);
  qd.SetGWorld(nullptr, nullptr);
  qd.GetGWorld(&first, &device);
  EXPECT_NE(nullptr, first);
  EXPECT_EQ(nullptr, device);
  Rect bounds;
  EXPECT_EQ(0, qd.GetPortBounds(first, &bounds)->bottom);
  const GWorldPtr made = world(8, {0, 0, 2, 2});
  CGrafPtr now = nullptr;
  qd.GetGWorld(&now, nullptr);
  EXPECT_EQ(made, now);
  qd.DisposeGWorld(made);
  qd.GetGWorld(&now, nullptr);
  EXPECT_EQ(first, now);
  qd.DisposeGWorld(first);
  qd.GetGWorld(&now, nullptr);
  EXPECT_EQ(first, now) << "the port that there always is";
}

TEST_F(Worlds, AreFilledThroughPatternsAndRegions) {
  const GWorldPtr made = world(8, {1, 1, 7, 9});
  fill({-100, -100, 100, 100}, 0, 0, 0, {{0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55}});
  // Aligned to the origin, which lies outside: the pixel at (1, 1) is bit 6 of row 1.
  EXPECT_EQ(hex("00FF00FF00FF00FF"), row(made, 0));
  EXPECT_EQ(hex("FF00FF00FF00FF00"), row(made, 1));
  fill({1, 1, 7, 9}, 0xFFFF, 0xFFFF, 0xFFFF);
  const RGBColor black = {0, 0, 0};
  qd.RGBForeColor(&black);
  // Columns 0 to 2 of rows 0 to 3, and columns 0 to 5 of rows 4 and 5; row 0 and column 0 lie
  // outside.
  qd.FillRgn(region(hex("0024 0000 0000 0006 0006 0000 0000 0003 7FFF 0004 0003 0006 7FFF"
                        "0006 0000 0006 7FFF 7FFF")),
             &kSolid);
  EXPECT_EQ(hex("0000FFFFFFFFFFFF"), row(made, 0));
  EXPECT_EQ(hex("0000FFFFFFFFFFFF"), row(made, 2));
  EXPECT_EQ(hex("0000000000FFFFFF"), row(made, 3));
  EXPECT_EQ(hex("FFFFFFFFFFFFFFFF"), row(made, 5));
  // Of damaged rows the box is filled; of a handle without a region nothing.
  qd.FillRgn(region(hex("0024 0001 0007 0002 0009 0000")), &kSolid);
  qd.FillRgn(region(hex("0024 0001")), &kSolid);
  qd.FillRgn(nullptr, &kSolid);
  EXPECT_EQ(hex("0000FFFFFFFF0000"), row(made, 0));
}

TEST_F(Worlds, CopyAcrossDepthsAndSizes) {
  const GWorldPtr source = world(32, {0, 0, 2, 2});
  fill({0, 0, 1, 1}, 0xFFFF, 0, 0);
  fill({1, 1, 2, 2}, 0, 0, 0);
  for (const int each : {1, 2, 4, 8, 16, 24, 32}) {
    const auto depth = static_cast<SInt16>(each);
    SCOPED_TRACE(depth);
    const GWorldPtr other = world(depth, {0, 0, 2, 2});
    copy(source, other, {0, 0, 2, 2}, {0, 0, 2, 2});
    const GWorldPtr back = world(32, {0, 0, 4, 6});
    copy(other, back, {0, 0, 2, 2}, {0, 0, 4, 6});
    const bool is_grey = depth <= 8;
    // Red has a luminance of 30 %.
    const Bytes red = hex(depth == 1   ? "FF000000"
                          : depth == 2 ? "FF555555"
                          : depth == 4 ? "FF555555"
                          : is_grey    ? "FF4D4D4D"
                                       : "FFFF0000");
    const Bytes white = hex("FFFFFFFF"), black = hex("FF000000");
    EXPECT_EQ(red + red + red + white + white + white, row(back, 0));
    EXPECT_EQ(row(back, 0), row(back, 1));
    EXPECT_EQ(white + white + white + black + black + black, row(back, 2));
    EXPECT_EQ(row(back, 2), row(back, 3));
  }
  // Smaller, in part outside of both, through a mask, and over itself.
  const GWorldPtr wide = world(8, {0, 0, 1, 8});
  std::copy_n("\0\1\2\3\4\5\6\7", 8, base(wide));
  const GWorldPtr narrow = world(8, {0, 0, 1, 8});
  copy(wide, narrow, {0, 0, 1, 8}, {0, 2, 1, 6});
  EXPECT_EQ(hex("FFFF00020406FFFF"), row(narrow, 0));
  copy(wide, narrow, {0, -2, 1, 6}, {0, -4, 1, 4});
  EXPECT_EQ(hex("020304050406FFFF"), row(narrow, 0)) << "white where the source has none";
  copy(wide, narrow, {0, 0, 1, 8}, {0, 0, 1, 8}, 0, region(hex("000A 0000 0001 0001 0003")));
  EXPECT_EQ(hex("020102050406FFFF"), row(narrow, 0));
  copy(wide, wide, {0, 0, 1, 7}, {0, 1, 1, 8});
  EXPECT_EQ(hex("0000010203040506"), row(wide, 0));
}

TEST_F(Worlds, CopyInEveryMode) {
  // At depth 1, 0011 drawn over 0101.
  const struct {
    SInt16 mode;
    uint8_t result;
  } modes[] = {{0, 0x30}, {1, 0x70}, {2, 0x60},  {3, 0x40}, {4, 0xC0},  {5, 0xD0},
               {6, 0x90}, {7, 0x10}, {36, 0x70}, {8, 0x50}, {-1, 0x50}, {0x40, 0x30}};
  for (const auto& each : modes) {
    SCOPED_TRACE(each.mode);
    const GWorldPtr from = world(1, {0, 0, 1, 4});
    const GWorldPtr to = world(1, {0, 0, 1, 4});
    base(from)[0] = 0x30;
    base(to)[0] = 0x50;
    copy(from, to, {0, 0, 1, 4}, {0, 0, 1, 4}, each.mode);
    EXPECT_EQ(each.result, base(to)[0]);
  }
  // Black becomes the foreground of the destination.
  const GWorldPtr from = world(8, {0, 0, 1, 2});
  fill({0, 0, 1, 1}, 0, 0, 0);
  const GWorldPtr to = world(24, {0, 0, 1, 2});
  const RGBColor red = {0xFFFF, 0, 0};
  qd.RGBForeColor(&red);
  copy(from, to, {0, 0, 1, 2}, {0, 0, 1, 2});
  EXPECT_EQ(hex("FF0000FFFFFFFFFF"), row(to, 0));
  // A caller's own bitmap is one bit deep; one whose rows are too short is not read.
  const uint8_t bits[] = {0xA0, 0};
  BitMap own = {reinterpret_cast<Ptr>(const_cast<uint8_t*>(bits)), 2, {0, 0, 1, 4}};
  const Rect rect = {0, 0, 1, 2};
  const GWorldPtr grey = world(8, rect);
  qd.CopyBits(&own, qd.GetPortBitMapForCopyBits(grey), &rect, &rect, 0, nullptr);
  EXPECT_EQ(hex("00FF"), Bytes(base(grey), base(grey) + 2));
  own.bounds.right = 17;
  own.baseAddr = nullptr;
  qd.CopyBits(&own, qd.GetPortBitMapForCopyBits(grey), &rect, &rect, 0, nullptr);
  qd.CopyBits(nullptr, nullptr, nullptr, nullptr, 0, nullptr);
}

TEST_F(Worlds, ChangeTheirDepthAndSize) {
  GWorldPtr made = world(32, {0, 0, 2, 3});
  const GWorldPtr before = made;
  fill({0, 0, 1, 3}, 0x7F00, 0x7F00, 0x7F00);  // just darker than half
  fill({1, 0, 2, 3}, 0x8000, 0x8000, 0x8000);  // just lighter
  const Rect same = {0, 0, 2, 3}, larger = {10, 10, 14, 16};
  EXPECT_EQ(0u, qd.UpdateGWorld(&made, 1, &same, nullptr, nullptr, kClip) >> 31);
  EXPECT_EQ(before, made);
  EXPECT_EQ(1, qd.GetPixDepth(qd.GetPortPixMap(made)));
  EXPECT_EQ(hex("E0000000"), row(made, 0));
  EXPECT_EQ(hex("00000000"), row(made, 1));
  const GWorldFlags flags = qd.UpdateGWorld(&made, 8, &larger, nullptr, nullptr, kStretch);
  EXPECT_EQ(1u << 17 | 1u << 19 | 1u << 20, flags);
  EXPECT_EQ(hex("0000000000000000").size(), row(made, 0).size());
  EXPECT_EQ(hex("000000000000"), Bytes(base(made), base(made) + 6));
  EXPECT_EQ(row(made, 0), row(made, 1));
  EXPECT_EQ(hex("FFFFFFFFFFFF"), Bytes(base(made) + 16, base(made) + 22));
  const Rect smaller = {0, 0, 1, 1};
  EXPECT_EQ(1u << 19 | 1u << 20, qd.UpdateGWorld(&made, 8, &smaller, nullptr, nullptr, kClip));
  EXPECT_EQ(0, base(made)[0]);
  EXPECT_EQ(1u << 20, qd.UpdateGWorld(&made, 8, &smaller, nullptr, nullptr, 0));
  EXPECT_EQ(0xFF, base(made)[0]) << "without flags it becomes white";
  const Rect empty = {0, 0, 0, 0};
  EXPECT_EQ(1u << 31 | static_cast<UInt16>(paramErr),
            qd.UpdateGWorld(&made, 8, &empty, nullptr, nullptr, 0));
  EXPECT_EQ(8, qd.GetPixDepth(qd.GetPortPixMap(made))) << "what fails changes nothing";

  // Mixed on demand: half of a grey of half is black, all of black and none of white.
  GWorldPtr mixed = world(32, {0, 0, 16, 48});
  fill({0, 0, 16, 16}, 0, 0, 0);
  fill({0, 16, 16, 32}, 0x8000, 0x8000, 0x8000);
  const Rect all = {0, 0, 16, 48};
  qd.UpdateGWorld(&mixed, 1, &all, nullptr, nullptr, kClip | kDither);
  int black[3] = {};
  for (int32_t y = 0; y < 16; ++y) {
    const Bytes bits = row(mixed, y);
    for (size_t x = 0; x < 48; ++x) black[x / 16] += bits[x / 8] >> (7 - x % 8) & 1;
  }
  EXPECT_EQ(256, black[0]);
  EXPECT_NEAR(128, black[1], 4);
  EXPECT_EQ(0, black[2]);
}

TEST_F(Worlds, BecomeRegions) {
  const GWorldPtr made = world(1, {-20, -10, 20, 20});
  fill({-20, -10, 20, 0}, 0, 0, 0);
  fill({0, 0, 20, 20}, 0, 0, 0);
  const RgnHandle whole = region(hex("000A 0000 0000 0001 0001"));
  // The pixel map taken for a bitmap, as callers do.
  const auto* bits = reinterpret_cast<const BitMap*>(*qd.GetPortPixMap(made));
  EXPECT_EQ(noErr, qd.BitMapToRegion(whole, bits));
  const auto handle = reinterpret_cast<Handle>(whole);
  EXPECT_EQ(hex("0024 FFEC FFF6 0014 0014 FFEC FFF6 0000 7FFF 0000 0000 0014 7FFF"
                "0014 FFF6 0014 7FFF 7FFF"),
            Bytes(*handle, *handle + GetHandleSize(handle)));
  const GWorldPtr deep = world(8, {0, 0, 2, 2});
  EXPECT_EQ(pixMapTooDeepErr, qd.BitMapToRegion(whole, qd.GetPortBitMapForCopyBits(deep)));
  EXPECT_EQ(36, GetHandleSize(handle)) << "what fails changes nothing";
  const GWorldPtr noise = world(1, {0, 0, 2000, 2000});
  std::mt19937 random(1);
  for (int i = 0; i < 2000 * 2000 / 8; ++i) base(noise)[i] = static_cast<uint8_t>(random());
  EXPECT_EQ(rgnTooBigErr, qd.BitMapToRegion(whole, qd.GetPortBitMapForCopyBits(noise)));
  EXPECT_EQ(paramErr, qd.BitMapToRegion(nullptr, bits));
  EXPECT_EQ(paramErr, qd.BitMapToRegion(reinterpret_cast<RgnHandle>(uintptr_t{8}), bits));
  EXPECT_EQ(paramErr, qd.BitMapToRegion(whole, nullptr));
  qd.DisposeRgn(nullptr);
  qd.DisposeRgn(reinterpret_cast<RgnHandle>(uintptr_t{0x12345}));
}

TEST_F(Worlds, LendTheirPixelsToContexts) {
  const uint32_t references = ToolboxLiveReferences();
  uint8_t red[4] = {0xFF, 0, 0, 0xFF};
  const CGContextRef pixel =
      CGBitmapContextCreate(red, 1, 1, 8, 4, nullptr, kCGImageAlphaPremultipliedLast);
  const CGImageRef image = CGBitmapContextCreateImage(pixel);
  const struct {
    SInt16 depth;
    const char* row;
  } depths[] = {{16, "7FFF7C007FFF7FFF"},
                {24, "FFFFFFFF0000FFFFFFFFFFFF"},
                {32, "FFFFFFFFFFFF0000FFFFFFFFFFFFFFFF"}};
  for (const auto& each : depths) {
    SCOPED_TRACE(each.depth);
    const GWorldPtr made = world(each.depth, {5, 5, 9, 9});
    const Bytes white = row(made, 0);
    CGContextRef context = nullptr, again = reinterpret_cast<CGContextRef>(1);
    ASSERT_EQ(noErr, QDBeginCGContext(made, &context));
    EXPECT_EQ(paramErr, QDBeginCGContext(made, &again)) << "lent already";
    EXPECT_EQ(nullptr, again);
    // From the bottom: the second row from below is the third from above.
    CGContextDrawImage(context, {1, 1, 1, 1}, image);
    CGContextFlush(context);
    EXPECT_EQ(paramErr, QDEndCGContext(made, &again));
    EXPECT_EQ(noErr, QDEndCGContext(made, &context));
    EXPECT_EQ(nullptr, context);
    EXPECT_EQ(white, row(made, 1));
    const Bytes drawn = row(made, 2);
    EXPECT_EQ(hex(each.row), drawn);
    EXPECT_EQ(white, row(made, 3));
  }
  CGContextRef context = nullptr;
  EXPECT_EQ(paramErr, QDBeginCGContext(world(8, {0, 0, 1, 1}), &context));
  EXPECT_EQ(paramErr, QDBeginCGContext(nullptr, &context));
  CGImageRelease(image);
  CGContextRelease(pixel);
  EXPECT_EQ(references, ToolboxLiveReferences());
}

}  // namespace
}  // namespace toolbox::testing
