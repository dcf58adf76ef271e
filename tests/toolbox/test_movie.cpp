// Whole movies from files: what their headers, edits and tables say through the C calls.
#include <gtest/gtest.h>

#include <cstring>

#include "opened_movie.h"

namespace toolbox::testing {
namespace {

constexpr int32_t kOne = 0x10000;

TEST(Movie, HandsOutHandlersNamesAndDescriptions) {
  BuiltMovie built;
  built.tracks.push_back(video_track(64, 48, 3, 20));
  built.tracks[0].handler.component_type = four_cc("mhlr");
  built.tracks[0].handler.set_name("A name");
  built.tracks[0].handler.manufacturer = four_cc("ours");
  const Bytes entry = built.tracks[0].descriptions[0];
  const OpenedTestMovie movie(built);
  const ::Media media = movie.media(1);
  OSType type = 0;
  OSType manufacturer = 0;
  Str255 name = {};
  GetMediaHandlerDescription(media, &type, name, &manufacturer);
  EXPECT_EQ(OSType{VideoMediaType}, type);
  EXPECT_EQ(four_cc("ours"), manufacturer);
  EXPECT_EQ("A name", std::string(reinterpret_cast<char*>(name) + 1, name[0]));
  GetMediaHandlerDescription(media, nullptr, nullptr, nullptr);
  EXPECT_EQ(noErr, GetMoviesError());

  const Handle handle = NewHandle(3);
  ASSERT_EQ(1, GetMediaSampleDescriptionCount(media));
  for (const SInt32 bad : {0, 2, -1}) {
    GetMediaSampleDescription(media, bad, handle);
    EXPECT_EQ(badDataRefIndex, GetMoviesError());
    EXPECT_EQ(3, GetHandleSize(handle));
  }
  GetMediaSampleDescription(media, 1, handle);
  EXPECT_EQ(noErr, GetMoviesError());
  ASSERT_EQ(static_cast<Size>(entry.size()), GetHandleSize(handle));
  EXPECT_EQ(0, std::memcmp(*handle, entry.data(), entry.size()));
  DisposeHandle(handle);
  GetMediaSampleDescription(media, 1, handle);
  EXPECT_EQ(memWZErr, GetMoviesError());
}

TEST(Movie, FindsTracksByTypeAndCharacteristic) {
  BuiltMovie built;
  built.tracks.push_back(video_track(8, 8, 1, 20));
  built.tracks.push_back(sound_track(1, 10));
  built.tracks.push_back(video_track(8, 8, 1, 20));
  built.tracks.push_back(text_track({{"one", 600}}));
  built.tracks[0].header.flags = 14;
  const OpenedTestMovie movie(built);
  const auto find = [&](SInt32 index, OSType type, SInt32 flags) {
    const ::Track track = GetMovieIndTrackType(movie, index, type, flags);
    return track == nullptr ? 0 : GetTrackID(track);
  };
  EXPECT_EQ(1, find(1, VideoMediaType, movieTrackMediaType));
  EXPECT_EQ(3, find(2, VideoMediaType, movieTrackMediaType));
  EXPECT_EQ(3, find(1, VideoMediaType, movieTrackMediaType | movieTrackEnabledOnly));
  EXPECT_EQ(4, find(2, four_cc("eyes"), movieTrackCharacteristic | movieTrackEnabledOnly));
  EXPECT_EQ(2, find(1, four_cc("ears"), movieTrackCharacteristic));
  for (const SInt32 index : {0, 3, -1}) {
    EXPECT_EQ(0, find(index, VideoMediaType, movieTrackMediaType));
    EXPECT_EQ(badTrackIndex, GetMoviesError());
  }
  for (const SInt32 flags : {0, 3, 4, 9}) {
    EXPECT_EQ(0, find(1, VideoMediaType, flags));
    EXPECT_EQ(paramErr, GetMoviesError());
  }
}

TEST(Movie, SearchesInterestingTimes) {
  BuiltMovie built;
  built.header.time_scale = 600;
  built.tracks.push_back(video_track(8, 8, 6, 100));
  built.tracks[0].sync_samples = Rows::of({{1}, {4}});
  built.tracks[0].edits = EditListAtom();
  built.tracks[0].edits->entries = {
      {50, -1, kOne}, {250, 150, kOne}, {100, -1, kOne}, {100, 300, kOne}};
  const OpenedTestMovie movie(built);
  struct Case {
    int flags;
    TimeValue from;
    Fixed rate;
    TimeValue time;
    TimeValue duration;
  };
  const int edge = nextTimeEdgeOK;
  const Case cases[] = {
      {nextTimeMediaSample, -1, kOne, 50, 50},          // a part of the second sample
      {nextTimeMediaSample, 50, kOne, 100, 100},        //
      {nextTimeMediaSample | edge, 50, kOne, 50, 50},   //
      {nextTimeMediaSample, 50, -kOne, -1, 0},          //
      {nextTimeMediaSample | edge, 50, -kOne, 50, 50},  //
      {nextTimeMediaSample, 200, kOne, 400, 100},       // over the empty edit
      {nextTimeMediaSample, 400, -1, 200, 100},         //
      {nextTimeMediaSample, 400, 0, -1, 0},             // no rate is forward
      {nextTimeStep, 99, 3, 100, 100},                  //
      {nextTimeSyncSample, -5, kOne, 200, 100},         //
      {nextTimeSyncSample, 200, kOne, 400, 100},        //
      {nextTimeMediaEdit, -1, kOne, 50, 250},           //
      {nextTimeMediaEdit, 50, kOne, 400, 100},          //
      {nextTimeTrackEdit, -1, kOne, 0, 50},             //
      {nextTimeTrackEdit | edge, 0, kOne, 0, 50},       //
      {nextTimeTrackEdit, 50, kOne, 300, 100},          //
      {nextTimeTrackEdit, 400, kOne, 500, 0},           // the end of the track
      {nextTimeTrackEdit, INT32_MAX, -kOne, 500, 0},    //
      {nextTimeTrackEdit, INT32_MAX, kOne, -1, 0},      //
      {nextTimeTrackEdit | edge, INT32_MIN, -kOne, -1, 0},
      {nextTimeMediaSample | int{nextTimeIgnoreActiveSegment}, -1, kOne, 50, 50},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE("flags " + std::to_string(each.flags) + " from " + std::to_string(each.from));
    TimeValue time = 77;
    TimeValue duration = 77;
    GetTrackNextInterestingTime(movie.track(1), static_cast<SInt16>(each.flags), each.from,
                                each.rate, &time, &duration);
    EXPECT_EQ(noErr, GetMoviesError());
    EXPECT_EQ(each.time, time);
    EXPECT_EQ(each.duration, duration);
  }
  GetTrackNextInterestingTime(movie.track(1), nextTimeMediaSample, 0, kOne, nullptr, nullptr);
  for (const int flags : {0, 3, 9, 0x4000, 12}) {
    TimeValue time = 77;
    TimeValue duration = 77;
    GetTrackNextInterestingTime(movie.track(1), static_cast<SInt16>(flags), 0, kOne, &time,
                                &duration);
    EXPECT_EQ(paramErr, GetMoviesError());
    EXPECT_EQ(-1, time);
    EXPECT_EQ(0, duration);
  }
}

TEST(Movie, ToleratesWhatFilesLeaveOutOrGetWrong) {
  BuiltMovie built;
  built.header.time_scale = 0;
  built.tracks.push_back(video_track(8, 8, 3, 100));
  built.tracks.push_back(video_track(8, 8, 3, 100));
  built.tracks[0].header.track_id = 5;
  built.tracks[1].header.track_id = 5;
  // A track with nothing in it.
  built.more_in_movie = atom_bytes(four_cc("trak"), {});
  const OpenedTestMovie movie(built);
  EXPECT_EQ(600, GetMovieTimeScale(movie));
  EXPECT_EQ(3, GetMovieTrackCount(movie));
  EXPECT_EQ(movie.track(1), GetMovieTrack(movie, 5));
  EXPECT_NE(movie.track(1), movie.track(2));
  const ::Track bare = movie.track(3);
  EXPECT_EQ(0, GetTrackID(bare));
  EXPECT_EQ(nullptr, GetTrackMedia(bare));
  EXPECT_EQ(noErr, GetMoviesError());
  EXPECT_EQ(0, GetTrackDuration(bare));
  TimeValue time = 0;
  GetTrackNextInterestingTime(bare, nextTimeMediaSample, 0, kOne, &time, nullptr);
  EXPECT_EQ(-1, time);
  EXPECT_EQ(noErr, GetMoviesError());
  EXPECT_EQ(nullptr, GetMovieTrack(movie, 0));
  EXPECT_EQ(trackIDNotFound, GetMoviesError());
}

// Finds an atom's payload in a file, for a test to damage it.
uint8_t* payload_of(Bytes& file, const char (&type)[5]) {
  const auto found = std::search(file.begin(), file.end(), type, type + 4);
  EXPECT_NE(file.end(), found) << type;
  return &*found + 4;
}

TEST(Movie, NamesTheDamageOfASampleTableWhenItIsAskedFor) {
  BuiltMovie built;
  built.tracks.push_back(video_track(8, 8, 3, 100));
  Bytes bytes = build_movie(built).take();
  store_big_endian<uint32_t>(payload_of(bytes, "stts") + 4, 1000);
  const TemporaryFile file(bytes);
  ::Movie movie = nullptr;
  ASSERT_EQ(noErr, ToolboxOpenMovie(file.path.c_str(), &movie)) << ToolboxErrorDetail();
  const ::Media media = GetTrackMedia(GetMovieIndTrack(movie, 1));
  EXPECT_EQ(0, GetMediaSampleCount(media));
  EXPECT_EQ(invalidSampleTable, GetMoviesError());
  EXPECT_NE(nullptr, std::strstr(ToolboxErrorDetail(), "moov/trak[1]/mdia/minf/stbl/stts"))
      << ToolboxErrorDetail();
  EXPECT_NE(nullptr, std::strstr(ToolboxErrorDetail(), file.path.c_str())) << ToolboxErrorDetail();
  EXPECT_EQ(300, GetTrackDuration(GetMovieIndTrack(movie, 1)));
  ::DisposeMovie(movie);
}

TEST(Movie, RefusesAnEditListThatClaimsMoreThanItHolds) {
  BuiltMovie built;
  built.tracks.push_back(video_track(8, 8, 3, 100));
  built.tracks[0].edits = EditListAtom();
  built.tracks[0].edits->entries = {{60, -1, kOne}};
  Bytes bytes = build_movie(built).take();
  store_big_endian<uint32_t>(payload_of(bytes, "elst") + 4, 2);
  const TemporaryFile file(bytes);
  auto movie = reinterpret_cast<::Movie>(uintptr_t{1});
  EXPECT_EQ(badPublicMovieAtom, ToolboxOpenMovie(file.path.c_str(), &movie));
  EXPECT_EQ(nullptr, movie);
  EXPECT_NE(nullptr, std::strstr(ToolboxErrorDetail(), "moov/trak[1]/edts/elst"))
      << ToolboxErrorDetail();
}

TEST(Movie, CutsTimesThatDoNotFitInto32Bits) {
  BuiltMovie built;
  built.header.time_scale = 600;
  built.tracks.push_back(video_track(8, 8, 3, 100));
  built.tracks[0].edits = EditListAtom();
  built.tracks[0].edits->entries = {{uint64_t{1} << 40, -1, kOne}, {60, 0, kOne}};
  const OpenedTestMovie movie(built);
  EXPECT_EQ(INT32_MAX, GetTrackDuration(movie.track(1)));
  EXPECT_EQ(INT32_MAX, GetTrackOffset(movie.track(1)));
  TimeValue time = 0;
  GetTrackNextInterestingTime(movie.track(1), nextTimeMediaSample, 0, kOne, &time, nullptr);
  EXPECT_EQ(-1, time);
}

}  // namespace
}  // namespace toolbox::testing
