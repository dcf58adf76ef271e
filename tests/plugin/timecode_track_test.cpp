// Timecode tracks where values do not fit and calls of the toolbox fail.
#include "plugin/plugin_test.h"

namespace {

using fake_host::field;
using fake_toolbox::toolbox;

constexpr char kParameters[] = "QTTimeCodeCreationParametersKRZ";

class TimecodeTracks : public MovieTest {
 protected:
  void SetUp() override {
    MovieTest::SetUp();
    parameters_ = fake_host::make_object(kParameters);
  }
  void TearDown() override {
    fake_host::unlock(parameters_);
    MovieTest::TearDown();
  }

  int32_t add(REALmovieStruct* movie) {
    return call<int32_t>(
        movie, "movie",
        "AddTimeCodeToMovieKRZ(parameters as QTTimeCodeCreationParametersKRZ) as integer",
        parameters_);
  }
  template <class T>
  T& parameter(const char* name) {
    return field<T>(parameters_, kParameters, name);
  }

  REALobject parameters_ = nullptr;
};

TEST_F(TimecodeTracks, CutEveryFieldToItsBits) {
  const std::pair<const char*, int32_t> values[] = {
      {"Height", 100 << 16}, {"NumberOfFrames", 300}, {"Hours", 300},
      {"Minutes", 5},        {"Seconds", 256 + 6},    {"Frames", -1},
      {"FontFace", 0x10003}, {"FontSize", 24},        {"FontForeColor", 0x01FF8002}};
  for (const auto& [name, value] : values) {
    parameter<int32_t>(name) = value;
  }
  parameter<Boolean>("IsNeg") = 0x80;  // any byte but zero is true
  parameter<Boolean>("Use24Hours") = 0;
  EXPECT_EQ(add(movie_), 0);
  EXPECT_EQ(parameter<int32_t>("Height"), 100 << 16);
  EXPECT_EQ(toolbox().time_code_definition.flags, tcDropFrame | tcNegTimesOK);
  EXPECT_EQ(toolbox().time_code_definition.numFrames, 44);
  const TimeCodeTime& time = toolbox().time_code_record.t;
  EXPECT_EQ((std::vector<int>{time.hours, time.minutes, time.seconds, time.frames}),
            (std::vector<int>{44, 0x85, 6, 255}));
  const TCTextOptions& options = toolbox().display_options;
  EXPECT_EQ(options.txFont, 0) << "always that of the parameters";
  EXPECT_EQ(options.txFace, 3);
  EXPECT_EQ(options.txSize, 24);
  EXPECT_EQ(options.foreColor.red, static_cast<UInt16>(0x1FF * 257)) << "not cut to eight bits";
  EXPECT_EQ(options.foreColor.green, 0x8080);
  EXPECT_EQ(options.foreColor.blue, 0x0202);
  EXPECT_EQ(options.backColor.blue, 0xFFFF);

  // A counter has no other flags; a negative face and size are those that the handler has.
  parameter<Boolean>("UseTimeCode") = 0;
  parameter<int32_t>("CounterStartValue") = -100;
  parameter<int32_t>("FontFace") = parameter<int32_t>("FontSize") = -1;
  EXPECT_EQ(add(movie_), 0);
  EXPECT_EQ(toolbox().time_code_definition.flags, tcCounter);
  EXPECT_EQ(toolbox().time_code_record.c, -100);
  EXPECT_EQ(toolbox().display_options.txFace, 0);
  EXPECT_EQ(toolbox().display_options.txSize, 12);
}

TEST_F(TimecodeTracks, SayWhatFailedOrSayNothing) {
  const struct {
    const char* call;
    int64_t answer;
    int32_t result;
    const char* last;  // call
  } cases[] = {
      {"NewMovieTrack", 0, 0, "NewMovieTrack"},
      {"GetMediaHandler", 0, 0, "GetMediaHandler"},
      {"BeginMediaEdits", -61, 0, "AddTrackReference"},
      {"AddMediaSample", -2041, -2041, "AddMediaSample"},
      {"EndMediaEdits", -36, -36, "EndMediaEdits"},
      {"InsertMediaIntoTrack", -2015, -2015, "InsertMediaIntoTrack"},
      {"AddTrackReference", -2030, -2030, "AddTrackReference"},
      {"AddUserDataText", -50, 0, "AddTrackReference"},
      {"GetMovieIndTrackType", 0, -2030, "GetMovieIndTrackType"},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.call);
    toolbox().answers = {{one.call, one.answer}};
    EXPECT_EQ(add(movie_), one.result);
    ASSERT_FALSE(toolbox().calls.empty());
    EXPECT_EQ(toolbox().calls.back().find(one.last), 0u) << toolbox().calls.back();
    if (one.answer == -61) {
      EXPECT_EQ(GetTrackDuration(track(GetMovieTrackCount(opened()))), 0) << "it stays, empty";
    }
  }
  REALmovieStruct* const closed = fake_host::make_movie(0);
  EXPECT_EQ(add(closed), -1);
  fake_host::unlock(fake_host::as_object(closed));
}

}  // namespace
