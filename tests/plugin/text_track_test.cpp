// Text tracks as the module asks the toolbox for them, call by call.
#include "plugin/text/text_track.h"

#include "plugin/host/encodings.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::field;
using fake_toolbox::toolbox;
using Calls = std::vector<std::string>;
using namespace std::string_literals;

constexpr char kChapter[] = "QTChapterDataKRZ";
constexpr char kChapterTrack[] = "QTChapterTrackKRZ";
constexpr OSType kVideo = VideoMediaType;
const std::string kVideoText = std::to_string(kVideo);
const std::string kChap = std::to_string(kTrackReferenceChapterList);
const std::string kTextType = std::to_string(TextMediaType);

class TextTracks : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    movie_ = fake_host::make_movie(3);
    auto& answers = toolbox().answers;
    answers["GetMovieIndTrackType"] = 7;
    answers["width"] = 320 << 16;
    answers["height"] = (240 << 16) + 0x8000;
    answers["movie scale"] = 600;
    answers["media scale"] = 300;
    answers["GetTrackMedia"] = 8;
    answers["NewMovieTrack"] = 20;
    answers["NewTrackMedia"] = 21;
    answers["GetMediaHandler"] = 22;
    answers["GetMediaDuration"] = 450;
  }
  void TearDown() override {
    for (const REALobject chapter : chapters_) {
      if (chapter) fake_host::unlock(chapter);
    }
    fake_host::unlock(fake_host::as_object(movie_));
    PluginTest::TearDown();
  }

  REALobject add_chapter(const std::string& text, int32_t duration) {
    const REALobject chapter = fake_host::make_object(kChapter);
    field<REALstring>(chapter, kChapter, "Text") = fake_host::make_string(text, krz::kUTF8);
    field<int32_t>(chapter, kChapter, "FrameDuration") = duration;
    chapters_.push_back(chapter);
    return chapter;
  }

  /// "AddTextTrackKRZ"; the handle of the new track, -1 for nil.
  int32_t add_track(bool is_chapter_track = true) {
    toolbox().calls.clear();
    const REALstring type = fake_host::make_string("vide", krz::kASCII);
    const MethodEntry& row = fake_host::method(
        "movie",
        "AddTextTrackKRZ(chapters() as QTChapterDataKRZ, type as string, isChapterTrack as "
        "boolean) as QTChapterTrackKRZ");
    using Add = REALobject(REALmovieStruct*, REALobjectArrayStruct*, REALstring, Boolean);
    const REALobject track = fake_host::function<Add>(row.function)(
        movie_, fake_host::as_array(chapters_), type, is_chapter_track);
    fake_host::unlock(type);
    if (!track) return -1;
    EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie_)), 2);
    EXPECT_EQ(field<int32_t>(track, "QTTrackKRZ", "Lasterror"), 0);
    const auto handle = field<int32_t>(track, "QTTrackKRZ", "TrackHandle");
    fake_host::unlock(track);
    return handle;
  }

  static testing::AssertionResult called(const std::string& call) {
    const Calls& calls = toolbox().calls;
    if (std::find(calls.begin(), calls.end(), call) != calls.end()) {
      return testing::AssertionSuccess() << call << " was called";
    }
    return testing::AssertionFailure() << call << " is not among " << testing::PrintToString(calls);
  }

  REALmovieStruct* movie_ = nullptr;
  std::vector<REALobject> chapters_;
};

TEST_F(TextTracks, AreBuiltBelowTheTrackThatTheyBelongTo) {
  add_chapter("Hi", 600);
  EXPECT_EQ(add_track(), 20);
  const Calls expected = {
      "GetMovieIndTrackType(3, 1, " + kVideoText + ", 1)",
      "GetTrackDimensions(7)",
      "GetTrackMedia(7)",
      "NewMovieTrack(3, 20971520, 1310720, 0)",
      "NewTrackMedia(20, " + kTextType + ", 300, 0, 0)",
      "GetMediaHandler(21)",
      "GetTrackMatrix(20)",
      "SetTrackMatrix(20)",
      "SetTrackEnabled(20, 1)",
      "BeginMediaEdits(21)",
      "TextMediaSetTextSampleData(22, 256, " + std::to_string(sampleEncodingType) + ")",
      "TextMediaAddTextSample(22, 6, 0, 0, 0, 1, 4, 0, 0, 0, 300)",
      "EndMediaEdits(21)",
      "GetMediaDuration(21)",
      "InsertMediaIntoTrack(20, 0, 0, 450, 65536)",
      "AddTrackReference(7, 20, " + kChap + ")",
  };
  EXPECT_EQ(toolbox().calls, expected);
  EXPECT_EQ(toolbox().texts, Calls{"\xFE\xFF\0H\0i"s});
  EXPECT_EQ(toolbox().looks, Calls{"text nil, back nil, highlight nil, box 0 0 241 320"});
  EXPECT_EQ(toolbox().matrix.matrix[2][1], (240 << 16) + 0x8000);
  add_track(false);
  EXPECT_FALSE(called("AddTrackReference(7, 20, " + kChap + ")"));
}

TEST_F(TextTracks, HandOverEveryFieldOfAChapter) {
  const REALobject chapter = add_chapter("\xC3\xA9\xC3\xBC", 65536);
  const auto set = [&](const char* name, int32_t value) {
    field<int32_t>(chapter, kChapter, name) = value;
  };
  // What has 16 bits is cut to them.
  set("FontNumber", 0x10005);
  set("FontSize", -1);
  set("TextJustification", 0x1FFFE);
  set("DisplayFlags", 65536 + 2048);
  set("ScrollDelay", 30);
  set("HighLightStart", 1);
  set("HighLightEnd", 0x18000);
  set("Left", 10);
  set("Top", 32767);
  set("Width", 100);
  set("Height", 1);
  set("TextColor", 0x00FF8000);
  set("BackColor", 0x00010203);
  set("HighLightColor", 0x00FFFFFF);
  for (const char* name :
       {"bold", "underline", "shadow", "extend", "HasTextColor", "HasHighLightColor"})
    field<Boolean>(chapter, kChapter, name) = 0x80;  // any byte but zero is true
  add_track();
  EXPECT_TRUE(called("TextMediaAddTextSample(22, 6, 5, -1, 85, -2, 67584, 30, 1, -32768, 32768)"));
  EXPECT_EQ(
      toolbox().looks,
      Calls{"text 65535/32896/0, back nil, highlight 65535/65535/65535, box 32767 10 -32768 110"});
  EXPECT_EQ(toolbox().texts, Calls{"\xFE\xFF\0\xE9\0\xFC"s});
}

TEST_F(TextTracks, LeaveOutWhatIsNoChapter) {
  add_chapter("one", 600);
  chapters_.push_back(nullptr);
  add_chapter("", 600);
  EXPECT_EQ(add_track(), 20);
  EXPECT_EQ(toolbox().texts.size(), 2u);
  EXPECT_EQ(toolbox().texts.back(), "\xFE\xFF");

  // A count of more than 16 bits keeps its low ones; a negative one is none.
  toolbox().texts.clear();
  for (const int32_t bound : {-2, 32767, 65535}) {
    fake_host::host().claimed_upper_bound = bound;
    EXPECT_EQ(add_track(), 20);
    EXPECT_EQ(toolbox().texts.size(), 0u) << bound;
  }
}

TEST_F(TextTracks, AreAnsweredAsFarAsTheyCame) {
  add_chapter("one", 600);
  const struct {
    const char* call;
    int64_t answer;
    const char* not_called;
    int32_t handle;
  } cases[] = {{"GetMovieIndTrackType", 0, "GetTrackDimensions(7)", -1},
               {"NewMovieTrack", 0, "GetMediaHandler(21)", -1},
               {"NewTrackMedia", 0, "GetMediaHandler(0)", 20},
               {"GetMediaHandler", 0, "SetTrackEnabled(20, 1)", 20},
               {"EndMediaEdits", -36, "GetMediaDuration(21)", 20},
               {"InsertMediaIntoTrack", -2014, "AddTrackReference(7, 20, ", 20}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.call);
    const int64_t right = toolbox().answers[one.call];
    toolbox().answers[one.call] = one.answer;
    EXPECT_EQ(add_track(), one.handle);
    for (const std::string& call : toolbox().calls)
      EXPECT_NE(call.find(one.not_called), 0u) << call;
    toolbox().answers[one.call] = right;
  }
  // Edits that cannot begin add nothing, and are ended all the same.
  toolbox().answers["BeginMediaEdits"] = wrPermErr;
  toolbox().texts.clear();
  EXPECT_EQ(add_track(), 20);
  EXPECT_EQ(toolbox().texts, Calls{});
  EXPECT_TRUE(called("EndMediaEdits(21)"));
  EXPECT_TRUE(called("AddTrackReference(7, 20, " + kChap + ")"));
}

TEST_F(TextTracks, AreLinkedToTheFirstEnabledTrackOfAType) {
  const auto track = reinterpret_cast<Track>(uintptr_t{20});
  const auto movie = reinterpret_cast<Movie>(uintptr_t{3});
  toolbox().answers["AddTrackReference"] = -2030;
  EXPECT_EQ(krz::QTText_SetTextTrackAsChapterTrack(movie, track, kVideo, true), -2030);
  EXPECT_TRUE(called("GetMovieIndTrackType(3, 1, " + kVideoText + ", 5)"));
  krz::QTText_SetTextTrackAsChapterTrack(movie, track, kVideo, false);
  EXPECT_EQ(toolbox().calls.back(), "DeleteTrackReference(7, " + kChap + ", 1)");
  EXPECT_EQ(krz::QTText_SetTextTrackAsChapterTrack(nullptr, track, kVideo, true), paramErr);
  EXPECT_EQ(krz::QTText_SetTextTrackAsChapterTrack(movie, nullptr, kVideo, true), paramErr);
  toolbox().answers["GetMovieIndTrackType"] = 0;
  EXPECT_EQ(krz::QTText_SetTextTrackAsChapterTrack(movie, track, kVideo, true), paramErr);
}

TEST_F(TextTracks, AreRemovedWithTheReferencesToThem) {
  const auto movie = reinterpret_cast<Movie>(uintptr_t{3});
  auto& answers = toolbox().answers;
  answers["GetTrackMovie"] = 3;
  answers["GetMovieTrackCount"] = 1;
  answers["GetMovieIndTrack"] = 9;
  answers["GetNextTrackReferenceType"] = kTrackReferenceChapterList;
  answers["GetTrackReferenceCount"] = 2;
  answers["GetTrackReference"] = 7;
  EXPECT_EQ(krz::QTText_RemoveIndTextTrack(movie, 4), noErr);
  EXPECT_EQ(toolbox().calls.front(), "GetMovieIndTrackType(3, 4, " + kTextType + ", 1)");
  // Counted down, so that the lower ones stay where they are.
  EXPECT_TRUE(called("DeleteTrackReference(9, " + kChap + ", 2)"));
  EXPECT_TRUE(called("DeleteTrackReference(9, " + kChap + ", 1)"));
  EXPECT_EQ(toolbox().calls.back(), "DisposeMovieTrack(7)");
  EXPECT_EQ(krz::QTText_RemoveIndTextTrack(movie, 4), badTrackIndex);
  EXPECT_EQ(krz::QTText_RemoveIndTextTrack(movie, 0), badTrackIndex);
  answers["GetMovieIndTrackType"] = 7;
  EXPECT_EQ(krz::QTText_RemoveIndTextTrack(movie, 0), noErr);
  answers["GetTrackMovie"] = 0;
  EXPECT_EQ(krz::QTUtils_DeleteAllReferencesToTrack(reinterpret_cast<Track>(uintptr_t{7})),
            paramErr);
}

class ChapterTracks : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    object_ = fake_host::make_object(kChapterTrack);
    set_track(7);
    lasterror() = 55;
    toolbox().sample_times = {0, 600, 1200};
  }
  void TearDown() override {
    fake_host::unlock(object_);
    PluginTest::TearDown();
  }
  void set_track(int32_t track) { field<int32_t>(object_, "QTTrackKRZ", "TrackHandle") = track; }
  int32_t& lasterror() { return field<int32_t>(object_, "QTTrackKRZ", "Lasterror"); }

  template <class Result = int32_t, class... Arguments>
  Result call(const char* declaration, Arguments... arguments) {
    const MethodEntry& row = fake_host::method(kChapterTrack, declaration);
    return fake_host::function<Result(REALobject, Arguments...)>(row.function)(object_,
                                                                               arguments...);
  }

  /// What "ChapterText" makes of a sample; "nil" for nil.
  std::string text_of(const std::string& sample) {
    toolbox().sample = sample;
    const auto text = call<REALstring>("ChapterText(time as integer) as string", 100);
    if (!text) return "nil";
    const std::string result =
        fake_host::bytes_of(text) + " in " + std::to_string(fake_host::encoding_of(text));
    fake_host::unlock(text);
    return result;
  }

  REALobject object_ = nullptr;
};

TEST_F(ChapterTracks, CountAndFindTheirChapters) {
  EXPECT_EQ(call("ChapterCount as integer"), 3);
  for (const auto& [index, time] : std::map<int32_t, int32_t>{
           {-1, -1}, {0, -1}, {1, 0}, {3, 1200}, {4, -1}, {5, -1}, {0x7FFFFFFF, -1}}) {
    EXPECT_EQ(call("GetChapterTime(index as integer) as integer", index), time) << index;
  }
  EXPECT_EQ(lasterror(), 55) << "these leave the error alone";

  toolbox().error = -2011;
  EXPECT_EQ(call("GetFirstChapterTime as integer"), 0);
  EXPECT_EQ(lasterror(), -2011);
  EXPECT_EQ(call("GetNextChapterTime(time as integer) as integer", 600), 1200);
  toolbox().error = noErr;
  EXPECT_EQ(call("GetNextChapterTime(time as integer) as integer", 1200), -1);
  EXPECT_EQ(lasterror(), 0);
}

TEST_F(ChapterTracks, WithoutATrackHaveNothing) {
  set_track(0);
  EXPECT_EQ(call("ChapterCount as integer"), 0);
  EXPECT_EQ(call("GetChapterTime(index as integer) as integer", 1), 0);
  EXPECT_EQ(lasterror(), 55);
  EXPECT_EQ(call("GetFirstChapterTime as integer"), 0);
  EXPECT_EQ(lasterror(), -1);
  EXPECT_EQ(call("GetNextChapterTime(time as integer) as integer", 9), 0);
  EXPECT_EQ(toolbox().calls, Calls{});
  toolbox().answers["GetMediaSample"] = invalidMedia;
  EXPECT_EQ(text_of(""), "nil");
  EXPECT_EQ(lasterror(), invalidMedia) << "the toolbox answers for the missing track";
  TimeValue time = 5;
  EXPECT_EQ(krz::QTText_GetFirstChapterTime(nullptr, &time), invalidTrack);
  EXPECT_EQ(time, -1);
  EXPECT_EQ(krz::QTText_GetNextChapterTime(nullptr, &time), invalidTrack);
}

TEST_F(ChapterTracks, ReadTextOfAllKinds) {
  toolbox().answers["TrackTimeToMediaTime"] = 33;
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
  for (const auto& one : cases) {
    SCOPED_TRACE(one.name);
    EXPECT_EQ(text_of(one.sample), one.text);
    EXPECT_EQ(lasterror(), 0);
  }
  // Counted as signed, but with the mark taken off in 16 bits.
  std::string longest = "\x80\0\xFE\xFF"s;
  for (int i = 0; i < 32766; i += 2) longest += "\0x"s;
  EXPECT_EQ(text_of(longest), std::string(16383, 'x') + " in 134217984");

  toolbox().answers["GetMediaSample"] = endOfDataReached;
  EXPECT_EQ(text_of("\0\2Hi"s), "nil");
  EXPECT_EQ(lasterror(), endOfDataReached);
}

TEST_F(ChapterTracks, AreKnownByTheReferencesOfOthers) {
  const auto track = reinterpret_cast<Track>(uintptr_t{7});
  const auto movie = reinterpret_cast<Movie>(uintptr_t{3});
  auto& answers = toolbox().answers;
  answers["GetTrackMovie"] = 3;
  answers["GetMovieTrackCount"] = 1;
  answers["GetMovieIndTrack"] = 9;
  answers["GetTrackReferenceCount"] = 1;
  answers["GetTrackReference"] = 7;
  EXPECT_TRUE(krz::QTText_IsChapterTrack(track));
  EXPECT_FALSE(krz::QTText_MovieHasAChapterTrack(movie)) << "a disabled track does not count";
  answers["GetTrackEnabled"] = 1;
  EXPECT_EQ(krz::QTText_GetChapterTrackForMovie(movie), track);
  EXPECT_TRUE(krz::QTText_TrackHasAChapterTrack(track));
  answers["GetMovieIndTrack"] = 7;
  EXPECT_FALSE(krz::QTText_IsChapterTrack(track)) << "not by its own";
  answers["GetTrackMovie"] = 0;
  EXPECT_FALSE(krz::QTText_IsChapterTrack(track));
  EXPECT_EQ(krz::MakeChapterTrackObject(track, nullptr), nullptr);
}

}  // namespace
