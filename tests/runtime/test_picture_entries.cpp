// What modules see of pictures, in both kinds of hosts.
#include <ApplicationServices/CoreGraphics.h>
#include <Toolbox/Toolbox.h>

#include <cstring>
#include <vector>

#include "entries/entries.h"
#include "host_test.h"

namespace krz {
namespace {

template <class Result, class... Arguments>
Result entry(const char* name, Arguments... arguments) {
  return reinterpret_cast<Result (*)(Arguments...)>(resolve_entry(name))(arguments...);
}

using Picture = REALpictureStruct*;
using Description = REALpictureDescription;

class PictureEntries : public HostTest {
 protected:
  void start_with(REALpictureDescriptionType kind) {
    RuntimeOptions options;
    options.picture_kind = kind;
    start(options);
  }
  void TearDown() override {
    HostTest::TearDown();
    EXPECT_EQ(ToolboxLiveReferences(), references_) << "contexts are left";
  }

  static Picture new_picture(int32_t width, int32_t height) {
    return entry<Picture>("newPicture", width, height, int32_t{32});
  }
  static void unlock(Picture picture) {
    entry<void>("REALUnlockObject", reinterpret_cast<REALobject>(picture));
  }
  static bool lock(Picture picture, Description& description, int32_t kind) {
    return entry<bool>("REALLockPictureDescription", picture, &description, kind);
  }
  static bool has_alpha(Picture picture) {
    uint8_t value = 9;
    EXPECT_TRUE(entry<bool>("REALGetPropValueBool", reinterpret_cast<REALobject>(picture),
                            "HasAlphaChannel", &value));
    return value != 0;
  }
  /// A picture as scripts make it, with alpha.
  Picture picture_with_alpha(int32_t width, int32_t height) {
    const REALobject made = create("Picture");
    const auto* const constructor = made->class_info->find_methods("Constructor").front();
    reinterpret_cast<void (*)(REALobject, int32_t, int32_t)>(constructor->function)(made, width,
                                                                                    height);
    return reinterpret_cast<Picture>(made);
  }

 private:
  uint32_t references_ = ToolboxLiveReferences();
};

TEST_F(PictureEntries, ABitmapContextIsWhatThePixelsAre) {
  const Picture picture = new_picture(3, 2);
  int32_t width = 0;
  EXPECT_TRUE(
      entry<bool>("REALGetPropValueInt", reinterpret_cast<REALobject>(picture), "Width", &width));
  EXPECT_EQ(width, 3);
  EXPECT_FALSE(has_alpha(picture));
  Description description{};
  EXPECT_FALSE(lock(picture, description, kPicturePixelBuffer));
  EXPECT_EQ(description.type, 0);
  ASSERT_TRUE(lock(picture, description, kPictureBitmapContext));
  EXPECT_EQ(description.type, 8);
  EXPECT_EQ(description.width, 3);
  EXPECT_EQ(description.height, 2);
  const auto context = static_cast<CGContextRef>(description.data);
  EXPECT_EQ(CGBitmapContextGetAlphaInfo(context), kCGImageAlphaNoneSkipFirst + 0u);
  EXPECT_EQ(CGBitmapContextGetBitmapInfo(context) & kCGBitmapByteOrderMask, 0u);
  EXPECT_EQ(CGBitmapContextGetBitsPerPixel(context), 32u);
  EXPECT_EQ(CGBitmapContextGetWidth(context), 3u);
  auto* const bytes = static_cast<uint8_t*>(CGBitmapContextGetData(context));
  const uint8_t pixel[] = {0, 1, 2, 3};
  std::memcpy(bytes + CGBitmapContextGetBytesPerRow(context) + 4, pixel, 4);
  entry<void>("unlockPictureDescription", picture);
  entry<void>("REALPictureClearCache", picture);

  Description older{};
  entry<void>("lockPictureDescription", picture, &older);
  EXPECT_EQ(older.type, 8);
  EXPECT_EQ(older.data, context) << "the same at every lock";
  entry<void>("unlockPictureDescription", picture);
  unlock(picture);

  const Picture clear = picture_with_alpha(1, 1);
  EXPECT_TRUE(has_alpha(clear));
  ASSERT_TRUE(lock(clear, description, 8));
  EXPECT_EQ(CGBitmapContextGetAlphaInfo(static_cast<CGContextRef>(description.data)), 2u);
  unlock(clear);
}

TEST_F(PictureEntries, TheOlderBufferHasRowsOfNumbers) {
  start_with(kPicturePixelBuffer);
  for (const bool alpha : {false, true}) {
    const Picture picture = alpha ? picture_with_alpha(3, 2) : new_picture(3, 2);
    Description description{};
    EXPECT_FALSE(lock(picture, description, kPictureBitmapContext));
    ASSERT_TRUE(lock(picture, description, kPicturePixelBuffer));
    EXPECT_EQ(description.width, 3);
    EXPECT_EQ(description.height, 2);
    const auto* const buffer = static_cast<const REALpixelBuffer*>(description.data);
    EXPECT_EQ(buffer->has_alpha, alpha ? 1u : 0u);
    const uint32_t number = 0xFF0A141E;
    std::memcpy(static_cast<uint32_t*>(buffer->rows[1]) + 2, &number, 4);
    entry<void>("unlockPictureDescription", picture);

    // Drawn on another one, it arrives at the same place.
    const Picture other = new_picture(3, 2);
    const auto graphics = entry<REALobject>("pluginPictureGraphicsGetter", other);
    const auto draw = reinterpret_cast<void (*)(REALobject, Picture, int32_t, int32_t, int32_t,
                                                int32_t, int32_t, int32_t, int32_t, int32_t)>(
        entry<REALfunction>("REALLoadObjectMethod", graphics,
                            "DrawPicture(Image as Picture, x as Integer, y as Integer, w as "
                            "Integer, h as Integer, sx as Integer = 0, sy as Integer = 0, sw as "
                            "Integer = -10000, sh as Integer = -10000)"));
    ASSERT_NE(draw, nullptr);
    draw(graphics, picture, 0, 0, 3, 2, 0, 0, 3, 2);
    entry<void>("REALUnlockObject", graphics);
    ASSERT_TRUE(lock(other, description, kPicturePixelBuffer));
    const auto* const drawn = static_cast<const REALpixelBuffer*>(description.data);
    EXPECT_EQ(static_cast<uint32_t*>(drawn->rows[1])[2] & 0xFFFFFF, 0x0A141Eu);
    EXPECT_EQ(static_cast<uint32_t*>(drawn->rows[1])[1] & 0xFFFFFF, 0xFFFFFFu);
    unlock(other);
    unlock(picture);
  }
}

TEST_F(PictureEntries, BuffersBecomePictures) {
  std::vector<uint8_t> rows = {9, 9, 9, 9, 10, 20, 30, 255, 7, 7, 7, 7};
  const Picture picture =
      entry<Picture>("REALBuildPictureFromBuffer", int32_t{1}, int32_t{2}, RBPixelType{1},
                     static_cast<void*>(rows.data()), int32_t{4});
  ASSERT_NE(picture, nullptr);
  EXPECT_TRUE(has_alpha(picture));
  Description description{};
  ASSERT_TRUE(lock(picture, description, 8));
  const auto* const bytes = static_cast<const uint8_t*>(
      CGBitmapContextGetData(static_cast<CGContextRef>(description.data)));
  EXPECT_EQ(std::memcmp(bytes + 4, "\xFF\x0A\x14\x1E", 4), 0);
  unlock(picture);
  for (const int32_t type : {0, 7, 8, -1})
    EXPECT_EQ((entry<Picture>("REALBuildPictureFromBuffer", int32_t{1}, int32_t{1},
                              static_cast<RBPixelType>(type), static_cast<void*>(rows.data()),
                              int32_t{4})),
              nullptr);
  for (const int32_t row_bytes : {3, -4})
    EXPECT_EQ((entry<Picture>("REALBuildPictureFromBuffer", int32_t{1}, int32_t{1}, RBPixelType{1},
                              static_cast<void*>(rows.data()), row_bytes)),
              nullptr);
}

TEST_F(PictureEntries, SizesWithoutEndAndThingsThatAreNoPicturesGiveNothing) {
  const int32_t bad[] = {0, -1, 32768, INT32_MAX};
  for (const int32_t size : bad) {
    EXPECT_EQ(new_picture(size, 1), nullptr);
    EXPECT_EQ(new_picture(1, size), nullptr);
  }
  RuntimeOptions options;
  options.memory_budget = 1 << 20;
  start(options);
  EXPECT_EQ(new_picture(32767, 32767), nullptr);
  const REALobject block = create("MemoryBlock");
  const REALobject empty = create("Picture");
  for (const REALobject object : {block, empty, REALobject{nullptr}}) {
    const auto none = reinterpret_cast<Picture>(object);
    Description description{8, this, 1, 1};
    EXPECT_FALSE(lock(none, description, 8));
    EXPECT_EQ(description.type, 0);
    EXPECT_EQ(description.data, nullptr);
    entry<void>("lockPictureDescription", none, &description);
    EXPECT_EQ(description.type, 0);
    entry<void>("unlockPictureDescription", none);
    EXPECT_EQ(entry<REALobject>("pluginPictureGraphicsGetter", none), nullptr);
  }
  EXPECT_FALSE((entry<bool>("REALLockPictureDescription", Picture{nullptr},
                            static_cast<Description*>(nullptr), int32_t{8})));
  unlock_object(block);
  unlock_object(empty);
}

}  // namespace
}  // namespace krz
