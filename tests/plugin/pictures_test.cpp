// Host pictures: the words that pixels of worlds become, what an editor attaches to, how pictures
// are copied and drawn, and clip masks. Each test runs in a process of its own: what kind of host
// it is is learnt once.
#include <functional>

#include "host/resolver.h"
#include "picture/clip_mask.h"
#include "picture/picture.h"
#include "picture/picture_editor.h"
#include "plugin/fake_drawing.h"
#include "plugin/fake_pictures.h"
#include "plugin/plugin_test.h"

namespace {

using fake_drawing::drawn;
using fake_drawing::provide_drawing;
using fake_drawing::some_world;
using fake_drawing::World;
using fake_host::host;
using fake_toolbox::toolbox;
using krz::as_object;

class Pictures : public PluginTest {};

/// A world of 2 by 2 pixels whose rows have these bytes, a spare one behind each.
std::string world_bytes;
void set_pixels(SInt16 depth, const std::string& first, const std::string& second) {
  world_bytes = first + "\xCC" + second + "\xCC";
  drawn.depth = depth;
  drawn.bounds = {-1, -2, 1, 0};
  drawn.base = world_bytes.data();
  drawn.row_bytes = static_cast<SInt32>(first.size() + 1);
}

void become_console_host() { host().foreign_classes["ConsoleApplication"] = 0; }

void builds_pictures_by_the_table() {
  provide_drawing();
  using namespace std::string_literals;
  // Two pixels of the first row; bytes that tell every place from every other.
  const struct {
    SInt16 depth;
    std::string first, second;
    uint32_t last[2], first_form[2], older[2];
  } table[] = {
      {32,
       "\x12\x34\x56\x78\xFF\x01\x80\xFE"s,
       "\1\2\3\4\5\6\7\x08"s,
       {0x12785634, 0xFFFE8001},
       {0x78563412, 0xFE8001FF},
       {0x09345678, 0x7F0180FE}},
      {24,
       "\x12\x34\x56\xFF\x01\x80"s,
       "\1\2\3\4\5\6"s,
       {0xFF563412, 0xFF8001FF},
       {0x563412FF, 0x8001FFFF},
       {0x00123456, 0x00FF0180}},
      {8,
       "\x12\xFF"s,
       "\1\2"s,
       {0xFF121212, 0xFFFFFFFF},
       {0x121212FF, 0xFFFFFFFF},
       {0x00121212, 0x00FFFFFF}},
  };
  const uint32_t second_rows[3][3] = {{0x01040302, 0x04030201, 0x00020304},
                                      {0xFF030201, 0x030201FF, 0x00010203},
                                      {0xFF010101, 0x010101FF, 0x00010101}};
  const bool is_older = fake_pictures::next().kind == 10;
  for (size_t row = 0; row < 3; ++row) {
    for (const CGImageAlphaInfo layout : {1u, 2u, 3u, 4u, 5u, 6u}) {
      SCOPED_TRACE(std::to_string(table[row].depth) + " in layout " + std::to_string(layout));
      set_pixels(table[row].depth, table[row].first, table[row].second);
      fake_pictures::next().context.alpha_info = layout;
      REALpictureStruct* const picture = krz::REALBuildPictureFromGWorld(some_world(), false);
      ASSERT_NE(picture, nullptr);
      const fake_pictures::Picture& made = fake_pictures::of(picture);
      const auto& expected = is_older     ? table[row].older
                             : layout % 2 ? table[row].last
                                          : table[row].first_form;
      EXPECT_EQ(made.word(0, 0), expected[0]);
      EXPECT_EQ(made.word(1, 0), expected[1]);
      EXPECT_EQ(made.word(0, 1), second_rows[row][is_older ? 2 : layout % 2 ? 0 : 1]);
      for (const int32_t y : {0, 1}) EXPECT_EQ(made.word(2, y), 0xEEEEEEEE) << "behind the row";
      EXPECT_EQ(fake_host::locks_of(as_object(picture)), 1);
      EXPECT_EQ(made.locks, 0);
      fake_host::unlock(as_object(picture));
      EXPECT_EQ(drawn.calls, (Calls{"lock", "unlock"})) << "kept, as it was not to be disposed";
      drawn.calls.clear();
    }
  }
  EXPECT_EQ(std::count(host().calls.begin(), host().calls.end(), "new picture of depth 32"), 18);
  EXPECT_EQ(krz::IsConsole, is_older);
  EXPECT_EQ(krz::IsDesktop, !is_older);
}
TEST_F(Pictures, AreBuiltByTheTable) { IN_FRESH_PROCESS(builds_pictures_by_the_table()); }
TEST_F(Pictures, AreBuiltByTheTableInOlderBuffers) {
  IN_FRESH_PROCESS({
    become_console_host();
    fake_pictures::next().kind = 10;
    builds_pictures_by_the_table();
  });
}

void disposes_the_world_whatever_comes_of_it() {
  provide_drawing();
  const struct {
    const char* what;
    std::function<void()> break_it;
    Calls calls;
  } faults[] = {
      {"depth 16", [] { drawn.depth = 16; }, {"dispose"}},
      {"depth 1", [] { drawn.depth = 1; }, {"dispose"}},
      {"no width", [] { drawn.bounds.right = drawn.bounds.left; }, {"dispose"}},
      {"no height", [] { drawn.bounds.bottom = drawn.bounds.top; }, {"dispose"}},
      {"pixels that cannot be locked", [] { drawn.locks = false; }, {"lock", "dispose"}},
      {"no pixels", [] { drawn.base = nullptr; }, {"lock", "unlock", "dispose"}},
      {"too wide",
       [] {
         drawn.bounds = {0, -1, 1, 32767};
       },
       {"lock", "unlock", "dispose"}},
      {"a host that makes none",
       [] { host().makes_pictures = false; },
       {"lock", "unlock", "dispose"}},
      {"nothing", [] { host().makes_pictures = true; }, {"lock", "unlock", "dispose"}},
  };
  for (const auto& fault : faults) {
    SCOPED_TRACE(fault.what);
    drawn = World();
    set_pixels(32, "12345678", "12345678");
    fault.break_it();
    REALpictureStruct* const picture = krz::REALBuildPictureFromGWorldKRZ(some_world(), true);
    EXPECT_EQ(picture != nullptr, fault.what == std::string("nothing"));
    EXPECT_EQ(drawn.calls, fault.calls);
    if (picture) fake_host::unlock(as_object(picture));
  }
  EXPECT_EQ(krz::REALBuildPictureFromGWorldKRZ(nullptr, true), nullptr);
  EXPECT_EQ(fake_host::live_objects(), 0);
  krz::PictureWriter writer;
  for (const int32_t size : {0, -1, 32768}) {
    EXPECT_FALSE(writer.NewPictureWriter(size, 10)) << size;
    EXPECT_FALSE(writer.NewPictureWriter(10, size)) << size;
  }
  EXPECT_EQ(writer.RenderPictureWriter(), nullptr);
  EXPECT_TRUE(writer.NewPictureWriter(32767, 1));
  EXPECT_TRUE(writer.NewPictureWriter(1, 32767)) << "the first picture is let go";
  EXPECT_EQ(fake_host::live_objects(), 1);
}
TEST_F(Pictures, DisposeTheWorldWhateverComesOfIt) {
  IN_FRESH_PROCESS(disposes_the_world_whatever_comes_of_it());
}

void attaches_to_what_it_knows() {
  const struct {
    const char* what;
    bool has_alpha;
    CGImageAlphaInfo info;
    bool attaches;
    std::function<void(fake_pictures::Picture&)> change;
  } pictures[] = {
      {"premultiplied last", true, 1, true, {}},
      {"premultiplied first", true, 2, true, {}},
      {"plain alpha", true, 3, false, {}},
      {"skipped", true, 6, false, {}},
      {"no alpha, none", false, 0, false, {}},
      {"no alpha, skipped", false, 6, true, {}},
      {"alpha only", false, 7, false, {}},
      {"only the low bits count", false, 8 + 5, true, {}},
      {"16 bits", false, 6, false, [](auto& one) { one.context.bits_per_pixel = 16; }},
      {"no pixels", false, 6, false, [](auto& one) { one.context.data = nullptr; }},
      {"no context", false, 6, false, [](auto& one) { one.has_no_data = true; }},
      {"another kind", false, 6, false, [](auto& one) { one.stated_kind = 10; }},
  };
  for (const auto& each : pictures) {
    SCOPED_TRACE(each.what);
    REALpictureStruct* const picture = fake_pictures::make(3, 2);
    fake_pictures::Picture& inside = fake_pictures::of(picture);
    inside.has_alpha = each.has_alpha;
    inside.context.alpha_info = each.info;
    if (each.change) each.change(inside);
    {
      krz::PictureEditor editor;
      EXPECT_EQ(editor.GetPictureEditor(picture, false, false), each.attaches);
      EXPECT_EQ(inside.locks, each.attaches ? 1 : 0);
      EXPECT_EQ(fake_host::locks_of(as_object(picture)), each.attaches ? 2 : 1);
      if (each.attaches) {
        EXPECT_EQ(editor.width(), 3);
        EXPECT_EQ(editor.layout(), static_cast<int32_t>(each.info & 7));
        uint8_t* const first = editor.row();
        editor.AddPixelRow();
        EXPECT_EQ(editor.row(), first + (3 + fake_pictures::kSpare) * 4);
        editor.AddPixelRow();
        EXPECT_EQ(editor.row(), first) << "behind the last row";
        EXPECT_FALSE(editor.GetPictureEditor(nullptr, true, true)) << "lets go of the picture";
        EXPECT_EQ(editor.row(), nullptr);
      }
    }
    EXPECT_EQ(fake_host::locks_of(as_object(picture)), 1);
    fake_host::unlock(as_object(picture));
  }
  // The cached rendering is cleared on letting go of what was written, behind the description.
  REALpictureStruct* const picture = fake_pictures::make(1, 1);
  host().calls.clear();
  { EXPECT_TRUE(krz::PictureEditor().GetPictureEditor(picture, false, true)); }
  EXPECT_EQ(host().calls, (Calls{"lock picture as 8", "unlock picture", "clear cache"}));
  fake_host::unlock(as_object(picture));
}
TEST_F(Pictures, AttachToWhatTheyKnow) { IN_FRESH_PROCESS(attaches_to_what_it_knows()); }

void attaches_to_older_buffers() {
  become_console_host();
  fake_pictures::next().kind = 10;
  const auto attaches = [](auto change) {
    REALpictureStruct* const picture = fake_pictures::make(2, 2);
    change(fake_pictures::of(picture));
    bool attached = false;
    {
      krz::PictureEditor editor;
      attached = editor.GetPictureEditor(picture, true, false);
    }
    fake_host::unlock(as_object(picture));
    return attached;
  };
  EXPECT_TRUE(attaches([](auto&) {}));
  EXPECT_FALSE(attaches([](auto& one) { one.buffer.has_alpha = 1; }));
  EXPECT_TRUE(attaches([](auto& one) { one.buffer.has_alpha = one.has_alpha = 1; }));
  EXPECT_FALSE(attaches([](auto& one) { one.buffer.rows = nullptr; }));
  EXPECT_FALSE(attaches([](auto& one) { one.has_no_data = true; }));
  EXPECT_FALSE(attaches([](auto& one) { one.stated_kind = 8; }));
  EXPECT_TRUE(std::find(host().calls.begin(), host().calls.end(), "lock picture as 8") ==
              host().calls.end());
}
TEST_F(Pictures, AttachToOlderBuffers) { IN_FRESH_PROCESS(attaches_to_older_buffers()); }

void edits_a_copy_where_it_may() {
  // This one cannot be described as a context; its copies can.
  REALpictureStruct* const picture = fake_pictures::make(4, 3);
  fake_pictures::of(picture).kind = 0;
  {
    krz::PictureEditor editor;
    EXPECT_FALSE(editor.GetPictureEditor(picture, false, false));
    EXPECT_FALSE(editor.GetPictureEditor(picture, true, true));
    EXPECT_EQ(fake_host::live_objects(), 1);
    EXPECT_TRUE(editor.GetPictureEditor(picture, true, false));
    EXPECT_EQ(editor.width(), 4);
    EXPECT_EQ(fake_host::live_objects(), 2) << "the copy, locked by the editor alone";
    fake_pictures::of(picture).has_alpha = true;
    EXPECT_FALSE(editor.GetPictureEditor(picture, true, false));
    fake_pictures::of(picture).has_alpha = false;
  }
  EXPECT_EQ(fake_host::live_objects(), 1);
  // A host that never describes pictures is not asked for ever.
  fake_pictures::next().kind = 0;
  krz::PictureEditor editor;
  EXPECT_FALSE(editor.GetPictureEditor(picture, true, false));
  fake_host::unlock(as_object(picture));
}
TEST_F(Pictures, AreEditedInACopy) { IN_FRESH_PROCESS(edits_a_copy_where_it_may()); }

Calls drawings;
void draw_picture(REALobject, REALpictureStruct*, int32_t x, int32_t y, int32_t w, int32_t h,
                  int32_t sx, int32_t sy, int32_t sw, int32_t sh) {
  std::string all;
  for (const int32_t each : {x, y, w, h, sx, sy, sw, sh}) all += std::to_string(each) + " ";
  drawings.push_back(all);
}

void are_cloned_and_copied() {
  EXPECT_EQ(krz::ClonePicture(nullptr), nullptr);
  EXPECT_EQ(krz::GetPictureWidth(nullptr), 0);
  host().draw_picture = reinterpret_cast<REALfunction>(&draw_picture);
  REALpictureStruct* const picture = fake_pictures::make(5, 7);
  EXPECT_EQ(krz::GetPictureHeight(picture), 7);
  REALpictureStruct* clone = krz::ClonePicture(picture);
  EXPECT_EQ(drawings, (Calls{"0 0 5 7 0 0 5 7 "}));
  EXPECT_EQ(
      host().calls.back(),
      "DrawPicture(Image as Picture, x as Integer, y as Integer, w as Integer, h as Integer, "
      "sx as Integer = 0, sy as Integer = 0, sw as Integer = -10000, sh as Integer = -10000)");
  EXPECT_EQ(fake_host::live_objects(), 2) << "the graphics are given back";
  fake_host::unlock(as_object(clone));
  EXPECT_FALSE(krz::GraphicsDrawPicture(nullptr, picture, picture, 0, 0, 5, 7, 0, 0, 5, 7));
  fake_host::unlock(as_object(picture));

  // Without the method rows are copied, between older buffers of one size and as a whole.
  host().draw_picture = nullptr;
  fake_pictures::next().kind = 10;
  REALpictureStruct* const source = fake_pictures::make(2, 2);
  fake_pictures::of(source).words = {1, 2, 9, 9, 3, 4, 9, 9};
  fake_pictures::of(source).rows = {&fake_pictures::of(source).words[0],
                                    &fake_pictures::of(source).words[4]};
  fake_pictures::of(source).buffer.rows = fake_pictures::of(source).rows.data();
  host().calls.clear();
  clone = krz::ClonePicture(source);
  EXPECT_EQ(fake_pictures::of(clone).word(1, 0), 2u);
  EXPECT_EQ(fake_pictures::of(clone).word(0, 1), 3u);
  EXPECT_EQ(fake_pictures::of(clone).word(2, 1), 0xEEEEEEEE);
  EXPECT_EQ(host().calls.back(), "clear cache");
  EXPECT_EQ(fake_host::times_asked("RuntimeGraphicsDrawPicture"), 0);
  host().version = krz::rbversion = 2011;
  REALpictureStruct* const larger = krz::ClonePicture(source);
  EXPECT_EQ(fake_host::times_asked("RuntimeGraphicsDrawPicture"), 1);
  host().version = krz::rbversion = 2015;
  fake_host::unlock(as_object(larger));
  const auto copies = [&](int32_t x, int32_t sy, int32_t sw) {
    return krz::OwnCopy(clone, source, x, 0, 2, 2, 0, sy, sw, 2);
  };
  EXPECT_TRUE(copies(0, 0, 2));
  EXPECT_FALSE(copies(1, 0, 2));
  EXPECT_FALSE(copies(0, 1, 2));
  EXPECT_FALSE(copies(0, 0, -10000));
  fake_pictures::of(source).buffer.has_alpha = 1;
  EXPECT_FALSE(copies(0, 0, 2));
  fake_pictures::of(source).buffer.has_alpha = 0;
  fake_pictures::of(source).height = 1;
  EXPECT_FALSE(copies(0, 0, 2));
  fake_pictures::of(source).kind = 8;
  EXPECT_FALSE(copies(0, 0, 2));
  fake_host::unlock(as_object(clone));
  fake_host::unlock(as_object(source));
  EXPECT_EQ(fake_host::live_objects(), 0);
}
TEST_F(Pictures, AreClonedAndCopied) { IN_FRESH_PROCESS(are_cloned_and_copied()); }

void are_drawn_into_the_port() {
  provide_drawing();
  drawn.bounds = {0, 0, 100, 200};
  toolbox().answers["CGBitmapContextCreateImage"] = 88;
  REALpictureStruct* const picture = fake_pictures::make(30, 20);
  const Rect rect = {10, 20, 50, 80};
  const auto draw = [&](const Rect* into) {
    toolbox().calls.clear();
    drawn.calls.clear();
    krz::REALDrawPicturePrimitive(picture, into, 7);
    std::erase_if(toolbox().calls, [](auto& call) {
      return call.starts_with("find ") || call.starts_with("append ") || call.starts_with("FSFind");
    });
    EXPECT_EQ(fake_pictures::of(picture).locks, 0);
  };
  draw(&rect);
  // Rows run downward in the port and upward in the context: 50 from below.
  EXPECT_EQ(toolbox().calls,
            (Calls{"CGBitmapContextCreateImage()", "QDBeginCGContext(400)",
                   "CGContextDrawImage(77, 20, 50, 60, 40, 88)", "CGContextFlush(77)",
                   "QDEndCGContext(400)", "CGImageRelease(88)"}));
  EXPECT_EQ(drawn.calls, (Calls{"set port"}));

  toolbox().answers["undrawable port"] = 400;
  drawn.bounds = {0, 0, 20, 30};
  draw(&rect);
  EXPECT_EQ(toolbox().calls,
            (Calls{"CGBitmapContextCreateImage()", "QDBeginCGContext(400)", "QDBeginCGContext(500)",
                   "CGContextDrawImage(77, 0, 0, 30, 20, 88)", "CGContextFlush(77)",
                   "QDEndCGContext(500)", "CGImageRelease(88)"}));
  EXPECT_EQ(drawn.calls, (Calls{"new 24: 0 0 20 30", "set world", "set port",
                                "copy 0 0 20 30 to 10 20 50 80", "dispose", "set port"}));
  drawn.new_error = memFullErr;
  draw(&rect);
  EXPECT_EQ(toolbox().calls.back(), "CGImageRelease(88)");
  EXPECT_EQ(drawn.calls.back(), "set port");
  draw(nullptr);
  EXPECT_EQ(drawn.calls, (Calls{"set port"}));
  fake_pictures::of(picture).kind = 10;
  draw(&rect);
  EXPECT_EQ(toolbox().calls, Calls{});
  fake_host::unlock(as_object(picture));
}
TEST_F(Pictures, AreDrawnIntoThePort) { IN_FRESH_PROCESS(are_drawn_into_the_port()); }

struct TestTrack {
  TestTrack() {
    object = fake_host::make_object("QTTrackKRZ");
    fake_host::field<int32_t>(object, "QTTrackKRZ", "TrackHandle") = 300;
  }
  ~TestTrack() { fake_host::unlock(object); }
  int32_t& lasterror() { return fake_host::field<int32_t>(object, "QTTrackKRZ", "Lasterror"); }
  void clear() { fake_host::field<int32_t>(object, "QTTrackKRZ", "TrackHandle") = 0; }
  REALpictureStruct* mask() const {
    return fake_host::function<REALpictureStruct*(REALobject)>(entry().function)(object);
  }
  void set_mask(REALpictureStruct* picture) const {
    fake_host::function<void(REALobject, REALpictureStruct*)>(entry().setter)(object, picture);
  }
  static const MethodEntry& entry() {
    return fake_host::method("QTTrackKRZ", "TrackClipMask as picture");
  }
  REALobject object;
};

void show_clip_regions() {
  TestTrack track;
  toolbox().answers["GetTrackClipRgn"] = 600;
  toolbox().answers["GetMoviesError"] = -2009;
  EXPECT_EQ(track.mask(), nullptr) << "without drawing there is no picture";
  EXPECT_EQ(track.lasterror(), -2009);
  toolbox().answers["GetMoviesError"] = noErr;
  track.set_mask(nullptr);
  EXPECT_TRUE(called("SetTrackClipRgn(300, 0)"));

  provide_drawing();
  set_pixels(32, "12345678", "12345678");
  const REALobject mask = as_object(track.mask());
  ASSERT_NE(mask, nullptr);
  EXPECT_EQ(track.lasterror(), 0);
  fake_host::unlock(mask);
  EXPECT_EQ(drawn.calls[0].substr(0, 8), "new 32: ");
  const std::string rect = drawn.calls[0].substr(8);
  EXPECT_EQ(drawn.calls, (Calls{"new 32: " + rect, "set world", "color 65535",
                                "fill " + rect + " with 255", "color 0", "fill region 600 with 255",
                                "lock", "unlock", "dispose", "dispose region 600", "set port"}));
  drawn.calls.clear();
  drawn.new_error = memFullErr;
  EXPECT_EQ(track.mask(), nullptr);
  EXPECT_EQ(drawn.calls.back(), "set port");
  EXPECT_EQ(drawn.calls[1], "dispose region 600");
  toolbox().answers["GetTrackClipRgn"] = 0;
  drawn.calls.clear();
  EXPECT_EQ(track.mask(), nullptr);
  EXPECT_EQ(drawn.calls, (Calls{"set port"}));
  toolbox().calls.clear();
  track.clear();
  EXPECT_EQ(track.mask(), nullptr);
  EXPECT_EQ(track.lasterror(), -1);
  EXPECT_FALSE(called("GetTrackClipRgn(0)"));
}
TEST_F(Pictures, ShowClipRegions) { IN_FRESH_PROCESS(show_clip_regions()); }

void become_clip_regions() {
  provide_drawing();
  toolbox().answers["CGBitmapContextCreateImage"] = 88;
  toolbox().answers["GetMoviesError"] = noErr;
  TestTrack track;
  REALpictureStruct* const picture = fake_pictures::make(30, 20);
  drawn.bounds = {0, 0, 20, 30};
  track.set_mask(picture);
  EXPECT_TRUE(called("SetTrackClipRgn(300, 600)"));
  EXPECT_TRUE(called("CGContextDrawImage(77, 0, 0, 30, 20, 88)"));
  EXPECT_EQ(track.lasterror(), 0);
  const Calls whole = {"new 32: 0 0 20 30",
                       "set world",
                       "set port",
                       "update 1: 0 0 20 30 flags 1",
                       "lock",
                       "new region",
                       "unlock",
                       "dispose",
                       "set port",
                       "dispose region 600",
                       "set port"};
  EXPECT_EQ(drawn.calls, whole);
  // What cannot be made a region clears the clip.
  const std::pair<const char*, std::function<void()>> faults[] = {
      {"no world", [] { drawn.new_error = memFullErr; }},
      {"no pixels", [] { drawn.locks = false; }},
      {"too many edges", [] { drawn.region_error = rgnTooBigErr; }},
  };
  for (const auto& [what, break_it] : faults) {
    SCOPED_TRACE(what);
    drawn = World();
    drawn.bounds = {0, 0, 20, 30};
    break_it();
    toolbox().calls.clear();
    track.set_mask(picture);
    EXPECT_TRUE(called("SetTrackClipRgn(300, 0)"));
    EXPECT_EQ(drawn.calls.back(), "set port");
    const auto count = [&](const char* call) {
      return std::count(drawn.calls.begin(), drawn.calls.end(), call);
    };
    EXPECT_EQ(count("new region"), count("dispose region 600"));
    EXPECT_EQ(count("dispose"), drawn.new_error == noErr ? 1 : 0);
  }
  EXPECT_EQ(fake_pictures::of(picture).locks, 0);
  toolbox().calls.clear();
  track.clear();
  track.set_mask(picture);
  EXPECT_EQ(track.lasterror(), -1);
  EXPECT_FALSE(called("SetTrackClipRgn(0, 600)"));
  fake_host::unlock(as_object(picture));
}
TEST_F(Pictures, BecomeClipRegions) { IN_FRESH_PROCESS(become_clip_regions()); }

}  // namespace
