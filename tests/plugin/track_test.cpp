// Track objects and the rows that read a track.
#include "plugin/track/track.h"

#include "plugin/host/encodings.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::field;
using fake_toolbox::toolbox;
using Calls = std::vector<std::string>;

constexpr char kNext[] =
    "NextInterestingTimeKRZ(byref time as integer, byref duration as integer) as boolean";
constexpr char kNextWithRate[] =
    "NextInterestingTimeKRZ(byref time as integer, byref duration as integer, rate as double) as "
    "boolean";

class TrackObjects : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    object_ = fake_host::make_object("QTTrackKRZ");
    set_track(7);
    lasterror() = 55;
  }
  void TearDown() override {
    fake_host::unlock(object_);
    PluginTest::TearDown();
  }

  void set_track(int32_t track) { field<int32_t>(object_, "QTTrackKRZ", "TrackHandle") = track; }
  int32_t& lasterror() { return field<int32_t>(object_, "QTTrackKRZ", "Lasterror"); }

  template <class Result = int32_t, class... Arguments>
  Result call(const char* declaration, Arguments... arguments) {
    toolbox().calls.clear();
    const MethodEntry& row = fake_host::method("QTTrackKRZ", declaration);
    return fake_host::function<Result(REALobject, Arguments...)>(row.function)(object_,
                                                                               arguments...);
  }

  REALobject object_ = nullptr;
};

TEST_F(TrackObjects, KeepTheirMovieLockedUntilTheyDie) {
  REALmovieStruct* movie = fake_host::make_movie(3);
  EXPECT_EQ(krz::MakeTrackObject(nullptr, movie), nullptr);
  const REALobject track =
      krz::MakeTrackObject(reinterpret_cast<Track>(uintptr_t{0xFFFFFFFE}), movie);
  ASSERT_TRUE(track);
  EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie)), 2);
  EXPECT_EQ(field<REALmovieStruct*>(track, "QTTrackKRZ", "Movie"), movie);
  EXPECT_EQ(field<int32_t>(track, "QTTrackKRZ", "TrackHandle"), -2);
  EXPECT_EQ(field<int32_t>(track, "QTTrackKRZ", "Lasterror"), 0);
  EXPECT_EQ(krz::getTrackMedia(krz::track_data(track)), nullptr);
  EXPECT_EQ(toolbox().calls, Calls{"GetTrackMedia(4294967294)"})
      << "references are 32 bits without a sign";
  fake_host::unlock(track);
  EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie)), 1);

  const REALobject orphan = krz::MakeTrackObject(reinterpret_cast<Track>(uintptr_t{7}), movie);
  field<REALmovieStruct*>(orphan, "QTTrackKRZ", "Movie") = nullptr;
  fake_host::unlock(fake_host::as_object(movie));
  fake_host::unlock(orphan);
  EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie)), 1)
      << "a movie that a script took away is not unlocked";
  fake_host::unlock(fake_host::as_object(movie));
}

TEST_F(TrackObjects, AreNotMadeByAHostWithoutTheirClass) {
  fake_host::host().classes.clear();
  REALmovieStruct* movie = fake_host::make_movie(3);
  EXPECT_EQ(krz::MakeTrackObject(reinterpret_cast<Track>(uintptr_t{7}), movie), nullptr);
  fake_host::unlock(fake_host::as_object(movie));
  load();
}

TEST_F(TrackObjects, ReadNumbersAsTheToolboxHasThem) {
  const struct {
    const char* declaration;
    const char* call;
    int64_t answer;
    int32_t seen;
  } cases[] = {
      {"Duration as integer", "GetTrackDuration", 6000, 6000},
      {"TimeOffset as integer", "GetTrackOffset", -5, -5},
      {"Layer as integer", "GetTrackLayer", -32768, -32768},
      {"TrackCreationTime as integer", "GetTrackCreationTime", 0xFFFFFFFF, -1},
      {"TrackModificationTime as integer", "GetTrackModificationTime", 0x80000001, -0x7FFFFFFF},
      {"TrackID as integer", "GetTrackID", 12, 12},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.declaration);
    toolbox().answers[one.call] = one.answer;
    EXPECT_EQ(call(one.declaration), one.seen);
    EXPECT_EQ(toolbox().calls, Calls{std::string(one.call) + "(7)"});
    EXPECT_EQ(lasterror(), 55) << "these leave the error alone";
  }
}

TEST_F(TrackObjects, ReadVolumeRawAndClearTheError) {
  toolbox().answers["GetTrackVolume"] = -256;
  EXPECT_EQ(call("TrackVolume as integer"), -256);
  EXPECT_EQ(lasterror(), 0);
}

TEST_F(TrackObjects, ReadWhetherTheyAreEnabled) {
  EXPECT_EQ(call<Boolean>("TrackEnabled as boolean"), 0);
  toolbox().answers["GetTrackEnabled"] = 0x80;
  EXPECT_EQ(call<Boolean>("TrackEnabled as boolean"), 1);
}

TEST_F(TrackObjects, GiveTheWholePartOfTheirDimensions) {
  toolbox().answers["width"] = 0x0280FFFF;
  toolbox().answers["height"] = -0x8000;
  EXPECT_EQ(call("Width as integer"), 640);
  EXPECT_EQ(call("Height as integer"), -1) << "minus a half, shifted down";
  EXPECT_EQ(toolbox().calls, Calls{"GetTrackDimensions(7)"});
}

TEST_F(TrackObjects, WithoutATrackGiveNothing) {
  set_track(0);
  for (const char* declaration :
       {"Duration as integer", "TimeOffset as integer", "Layer as integer",
        "TrackCreationTime as integer", "TrackModificationTime as integer", "Width as integer",
        "Height as integer", "MediaHandlerHandle as integer", "MediaHandle as integer",
        "FileCount as integer", "MediaSampleCount as integer",
        "MediaSampleDescriptionCount as integer"}) {
    SCOPED_TRACE(declaration);
    EXPECT_EQ(call(declaration), 0);
    EXPECT_EQ(toolbox().calls, Calls{});
  }
  EXPECT_EQ(call<Boolean>("TrackEnabled as boolean"), 0);
  EXPECT_EQ(call<REALstring>("MediaType as string"), nullptr);
  EXPECT_EQ(toolbox().calls, Calls{});
  EXPECT_EQ(lasterror(), 55);

  // These two ask the toolbox all the same.
  call("TrackID as integer");
  EXPECT_EQ(toolbox().calls, Calls{"GetTrackID(0)"});
  EXPECT_EQ(lasterror(), 55);
  call("TrackVolume as integer");
  EXPECT_EQ(toolbox().calls, Calls{"GetTrackVolume(0)"});
  EXPECT_EQ(lasterror(), 0);

  EXPECT_EQ(
      call<REALmemoryBlockStruct*>("MediaSampleDescriptionRaw(index as integer) as memoryblock", 1),
      nullptr);
  EXPECT_EQ(lasterror(), -1);
}

TEST_F(TrackObjects, FindTheNextInterestingTime) {
  const struct {
    int32_t time;
    double rate;  // 0: the method without a rate
    const char* flags_time_rate;
  } cases[] = {
      {0, 0, "16385, 0, 65536"},    {5, 0, "16385, 5, 65536"},   {-1, 0, "1, -1, 65536"},
      {0, 1.0, "16385, 0, 65536"},  {5, 1.0, "1, 5, 65536"},     {-1, 1.0, "1, -1, 65536"},
      {5, -1.0, "1, 5, -65536"},    {5, 0.99999, "1, 5, 65535"}, {5, -0.99999, "1, 5, -65535"},
      {5, 1e9, "1, 5, 2147483647"},
  };
  toolbox().found_time = 600;
  toolbox().found_duration = 300;
  toolbox().error = -2009;
  for (const auto& one : cases) {
    SCOPED_TRACE(one.flags_time_rate);
    int32_t time = one.time;
    int32_t duration = 44;
    lasterror() = 55;
    const Boolean answer = one.rate == 0 ? call<Boolean>(kNext, &time, &duration)
                                         : call<Boolean>(kNextWithRate, &time, &duration, one.rate);
    EXPECT_EQ(answer, 1) << "true whatever the error";
    EXPECT_EQ(toolbox().calls,
              Calls{"GetTrackNextInterestingTime(7, " + std::string(one.flags_time_rate) + ", " +
                    std::to_string(one.time) + ", 44)"});
    EXPECT_EQ(time, 600);
    EXPECT_EQ(duration, 300);
    EXPECT_EQ(lasterror(), -2009);
  }
}

TEST_F(TrackObjects, WithoutATrackFindNoInterestingTime) {
  set_track(0);
  int32_t time = 5;
  int32_t duration = 44;
  EXPECT_EQ(call<Boolean>(kNext, &time, &duration), 0);
  EXPECT_EQ(lasterror(), -1);
  lasterror() = 55;
  EXPECT_EQ(call<Boolean>(kNextWithRate, &time, &duration, 1.0), 0);
  EXPECT_EQ(lasterror(), -1);
  EXPECT_EQ(time, 5);
  EXPECT_EQ(duration, 44);
  EXPECT_EQ(toolbox().calls, Calls{});
}

TEST_F(TrackObjects, GiveTheirMatrixRowByRow) {
  const char* declaration =
      "GetTrackRawMatrix(byref matrix00 as integer, byref matrix01 as integer, byref matrix02 as "
      "integer, byref "
      "matrix10 as integer, byref matrix11 as integer, byref matrix12 as integer, byref matrix20 "
      "as integer, byref "
      "matrix21 as integer, byref matrix22 as integer)";
  int32_t m[9];
  const auto read = [&] {
    for (int32_t& entry : m) entry = 99;
    call<void>(declaration, &m[0], &m[1], &m[2], &m[3], &m[4], &m[5], &m[6], &m[7], &m[8]);
  };
  toolbox().matrix = {{{1, 2, 3}, {4, 5, 6}, {7, 8, -9}}};
  read();
  const int32_t expected[9] = {1, 2, 3, 4, 5, 6, 7, 8, -9};
  for (int i = 0; i < 9; ++i) EXPECT_EQ(m[i], expected[i]) << i;
  EXPECT_EQ(lasterror(), 0);

  set_track(0);
  read();
  for (int i = 0; i < 9; ++i) EXPECT_EQ(m[i], 0) << i;
  EXPECT_EQ(lasterror(), -1);
}

TEST_F(TrackObjects, ReadTheirMedia) {
  toolbox().answers["GetTrackMedia"] = 20;
  toolbox().answers["GetMediaHandler"] = 21;
  toolbox().answers["GetMediaHandlerDescription"] = SoundMediaType;
  toolbox().answers["GetMediaSampleCount"] = 1000;
  toolbox().answers["GetMediaSampleDescriptionCount"] = 2;
  EXPECT_EQ(call("MediaHandle as integer"), 20);
  EXPECT_EQ(call("MediaHandlerHandle as integer"), 21);
  EXPECT_EQ(toolbox().calls, (Calls{"GetTrackMedia(7)", "GetMediaHandler(20)"}));
  EXPECT_EQ(call("MediaSampleCount as integer"), 1000);
  EXPECT_EQ(call("MediaSampleDescriptionCount as integer"), 2);

  const REALstring type = call<REALstring>("MediaType as string");
  EXPECT_EQ(toolbox().calls, (Calls{"GetTrackMedia(7)", "GetMediaHandlerDescription(20, 0, 0)"}));
  EXPECT_EQ(fake_host::bytes_of(type), "soun");
  EXPECT_EQ(fake_host::encoding_of(type), krz::kASCII);
  fake_host::unlock(type);
  EXPECT_EQ(lasterror(), 55);
}

TEST_F(TrackObjects, WithoutMediaAskForTheHandlerOfNone) {
  EXPECT_EQ(call("MediaHandlerHandle as integer"), 0);
  EXPECT_EQ(toolbox().calls, (Calls{"GetTrackMedia(7)", "GetMediaHandler(0)"}));
  EXPECT_EQ(call("MediaSampleCount as integer"), 0);
  EXPECT_EQ(toolbox().calls, Calls{"GetTrackMedia(7)"});
}

TEST_F(TrackObjects, CountFilesOnlyWhenTheToolboxCan) {
  toolbox().answers["GetTrackMedia"] = 20;
  toolbox().answers["count"] = -3;
  EXPECT_EQ(call("FileCount as integer"), -3) << "sign-extended";
  toolbox().answers["GetMediaDataRefCount"] = -2008;
  EXPECT_EQ(call("FileCount as integer"), 0);
}

TEST_F(TrackObjects, GiveRawSampleDescriptions) {
  const char* declaration = "MediaSampleDescriptionRaw(index as integer) as memoryblock";
  toolbox().answers["GetTrackMedia"] = 20;
  toolbox().sample_description = std::string(
      "\0\0\0\x10"
      "tmcd",
      8);
  auto* block = call<REALmemoryBlockStruct*>(declaration, 70000);
  ASSERT_TRUE(block);
  EXPECT_EQ(toolbox().calls, (Calls{"GetTrackMedia(7)", "GetMediaSampleDescription(20, 70000)"}));
  EXPECT_EQ(fake_host::bytes_of(block), toolbox().sample_description);
  EXPECT_EQ(lasterror(), 0);
  fake_host::unlock(fake_host::as_object(block));

  toolbox().sample_description.clear();
  toolbox().error = -2050;
  EXPECT_EQ(call<REALmemoryBlockStruct*>(declaration, 3), nullptr);
  EXPECT_EQ(lasterror(), -2050);
}

TEST_F(TrackObjects, ReadSamples) {
  const char* declaration =
      "GetMediaSample(byref data as Memoryblock, byref time as integer, byref durationPerSample as "
      "integer, byref description as memoryblock, byref sampleDescriptionIndex as integer, "
      "maxNumberOfSample as integer, byref numberOfSamples as integer, byref flags as integer) as "
      "boolean";
  REALmemoryBlockStruct* data = nullptr;
  REALmemoryBlockStruct* description = nullptr;
  int32_t time = 100, duration = 5, index = 6, count = 7, flags = 8;
  const auto read = [&] {
    return call<Boolean>(declaration, &data, &time, &duration, &description, &index, 9, &count,
                         &flags) != 0;
  };
  EXPECT_FALSE(read()) << "no media";
  EXPECT_EQ(toolbox().calls, Calls{"GetTrackMedia(7)"});
  EXPECT_EQ((std::vector<int32_t>{time, duration, index, count, flags}),
            (std::vector<int32_t>{100, 0, 6, 7, 0}));
  EXPECT_EQ(lasterror(), -1);

  toolbox().answers["GetTrackMedia"] = 20;
  toolbox().sample = "sample";
  toolbox().sample_description = "description";
  toolbox().found_time = 90;
  toolbox().found_duration = 30;
  EXPECT_TRUE(read());
  EXPECT_EQ(toolbox().calls,
            (Calls{"GetTrackMedia(7)", "GetMediaSample(20, 0, 0, 100, 100, 0, 6, 9, 7, 0)"}));
  EXPECT_EQ(fake_host::bytes_of(data), "sample");
  EXPECT_EQ(fake_host::bytes_of(description), "description");
  EXPECT_EQ((std::vector<int32_t>{time, duration, index, count, flags}),
            (std::vector<int32_t>{90, 30, 2, 3, -4}));
  EXPECT_EQ(lasterror(), 0);

  // The blocks are given back; a description without data is delivered all the same.
  toolbox().sample.clear();
  toolbox().answers["GetMediaSample"] = -39;
  toolbox().error = -2046;
  EXPECT_FALSE(read());
  EXPECT_EQ(data, nullptr);
  EXPECT_EQ(fake_host::bytes_of(description), "description");
  EXPECT_EQ((std::vector<int32_t>{time, duration, index, count, flags}),
            (std::vector<int32_t>{90, 0, 2, 3, 0}));
  EXPECT_EQ(lasterror(), -2046);
  fake_host::unlock(fake_host::as_object(description));
}

TEST_F(TrackObjects, BeginAndEndMediaEdits) {
  call<void>("BeginMediaEdits");
  EXPECT_EQ(lasterror(), -1);
  toolbox().answers["GetTrackMedia"] = 20;
  toolbox().answers["BeginMediaEdits"] = -2044;
  call<void>("BeginMediaEdits");
  EXPECT_EQ(toolbox().calls, (Calls{"GetTrackMedia(7)", "BeginMediaEdits(20)"}));
  EXPECT_EQ(lasterror(), -2044);
  call<void>("EndMediaEdits");
  EXPECT_EQ(toolbox().calls, (Calls{"GetTrackMedia(7)", "EndMediaEdits(20)"}));
  EXPECT_EQ(lasterror(), 0);
}

TEST_F(TrackObjects, OfTheChapterClassShareTheData) {
  const REALobject chapters = fake_host::make_object("QTChapterTrackKRZ");
  krz::track_data(chapters).track = 7;
  toolbox().answers["GetTrackMedia"] = 20;
  EXPECT_EQ(krz::RBGetTrackMedia(chapters), reinterpret_cast<Media>(uintptr_t{20}));
  fake_host::unlock(chapters);
}

}  // namespace
