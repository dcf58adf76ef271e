// Text tracks where calls of the toolbox fail, values do not fit, and samples lie.
#include "plugin/text/text_track.h"

#include "plugin/host/encodings.h"
#include "plugin/host/instance_data.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::field;
using fake_toolbox::toolbox;
using namespace std::string_literals;

constexpr char kChapter[] = "QTChapterDataKRZ";

class TextTracks : public MovieTest {
 protected:
  void TearDown() override {
    for (const REALobject chapter : chapters_) fake_host::unlock(chapter);
    MovieTest::TearDown();
  }

  REALobject add_chapter(const std::string& text, int32_t duration) {
    const REALobject chapter = fake_host::make_object(kChapter);
    field<REALstring>(chapter, kChapter, "Text") = fake_host::make_string(text, krz::kUTF8);
    field<int32_t>(chapter, kChapter, "FrameDuration") = duration;
    chapters_.push_back(chapter);
    return chapter;
  }

  /// "AddTextTrackKRZ": whether it answers a track.
  bool add_track() {
    const REALstring type = fake_host::make_string("vide", krz::kASCII);
    const auto track = call<REALobject>(
        movie_, "movie",
        "AddTextTrackKRZ(chapters() as QTChapterDataKRZ, type as string, isChapterTrack as "
        "boolean) as QTChapterTrackKRZ",
        fake_host::as_array(chapters_), type, Boolean{1});
    fake_host::unlock(type);
    if (!track) return false;
    EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie_)), 2);
    EXPECT_EQ(field<int32_t>(track, "QTTrackKRZ", "Lasterror"), 0);
    fake_host::unlock(track);
    return true;
  }

  std::vector<REALobject> chapters_;
};

TEST_F(TextTracks, CutWhatHas16BitsToThem) {
  const REALobject chapter = add_chapter("\xC3\xA9", 600);
  const std::pair<const char*, int32_t> values[] = {{"FontNumber", 0x10005},
                                                    {"FontSize", -1},
                                                    {"TextJustification", 0x1FFFE},
                                                    {"DisplayFlags", 65536 + 2048},
                                                    {"ScrollDelay", 30},
                                                    {"HighLightStart", 1},
                                                    {"HighLightEnd", 0x18000},
                                                    {"Left", 10},
                                                    {"Top", 32767},
                                                    {"Width", 100},
                                                    {"Height", 1},
                                                    {"TextColor", 0x00FF8000},
                                                    {"BackColor", 0x00010203},
                                                    {"HighLightColor", 0x00FFFFFF}};
  for (const auto& [name, value] : values) {
    field<int32_t>(chapter, kChapter, name) = value;
  }
  for (const char* name :
       {"bold", "underline", "shadow", "extend", "HasTextColor", "HasHighLightColor"})
    field<Boolean>(chapter, kChapter, name) = 0x80;  // any byte but zero is true
  add_track();
  EXPECT_TRUE(called("SetTrackEnabled("));
  EXPECT_TRUE(called("TextMediaAddTextSample(5, -1, 85, -2, 67584, 30, 1, -32768, 600)"));
  EXPECT_EQ(toolbox().look,
            "text 65535/32896/0, back nil, highlight 65535/65535/65535, box 32767 10 -32768 110");
}

TEST_F(TextTracks, CountAsFarAs16BitsGo) {
  add_chapter("one", 600);
  for (const int32_t bound : {-2, 32767, 65535}) {
    fake_host::host().claimed_upper_bound = bound;
    EXPECT_TRUE(add_track());
    EXPECT_FALSE(called("TextMediaAddTextSample")) << bound;
  }
}

TEST_F(TextTracks, AreAnsweredAsFarAsTheyCame) {
  add_chapter("one", 600);
  const struct {
    const char* call;
    int64_t answer;
    bool is_answered;
    const char* last;  // call
  } cases[] = {{"GetMovieIndTrackType", 0, false, "GetMovieIndTrackType"},
               {"NewMovieTrack", 0, false, "NewMovieTrack"},
               {"NewTrackMedia", 0, true, "NewTrackMedia"},
               {"GetMediaHandler", 0, true, "GetMediaHandler"},
               {"BeginMediaEdits", wrPermErr, true, "AddTrackReference"},
               {"EndMediaEdits", -36, true, "EndMediaEdits"},
               {"InsertMediaIntoTrack", -2014, true, "InsertMediaIntoTrack"}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.call);
    toolbox().answers = {{one.call, one.answer}};
    EXPECT_EQ(add_track(), one.is_answered);
    ASSERT_FALSE(toolbox().calls.empty());
    EXPECT_EQ(toolbox().calls.back().find(one.last), 0u) << toolbox().calls.back();
    // Edits that cannot begin add nothing, and are ended all the same.
    if (one.answer == wrPermErr) {
      EXPECT_FALSE(called("TextMediaAddTextSample"));
      EXPECT_TRUE(called("EndMediaEdits"));
    }
  }
}

TEST_F(TextTracks, OfNilAreErrors) {
  EXPECT_EQ(krz::QTText_SetTextTrackAsChapterTrack(nullptr, track(1), VideoMediaType, true),
            paramErr);
  EXPECT_EQ(krz::QTText_SetTextTrackAsChapterTrack(opened(), nullptr, VideoMediaType, true),
            paramErr);
  EXPECT_EQ(krz::QTUtils_DeleteAllReferencesToTrack(nullptr), paramErr);
  EXPECT_FALSE(krz::QTText_IsChapterTrack(nullptr));
  EXPECT_EQ(krz::MakeChapterTrackObject(track(1), nullptr), nullptr);
  TimeValue time = 5;
  EXPECT_EQ(krz::QTText_GetFirstChapterTime(nullptr, &time), invalidTrack);
  EXPECT_EQ(time, -1);
  EXPECT_EQ(krz::QTText_GetNextChapterTime(nullptr, &time), invalidTrack);
}

TEST_F(PluginTest, ChapterTextsAreReadFromSamplesOfAllKinds) {
  const REALobject track = fake_host::make_object("QTChapterTrackKRZ");
  /// What "ChapterText" makes of a sample; "nil" for nil.
  const auto text_of = [&](const std::string& sample) {
    toolbox().sample = sample;
    const auto text =
        call<REALstring>(track, "QTChapterTrackKRZ", "ChapterText(time as integer) as string", 100);
    EXPECT_EQ(field<int32_t>(track, "QTTrackKRZ", "Lasterror"), 0);
    if (!text) return "nil"s;
    const std::string result =
        fake_host::bytes_of(text) + " in " + std::to_string(fake_host::encoding_of(text));
    fake_host::unlock(text);
    return result;
  };
  const struct {
    const char* name;
    std::string sample, text;
  } cases[] = {
      {"marked", "\0\6\xFE\xFF\0H\0i"s, "Hi in 134217984"},
      {"with extensions behind it", "\0\6\xFE\xFF\0H\0i\0\0\0\x0C"s + "encd", "Hi in 134217984"},
      {"plain", "\0\2Hi"s, "Hi in 1536"},
      {"plain, not ASCII", "\0\2\xC3\xA9"s, "\xC3\xA9 in 1536"},
      {"only a mark", "\0\2\xFE\xFF"s, "nil"},
      {"mark with a shorter length", "\0\1\xFE\xFF\0H"s, "nil"},
      {"empty", "\0\0"s, "nil"},
      {"one byte", "\0"s, "nil"},
      {"length only", "\0\5"s, "nil"},
      {"lying length", "\0\x64Hi"s, "Hi in 1536"},
      {"lying length of marked text", "\0\x64\xFE\xFF\0H\0i"s, "Hi in 134217984"},
      {"negative length", "\x80\1Hi"s, "nil"},
  };
  for (const auto& one : cases) EXPECT_EQ(text_of(one.sample), one.text) << one.name;
  // Counted as signed, but with the mark taken off in 16 bits.
  std::string longest = "\x80\0\xFE\xFF"s;
  for (int i = 0; i < 32766; i += 2) longest += "\0x"s;
  EXPECT_EQ(text_of(longest), std::string(16383, 'x') + " in 134217984");
  fake_host::unlock(track);
}

}  // namespace
