// Timecode tracks as the module asks the toolbox for them, call by call.
#include <ApplicationServices/ApplicationServices.h>

#include <algorithm>
#include <cstring>

#include "plugin/host/encodings.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::field;
using fake_toolbox::toolbox;
using Calls = std::vector<std::string>;
using namespace std::string_literals;

constexpr char kParameters[] = "QTTimeCodeCreationParametersKRZ";
constexpr char kTimeCode[] = "QTTimeCodeKRZ";
constexpr char kTrack[] = "QTTrackKRZ";
const std::string kTmcd = std::to_string(TimeCodeMediaType);

class TimecodeTracks : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    movie_ = fake_host::make_movie(3);
    parameters_ = fake_host::make_object(kParameters);
    auto& answers = toolbox().answers;
    answers["GetMovieIndTrackType"] = 7;
    answers["width"] = 640 << 16;
    answers["height"] = 480 << 16;
    answers["movie scale"] = 600;
    answers["GetMovieDuration"] = 6000;
    answers["NewMovieTrack"] = 20;
    answers["NewTrackMedia"] = 21;
    answers["GetMediaHandler"] = 22;
    answers["NewUserData"] = 0;
    answers["source"] = 30;
    answers["frame"] = 0x01020304;
    answers["GetTrackMedia"] = 8;
    toolbox().display_options = {5, 2, 9, 0, {1, 2, 3}, {4, 5, 6}};
  }
  void TearDown() override {
    fake_host::unlock(parameters_);
    fake_host::unlock(fake_host::as_object(movie_));
    PluginTest::TearDown();
  }

  int32_t add() {
    toolbox().calls.clear();
    const MethodEntry& row = fake_host::method(
        "movie", "AddTimeCodeToMovieKRZ(parameters as QTTimeCodeCreationParametersKRZ) as integer");
    using Add = int32_t(REALmovieStruct*, REALobject);
    return fake_host::function<Add>(row.function)(movie_, parameters_);
  }
  template <class T>
  T& parameter(const char* name) {
    return field<T>(parameters_, kParameters, name);
  }
  /// Calls but those that look for a font.
  static Calls calls() {
    Calls list = toolbox().calls;
    std::erase_if(list, [](const std::string& call) { return call.starts_with("FSFindFolder"); });
    return list;
  }
  static bool called(const std::string& call) {
    return std::find(toolbox().calls.begin(), toolbox().calls.end(), call) != toolbox().calls.end();
  }

  REALmovieStruct* movie_ = nullptr;
  REALobject parameters_ = nullptr;
};

TEST_F(TimecodeTracks, AreBuiltBelowTheVideoStepByStep) {
  EXPECT_EQ(add(), 0);
  // Nobody measures fonts here: a line is two pixels high.
  Calls expected = {
      "GetMovieIndTrackType(3, 1, " + std::to_string(VideoMediaType) + ", 1)",
      "GetTrackDimensions(7)",
      "NewMovieTrack(3, 41943040, 131072, 0)",
      "NewTrackMedia(20, " + kTmcd + ", 600, 0, 0)",
      "GetMediaHandler(21)",
      "TCGetDisplayOptions(22)",
      "TCSetDisplayOptions(22)",
      "TCTimeCodeToString(22)",
      "SetTrackDimensions(20, 41943040, 131072)",
      "GetTrackMatrix(20)",
      "SetTrackMatrix(20)",
      "SetTrackEnabled(20, 0)",
      "TCSetTimeCodeFlags(22, 0, 1)",
      "BeginMediaEdits(21)",
  };
  const Calls made = calls();
  ASSERT_GE(made.size(), expected.size());
  EXPECT_EQ(Calls(made.begin(), made.begin() + static_cast<ptrdiff_t>(expected.size())), expected);
  expected = {"TCTimeCodeToFrameNumber(22)",
              "GetMovieDuration(3)",
              "AddMediaSample(21, 0, 4, 6000, 1, 0, 0)",
              "EndMediaEdits(21)",
              "InsertMediaIntoTrack(20, 0, 0, 6000, 65536)",
              "AddTrackReference(7, 20, " + kTmcd + ")"};
  EXPECT_EQ(Calls(made.end() - static_cast<ptrdiff_t>(expected.size()), made.end()), expected);
  EXPECT_EQ(toolbox().matrix.matrix[2][1], 480 << 16);
  EXPECT_EQ(parameter<int32_t>("Height"), 2 << 16) << "the least height is written back";
  EXPECT_EQ(toolbox().added_sample, "\1\2\3\4");
  const std::string& description = toolbox().added_description;
  ASSERT_EQ(description.size(), sizeof(TimeCodeDescription));
  TimeCodeDescription record;
  std::memcpy(&record, description.data(), sizeof record);
  EXPECT_EQ(record.descSize, 38);
  EXPECT_EQ(static_cast<OSType>(record.dataFormat), OSType{TimeCodeMediaType});
  EXPECT_EQ(record.dataRefIndex, 0);
  EXPECT_EQ(record.timeCodeDef.flags, tcDropFrame | tc24HourMax);
  EXPECT_EQ(record.timeCodeDef.fTimeScale, 2997);
  EXPECT_EQ(record.timeCodeDef.frameDuration, 100);
  EXPECT_EQ(record.timeCodeDef.numFrames, 30);
}

TEST_F(TimecodeTracks, TakeEveryFieldOfTheParameters) {
  parameter<int32_t>("Height") = 100 << 16;
  parameter<Boolean>("IsNeg") = 0x80;  // any byte but zero is true
  parameter<Boolean>("Use24Hours") = 0;
  parameter<Boolean>("DisplayBelowVideo") = 0;
  parameter<Boolean>("DisplayTimeCode") = 1;
  parameter<int32_t>("NumberOfFrames") = 300;
  parameter<int32_t>("Hours") = 300;
  parameter<int32_t>("Minutes") = 5;
  parameter<int32_t>("Seconds") = 256 + 6;
  parameter<int32_t>("Frames") = -1;
  parameter<int32_t>("FontFace") = 0x10003;
  parameter<int32_t>("FontSize") = 24;
  parameter<uint32_t>("FontForeColor") = 0x01FF8002;
  EXPECT_EQ(add(), 0);
  EXPECT_TRUE(called("NewMovieTrack(3, 41943040, 6553600, 0)"));
  EXPECT_EQ(parameter<int32_t>("Height"), 100 << 16);
  EXPECT_EQ(toolbox().time_code_definition.flags, tcDropFrame | tcNegTimesOK);
  EXPECT_EQ(toolbox().time_code_definition.numFrames, 44);
  const TimeCodeTime& time = toolbox().time_code_record.t;
  EXPECT_EQ(time.hours, 44);
  EXPECT_EQ(time.minutes, 0x85);
  EXPECT_EQ(time.seconds, 6);
  EXPECT_EQ(time.frames, 255);
  EXPECT_EQ(toolbox().matrix.matrix[2][1], 0);
  EXPECT_TRUE(called("SetTrackEnabled(20, 1)"));
  EXPECT_TRUE(called("TCSetTimeCodeFlags(22, 1, 1)"));
  const TCTextOptions& options = toolbox().display_options;
  EXPECT_EQ(options.txFont, 0) << "always that of the parameters";
  EXPECT_EQ(options.txFace, 3);
  EXPECT_EQ(options.txSize, 24);
  EXPECT_EQ(options.foreColor.red, static_cast<UInt16>(0x1FF * 257)) << "not cut to eight bits";
  EXPECT_EQ(options.foreColor.green, 0x8080);
  EXPECT_EQ(options.foreColor.blue, 0x0202);
  EXPECT_EQ(options.backColor.blue, 0xFFFF);

  // A counter has no other flags.
  parameter<Boolean>("UseTimeCode") = 0;
  parameter<int32_t>("CounterStartValue") = -100;
  EXPECT_EQ(add(), 0);
  EXPECT_EQ(toolbox().time_code_definition.flags, tcCounter);
  EXPECT_EQ(toolbox().time_code_record.c, -100);
  // A negative face and size are those that the handler has.
  toolbox().display_options = {5, 2, 9, 0, {}, {}};
  parameter<int32_t>("FontFace") = -1;
  parameter<int32_t>("FontSize") = -1;
  EXPECT_EQ(add(), 0);
  EXPECT_EQ(toolbox().display_options.txFace, 2);
  EXPECT_EQ(toolbox().display_options.txSize, 9);
}

TEST_F(TimecodeTracks, SayWhatFailedOrSayNothing) {
  auto& answers = toolbox().answers;
  const struct {
    const char* call;
    int64_t answer;
    int32_t result;
    const char* last;  // the last call
  } cases[] = {
      {"NewMovieTrack", 0, 0, "NewMovieTrack(3, 41943040, 131072, 0)"},
      {"GetMediaHandler", 0, 0, "GetMediaHandler(21)"},
      {"BeginMediaEdits", -61, 0, "AddTrackReference(7, 20, 1953325924)"},
      {"AddMediaSample", -2041, -2041, "AddMediaSample(21, 0, 4, 6000, 1, 0, 0)"},
      {"EndMediaEdits", -36, -36, "EndMediaEdits(21)"},
      {"InsertMediaIntoTrack", -2015, -2015, "InsertMediaIntoTrack(20, 0, 0, 6000, 65536)"},
      {"AddTrackReference", -2030, -2030, "AddTrackReference(7, 20, 1953325924)"},
      {"AddUserDataText", -50, 0, "AddTrackReference(7, 20, 1953325924)"},
      {"GetMovieIndTrackType", 0, -2030, "GetMovieIndTrackType(3, 1, 1986618469, 1)"},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.call);
    const auto before = answers;
    answers[one.call] = one.answer;
    EXPECT_EQ(add(), one.result);
    EXPECT_EQ(toolbox().calls.back(), one.last);
    answers = before;
  }
  answers["BeginMediaEdits"] = -61;
  add();
  EXPECT_TRUE(called("InsertMediaIntoTrack(20, 0, 0, 0, 65536)")) << "the track stays, empty";
  fake_host::unlock(fake_host::as_object(movie_));
  movie_ = fake_host::make_movie(0);
  EXPECT_EQ(add(), -1);
}

class TimecodeRows : public TimecodeTracks {
 protected:
  void SetUp() override {
    TimecodeTracks::SetUp();
    track_ = fake_host::make_object(kTrack);
    field<int32_t>(track_, kTrack, "TrackHandle") = 7;
    toolbox().time_code_definition = {3, 30000, 1001, 30, 0};
    toolbox().time_code_record.t = {1, 2, 3, 4};
  }
  void TearDown() override {
    fake_host::unlock(track_);
    TimecodeTracks::TearDown();
  }
  template <class F, class... Arguments>
  auto call(const char* declaration, Arguments... arguments) {
    toolbox().calls.clear();
    return fake_host::function<F>(fake_host::method(kTrack, declaration).function)(arguments...);
  }
  int32_t last_error() { return field<int32_t>(track_, kTrack, "Lasterror"); }

  REALobject track_ = nullptr;
};

TEST_F(TimecodeRows, TheTimeCodeAtATimeHasTheNameOfItsSource) {
  constexpr char kAtTime[] = "TimeCodeAtTime(MediaTime as integer) as QTTimeCodeKRZ";
  toolbox().answers["frame"] = -9;
  REALobject code = call<REALobject(REALobject, int32_t)>(kAtTime, track_, 77);
  ASSERT_NE(code, nullptr);
  EXPECT_TRUE(called("TCGetTimeCodeAtTime(22, 77, 1, 1, 1, 0)"));
  EXPECT_TRUE(called("TCGetTimeCodeAtTime(22, 77, 0, 0, 0, 1)"));
  EXPECT_EQ(last_error(), 0);
  EXPECT_EQ(field<int32_t>(code, kTimeCode, "FrameNumber"), -9);
  fake_host::unlock(code);
  toolbox().answers["TCGetTimeCodeAtTime"] = -2147450878;
  EXPECT_EQ((call<REALobject(REALobject, int32_t)>(kAtTime, track_, 77)), nullptr);
  EXPECT_EQ(last_error(), -2147450878);
  field<int32_t>(track_, kTrack, "TrackHandle") = 0;
  EXPECT_EQ((call<REALobject(REALobject, int32_t)>(kAtTime, track_, 77)), nullptr);
  EXPECT_EQ(last_error(), -1);
}

TEST_F(TimecodeRows, TheCurrentTimeCodeHasNoNameAndLeavesItsSource) {
  const REALobject code = call<REALobject(REALobject)>("CurrentTimeCode as QTTimeCodeKRZ", track_);
  ASSERT_NE(code, nullptr);
  EXPECT_EQ(field<REALstring>(code, kTimeCode, "SourceName"), nullptr);
  EXPECT_EQ(toolbox().calls.back(), "TCGetCurrentTimeCode(22, -1, 0, 0, 0, 1)");
  fake_host::unlock(code);
}

TEST_F(TimecodeRows, ConversionsKeepTheirResultOneWayOnly) {
  const REALobject code = fake_host::make_object(kTimeCode);
  field<int32_t>(code, kTimeCode, "FrameNumber") = 5;
  toolbox().answers["TCFrameNumberToTimeCode"] = -50;
  call<void(REALobject, REALobject)>("FrameNumberToTimeCode(timecode as QTTimeCodeKRZ)", track_,
                                     code);
  EXPECT_TRUE(called("TCFrameNumberToTimeCode(22, 5)"));
  EXPECT_EQ(last_error(), -50);
  toolbox().answers["frame"] = 1234;
  call<void(REALobject, REALobject)>("TimeCodeToFrameNumber(timecode as QTTimeCodeKRZ)", track_,
                                     code);
  EXPECT_EQ(field<int32_t>(code, kTimeCode, "FrameNumber"), 1234);
  EXPECT_EQ(last_error(), -1);
  const REALstring text = call<REALstring(REALobject, REALobject)>(
      "TimeCodeToString(timecode as QTTimeCodeKRZ) as string", track_, code);
  ASSERT_NE(text, nullptr);
  fake_host::unlock(text);
  EXPECT_EQ(last_error(), -1);
  toolbox().answers["TCTimeCodeToString"] = -50;
  EXPECT_EQ((call<REALstring(REALobject, REALobject)>(
                "TimeCodeToString(timecode as QTTimeCodeKRZ) as string", track_, code)),
            nullptr);
  call<void(REALobject, REALobject)>("FrameNumberToTimeCode(timecode as QTTimeCodeKRZ)", track_,
                                     REALobject{nullptr});
  EXPECT_EQ(last_error(), -1);
  fake_host::unlock(code);
}

TEST_F(TimecodeTracks, TheDisplayIsReadAndSetTogetherWithTheTrack) {
  const MethodEntry& row = fake_host::method("movie", "TimeCodeDisplayedKRZ as boolean");
  const auto get = fake_host::function<Boolean(REALmovieStruct*)>(row.function);
  const auto set = fake_host::function<void(REALmovieStruct*, Boolean)>(row.setter);
  toolbox().answers["flags"] = 2;
  EXPECT_EQ(get(movie_), 0);
  toolbox().calls.clear();
  set(movie_, 1);
  const std::string look = "GetMovieIndTrackType(3, 1, " + kTmcd + ", 1)";
  EXPECT_EQ(toolbox().calls,
            (Calls{look, look, "GetTrackMedia(7)", "GetMediaHandler(8)", "TCGetTimeCodeFlags(22)",
                   "TCSetTimeCodeFlags(22, 3, 1)", "SetTrackEnabled(7, 1)"}));
  toolbox().answers["flags"] = 3;
  EXPECT_EQ(get(movie_), 1);
  toolbox().calls.clear();
  set(movie_, 0);
  EXPECT_TRUE(called("TCSetTimeCodeFlags(22, 2, 1)"));
  toolbox().answers["GetMovieIndTrackType"] = 0;
  EXPECT_EQ(get(movie_), 0);
  toolbox().calls.clear();
  set(movie_, 1);
  EXPECT_EQ(toolbox().calls, Calls{look});
}

}  // namespace
