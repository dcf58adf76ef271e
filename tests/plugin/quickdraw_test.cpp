// QuickDraw where it is missing, where it comes late, and where only some of it is there.
#include <ApplicationServices/ApplicationServices.h>

#include <algorithm>
#include <cstring>

#include "plugin/host/encodings.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::property;
using fake_toolbox::toolbox;

// Each test runs in a process of its own: what was found once is kept.
class QuickDraw : public PluginTest {};

template <class Function>
void* address(Function* function) {
  return reinterpret_cast<void*>(function);
}

void provide(const char* name, void* routine) {
  toolbox().answers["CFBundleLoadExecutable"] = 1;
  toolbox().frameworks[name] = routine;
}

void answers_its_defaults_where_it_is_missing() {
  Rect rect = {1, 2, 3, 4};
  EXPECT_EQ(GetPortBounds(nullptr, &rect), &rect);
  EXPECT_EQ(rect.top + rect.left + rect.bottom + rect.right, 0);
  GWorldPtr world = nullptr;
  EXPECT_EQ(NewGWorld(&world, 32, &rect, nullptr, nullptr, 0), -1);
  EXPECT_EQ(BitMapToRegion(nullptr, nullptr), -1);
  EXPECT_EQ(UpdateGWorld(&world, 32, &rect, nullptr, nullptr, 0), 0u);
  EXPECT_EQ(GetPixDepth(nullptr), 0);
  EXPECT_EQ(LockPixels(nullptr), 0);
  EXPECT_EQ(NewRgn(), nullptr);
  EXPECT_EQ(GetPixRowBytes(nullptr), 0);
  EXPECT_EQ(GetPixBaseAddr(nullptr), nullptr);
  EXPECT_EQ(GetPortPixMap(nullptr), nullptr);
  EXPECT_EQ(GetGWorldPixMap(nullptr), nullptr);
  EXPECT_EQ(GetPortBitMapForCopyBits(nullptr), nullptr);
  SInt16 number = 77;
  GetFNum(reinterpret_cast<ConstStr255Param>("\4Font"), &number);
  EXPECT_EQ(number, 77);
  Str255 name = {3};
  GetFontName(0, name);
  EXPECT_EQ(name[0], 3);
  FontInfo info = {1, 2, 3, 4};
  GetFontInfo(&info);
  EXPECT_EQ(info.leading, 4);
  TextFont(1);
  TextFace(1);
  TextSize(1);
  FillRect(nullptr, nullptr);
  FillRgn(nullptr, nullptr);
  RGBForeColor(nullptr);
  CopyBits(nullptr, nullptr, nullptr, nullptr, 0, nullptr);
  DisposeGWorld(nullptr);
  DisposeRgn(nullptr);
  SetGWorld(nullptr, nullptr);
  GetGWorld(nullptr, nullptr);
  UnlockPixels(nullptr);
  EXPECT_EQ(toolbox().calls.size(), 27u) << "each call tries again";
  EXPECT_EQ(toolbox().calls.back(), "FSFindFolder(-32767, 1718772077, 1)");
  EXPECT_EQ(toolbox().foundation_objects, 0);
}
TEST_F(QuickDraw, AnswersItsDefaultsWhereItIsMissing) {
  IN_FRESH_PROCESS(answers_its_defaults_where_it_is_missing());
}

void is_found_once_it_is_there() {
  TextSize(12);
  static int size_set = 0;
  provide("TextSize", address<void(SInt16)>([](SInt16 size) { size_set = size; }));
  toolbox().answers["CFBundleLoadExecutable"] = 0;
  TextSize(12);
  EXPECT_EQ(size_set, 0) << "a bundle that cannot be loaded is as good as none";
  EXPECT_EQ(toolbox().foundation_objects, 0);
  toolbox().answers["CFBundleLoadExecutable"] = 1;
  toolbox().calls.clear();
  TextSize(12);
  EXPECT_EQ(size_set, 12);
  EXPECT_EQ(toolbox().calls, (Calls{"FSFindFolder(-32767, 1718772077, 1)",
                                    "append ApplicationServices.framework", "find TextSize"}));
  TextFace(1);
  TextFace(1);
  TextSize(9);
  EXPECT_EQ(size_set, 9);
  EXPECT_EQ(std::count(toolbox().calls.begin(), toolbox().calls.end(), "find TextSize"), 1);
  EXPECT_EQ(std::count(toolbox().calls.begin(), toolbox().calls.end(), "find TextFace"), 2)
      << "a routine that was not found is looked up again";
  EXPECT_EQ(toolbox().foundation_objects, 1) << "the bundle is kept";
}
TEST_F(QuickDraw, IsFoundOnceItIsThere) { IN_FRESH_PROCESS(is_found_once_it_is_there()); }

void names_the_fonts_of_chapters() {
  const REALobject chapter = fake_host::make_object("QTChapterDataKRZ");
  const PropertyEntry& entry = property("QTChapterDataKRZ", "FontName");
  const auto name = [&] {
    const REALstring text =
        fake_host::function<REALstring(REALobject, intptr_t)>(entry.getter)(chapter, entry.param);
    if (!text) return std::string("nil");
    EXPECT_EQ(fake_host::encoding_of(text), krz::kMacRoman);
    const std::string bytes = fake_host::bytes_of(text);
    fake_host::unlock(text);
    return bytes;
  };
  const auto set_name = [&](const char* value) {
    const REALstring text = fake_host::make_string(value, krz::kUTF8);
    fake_host::function<void(REALobject, intptr_t, REALstring)>(entry.setter)(chapter, entry.param,
                                                                              text);
    fake_host::unlock(text);
    return fake_host::field<int32_t>(chapter, "QTChapterDataKRZ", "FontNumber");
  };
  fake_host::field<int32_t>(chapter, "QTChapterDataKRZ", "FontNumber") = 9;
  EXPECT_EQ(name(), "nil");
  EXPECT_EQ(set_name("Monaco"), 0) << "the number is preset";

  provide("GetFNum",
          address<void(ConstStr255Param, SInt16*)>([](ConstStr255Param text, SInt16* number) {
            if (text[0] == 6) *number = -4;
          }));
  provide("GetFontName", address<void(SInt16, Str255)>([](SInt16 number, Str255 text) {
            std::memcpy(text, number == -4 ? "\6Monaco" : "\0", number == -4 ? 7 : 1);
          }));
  EXPECT_EQ(set_name("Monaco"), -4) << "with its sign";
  EXPECT_EQ(name(), "Monaco");
  EXPECT_EQ(set_name("Unknown"), 0);
  EXPECT_TRUE(std::find(toolbox().calls.begin(), toolbox().calls.end(),
                        "append Carbon.framework") != toolbox().calls.end());
  fake_host::unlock(chapter);
}
TEST_F(QuickDraw, NamesTheFontsOfChapters) { IN_FRESH_PROCESS(names_the_fonts_of_chapters()); }

}  // namespace
