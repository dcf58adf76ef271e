// Movies made from nothing by the C calls: what is added is read back, sample by sample.
#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <random>

#include "atoms/atom_writer.h"
#include "base/big_endian.h"
#include "made_movie.h"
#include "opened_movie.h"
#include "scratch_folder.h"
#include "test_bytes.h"

namespace toolbox::testing {
namespace {

constexpr SInt32 kUntouched = 4711;

TEST(MakingMovies, ANewMovieHasATimeScaleAndNothingElse) {
  ::Movie movie = reinterpret_cast<::Movie>(kUntouched);
  EXPECT_EQ(paramErr, ToolboxNewMovie(0, &movie));
  EXPECT_EQ(nullptr, movie);
  EXPECT_EQ(paramErr, ToolboxNewMovie(600, nullptr));

  const MadeMovie made(1000);
  EXPECT_EQ(1000, GetMovieTimeScale(made));
  EXPECT_EQ(0, GetMovieDuration(made));
  EXPECT_EQ(0, GetMovieTrackCount(made));
  EXPECT_EQ(noErr, ToolboxCheckMovie(made));
}

TEST(MakingMovies, NewTracksStandBehindTheOthersAndShowNothing) {
  const MadeMovie made(600);
  const ::Track first = NewMovieTrack(made, 320 << 16, 240 << 16, 0);
  const ::Track second = NewMovieTrack(made, 0, 0, 0x100);
  EXPECT_EQ(2, GetMovieTrackCount(made));
  EXPECT_EQ(second, GetMovieIndTrack(made, 2));
  EXPECT_EQ(1, GetTrackID(first));
  EXPECT_EQ(2, GetTrackID(second));
  EXPECT_EQ(0x100, GetTrackVolume(second));
  EXPECT_TRUE(GetTrackEnabled(first));
  Fixed width = 0;
  Fixed height = 0;
  GetTrackDimensions(first, &width, &height);
  EXPECT_EQ(320 << 16, width);
  EXPECT_EQ(240 << 16, height);
  EXPECT_EQ(nullptr, GetTrackMedia(first));
  EXPECT_EQ(0, GetTrackDuration(first));
}

TEST(MakingMovies, ATrackGetsOneMedia) {
  const MadeMovie made(600);
  const ::Track track = NewMovieTrack(made, 0, 0, 0);
  EXPECT_EQ(nullptr, NewTrackMedia(track, TextMediaType, 0, nullptr, 0));
  EXPECT_EQ(paramErr, GetMoviesError());
  EXPECT_EQ(nullptr, NewTrackMedia(track, 0, 600, nullptr, 0));
  EXPECT_EQ(cantFindHandler, GetMoviesError());
  EXPECT_EQ(nullptr, NewTrackMedia(nullptr, TextMediaType, 600, nullptr, 0));
  EXPECT_EQ(invalidTrack, GetMoviesError());

  const ::Media media = NewTrackMedia(track, TextMediaType, 44100, nullptr, 0);
  ASSERT_NE(nullptr, media) << ToolboxErrorDetail();
  EXPECT_EQ(media, GetTrackMedia(track));
  OSType type = 0;
  GetMediaHandlerDescription(media, &type, nullptr, nullptr);
  EXPECT_EQ(OSType{TextMediaType}, type);
  EXPECT_EQ(44100, GetMediaTimeScale(media));
  EXPECT_EQ(0, GetMediaDuration(media));
  EXPECT_EQ(0, GetMediaSampleCount(media));
  SInt16 references = 0;
  EXPECT_EQ(noErr, GetMediaDataRefCount(media, &references));
  EXPECT_EQ(1, references);
  EXPECT_EQ(nullptr, NewTrackMedia(track, TextMediaType, 600, nullptr, 0));
  EXPECT_EQ(invalidTrack, GetMoviesError());
}

TEST(AddingSamples, SoundIsAddedAndReadManyFramesAtOnce) {
  const MadeMovie made(600);
  const ::Media media = made.add_media(SoundMediaType, 44100);
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  Bytes frames(size_t{100'000} * 4);
  std::iota(frames.begin(), frames.end(), uint8_t{0});
  ASSERT_EQ(noErr, add_sample(media, frames, 1, sound_description(), 100'000));
  EXPECT_EQ(100'000, GetMediaSampleCount(media));
  EXPECT_EQ(100'000, GetMediaDuration(media));

  const ReadBack rest = read_sample(media, 44'000, 0);
  EXPECT_EQ(44'000, rest.time);
  EXPECT_EQ(100, rest.count) << "the rest of a chunk of one second";
  EXPECT_EQ(Bytes(frames.begin() + 44'000 * 4, frames.begin() + 44'100 * 4), rest.data);
  const ReadBack all = read_sample(media, 0, 100'000);
  EXPECT_EQ(100'000, all.count);
  EXPECT_EQ(frames, all.data);
  EXPECT_EQ(1, read_sample(media, 99'999, 7).count);
}

TEST(AddingSamples, ATimecodeDescriptionMayComeInTheMachinesOrder) {
  const MadeMovie made(2997);
  const ::Media media = made.add_media(TimeCodeMediaType, 2997);
  Bytes native(38);
  const auto put = [&](size_t at, uint32_t number) { std::memcpy(&native[at], &number, 4); };
  put(0, 38);
  put(4, TimeCodeMediaType);
  put(20, 3);
  put(24, 2997);
  put(28, 100);
  native[32] = 30;
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  ASSERT_EQ(noErr, add_sample(media, hex("00000E10"), 5994, native));
  const ReadBack sample = read_sample(media, 5993);
  EXPECT_EQ(hex("00000E10"), sample.data);
  EXPECT_EQ(hex("00000026 746D6364 000000000000 0001 00000000 00000003 00000BB5 00000064 1E 00"
                "00000000"),
            sample.description);
  // Read out in the order of files, it is the same description still.
  ASSERT_EQ(noErr, add_sample(media, hex("00000000"), 1, sample.description));
  EXPECT_EQ(1, GetMediaSampleDescriptionCount(media));
}

TEST(AddingSamples, RefusedSamplesChangeNothing) {
  const MadeMovie made(600);
  const ::Media media = made.add_media(TextMediaType, 600);
  const Bytes data = hex("0002 4869");
  EXPECT_EQ(dataNotOpenForWrite, add_sample(media, data, 1, text_description()));
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  EXPECT_EQ(dataAlreadyOpenForWrite, BeginMediaEdits(media));

  EXPECT_EQ(paramErr, add_sample(media, data, 1, text_description(), 3)) << "4 bytes, 3 samples";
  EXPECT_EQ(paramErr, add_sample(media, data, 1, text_description(), 0));
  EXPECT_EQ(paramErr, add_sample(media, data, 1, text_description(), -1));
  EXPECT_EQ(invalidDuration, add_sample(media, data, -1, text_description()));
  EXPECT_EQ(invalidSampleDescription, add_sample(media, data, 1, hex("00000008 74657874")));
  Bytes wrong_size = text_description();
  wrong_size[3] ^= 1;
  EXPECT_EQ(invalidSampleDescription, add_sample(media, data, 1, wrong_size));
  const TestHandle handle(data);
  const TestHandle description(text_description());
  for (const auto& [offset, size] : {std::pair{-1, 1u}, {5, 0u}, {1, 4u}, {0, 0xFFFFFFFFu}}) {
    EXPECT_EQ(paramErr, AddMediaSample(media, handle, offset, size, 1, description, 1, 0, nullptr));
  }
  EXPECT_EQ(0, GetMediaSampleCount(media));
  EXPECT_EQ(0, GetMediaSampleDescriptionCount(media));

  EXPECT_EQ(noErr, AddMediaSample(media, handle, 1, 3, 1, description, 3, 1, nullptr));
  EXPECT_EQ(hex("02"), read_sample(media, 0).data);
  EXPECT_EQ(hex("69"), read_sample(media, 2).data);
  EXPECT_EQ(mediaSampleNotSync, read_sample(media, 2).flags);
  EXPECT_EQ(noErr, EndMediaEdits(media));
  EXPECT_EQ(noErr, EndMediaEdits(media));
  EXPECT_EQ(dataNotOpenForWrite, add_sample(media, data, 1, text_description()));
}

TEST(AddingSamples, WhatTheTablesCouldNotHoldIsRefusedWithoutAskingForIt) {
  const MadeMovie made(600);
  const ::Media media = made.add_media(TextMediaType, 600);
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  EXPECT_EQ(memFullErr, add_sample(media, {}, 1, text_description(), INT32_MAX));
  EXPECT_EQ(0, GetMediaSampleCount(media));
  EXPECT_EQ(noErr, add_sample(media, {}, 1, text_description(), 5));
  EXPECT_EQ(5, GetMediaSampleCount(media));
}

TEST(AddingSamples, SamplesOfTheFileStayInFrontOfNewOnes) {
  BuiltMovie built;
  built.tracks.push_back(text_track({{"one", 600}, {"two", 300}}));
  const OpenedTestMovie movie(built);
  const ::Media media = movie.media(1);
  const ReadBack one = read_sample(media, 0);
  const ReadBack two = read_sample(media, 600);
  ASSERT_EQ(noErr, BeginMediaEdits(media)) << ToolboxErrorDetail();
  ASSERT_EQ(noErr, add_sample(media, hex("0003 746871"), 100, one.description));
  EXPECT_EQ(one.data, read_sample(media, 599).data);
  EXPECT_EQ(two.data, read_sample(media, 899).data);
  EXPECT_EQ(hex("0003 746871"), read_sample(media, 900).data);
  EXPECT_EQ(1, GetMediaSampleDescriptionCount(media)) << "an equal one is there";
  EXPECT_EQ(1000, GetMediaDuration(media));
  Bytes other = one.description;
  other[19] ^= 1;
  ASSERT_EQ(noErr, add_sample(media, hex("0000"), 100, other));
  EXPECT_EQ(2, read_sample(media, 1000).description_index);
}

TEST(AddingSamples, AFileThatMayNotBeWrittenIsReportedBeforeTheWork) {
  if (geteuid() == 0) GTEST_SKIP() << "who may do anything finds no file read-only";
  BuiltMovie built;
  built.tracks.push_back(text_track({{"one", 600}}));
  const ScratchFolder folder;
  const std::string path = folder.path("movie.mov");
  ASSERT_TRUE(write_movie(built, path).ok());
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  ::Movie movie = nullptr;
  ASSERT_EQ(noErr, ToolboxOpenMovie(path.c_str(), &movie));
  EXPECT_EQ(wrPermErr, BeginMediaEdits(GetTrackMedia(GetMovieIndTrack(movie, 1))));
  ::DisposeMovie(movie);
}

/// What a random media should hold.
struct Expected {
  Bytes data;
  TimeValue time = 0;
  TimeValue duration = 0;
  SInt16 flags = 0;
  SInt32 description = 0;
};

TEST(AddingSamples, RandomSamplesComeBackInAnyOrder) {
  for (uint32_t seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto up_to = [&](uint32_t most) {
      return static_cast<uint32_t>(random() % (most + uint64_t{1}));
    };
    const MadeMovie made(600);
    const ::Media media = made.add_media(VideoMediaType, static_cast<TimeScale>(1 + up_to(90'000)));
    ASSERT_EQ(noErr, BeginMediaEdits(media));
    std::vector<Expected> expected;
    TimeValue time = 0;
    for (int calls = 0; calls < 60; ++calls) {
      const auto count = static_cast<SInt32>(1 + up_to(3));
      const auto duration = static_cast<TimeValue>(1 + up_to(2) * up_to(2000));
      const auto flags = static_cast<SInt16>(up_to(1));
      const uint32_t size = up_to(3) * up_to(40);
      Bytes data(size * static_cast<size_t>(count));
      for (uint8_t& byte : data) byte = static_cast<uint8_t>(random());
      Bytes description = text_description();
      description[20] = static_cast<uint8_t>(up_to(1));
      TimeValue begin_time = kUntouched;
      ASSERT_EQ(noErr, add_sample(media, data, duration, description, count, flags, &begin_time));
      ASSERT_EQ(time, begin_time);
      for (SInt32 i = 0; i < count; ++i, time += duration) {
        const auto begin = data.begin() + static_cast<ptrdiff_t>(size) * i;
        expected.push_back({Bytes(begin, begin + size), time, duration, flags, description[20]});
      }
      if (up_to(4) != 0) continue;
      const Expected& any = expected[up_to(static_cast<uint32_t>(expected.size()) - 1)];
      const ReadBack sample =
          read_sample(media, any.time + static_cast<TimeValue>(up_to(any.duration - 1)));
      ASSERT_EQ(any.data, sample.data);
      ASSERT_EQ(any.time, sample.time);
      ASSERT_EQ(any.duration, sample.duration);
      ASSERT_EQ(any.flags, sample.flags);
      ASSERT_EQ(any.description, sample.description[20]);
    }
    EXPECT_EQ(static_cast<SInt32>(expected.size()), GetMediaSampleCount(media));
    EXPECT_EQ(time, GetMediaDuration(media));
  }
}

TEST(AddingSamples, ManySamplesOneByOneCostNoMoreEach) {
  const MadeMovie made(600);
  const ::Media media = made.add_media(TextMediaType, 600);
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  const TestHandle data(hex("0002 4869"));
  const TestHandle description(text_description());
  // Tables made anew for every sample would take minutes here.
  for (TimeValue i = 0; i < 20'000; ++i) {
    ASSERT_EQ(noErr, AddMediaSample(media, data, 0, 4, 1 + i % 3, description, 1, 0, nullptr));
    if (i % 100 == 0) {
      ASSERT_EQ(4u, read_sample(media, 0).data.size());
    }
  }
  EXPECT_EQ(20'000, GetMediaSampleCount(media));
}

TEST(InsertingMedia, SpansAreShownWhereTheyAreAskedFor) {
  const MadeMovie made(600);
  const ::Media media = made.add_media(TextMediaType, 1000);
  const ::Track track = GetMediaTrack(media);
  EXPECT_EQ(noErr, InsertMediaIntoTrack(track, 0, 0, 0, 0x10000)) << "nothing of an empty media";
  EXPECT_EQ(0, GetTrackDuration(track));
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  ASSERT_EQ(noErr, add_sample(media, hex("0000"), 2000, text_description()));
  ASSERT_EQ(noErr, EndMediaEdits(media));

  struct Case {
    TimeValue start, time, duration;
    Fixed rate;
    OSErr error;
  };
  const Case kRefused[] = {
      {0, 0, 1000, 0, paramErr},
      {0, 0, 1000, -0x10000, paramErr},
      {0, 0, -1, 0x10000, invalidDuration},
      {-2, 0, 1, 0x10000, invalidTime},
      {0, -1, 1, 0x10000, invalidTime},
      {0, 2001, 1, 0x10000, invalidTime},
      {0, 1000, 1001, 0x10000, invalidDuration},
  };
  for (const Case& each : kRefused) {
    SCOPED_TRACE(each.error);
    EXPECT_EQ(each.error,
              InsertMediaIntoTrack(track, each.start, each.time, each.duration, each.rate));
  }
  EXPECT_EQ(invalidTrack, InsertMediaIntoTrack(nullptr, 0, 0, 1, 0x10000));
  EXPECT_EQ(0, GetTrackDuration(track));

  EXPECT_EQ(noErr, InsertMediaIntoTrack(track, -1, 0, 1000, 0x10000));
  EXPECT_EQ(600, GetTrackDuration(track));
  EXPECT_EQ(noErr, InsertMediaIntoTrack(track, 300, 1000, 1000, 0x20000)) << "twice as fast";
  EXPECT_EQ(900, GetTrackDuration(track));
  EXPECT_EQ(noErr, InsertMediaIntoTrack(track, 1200, 0, 1000, 0x10000)) << "behind a gap";
  EXPECT_EQ(1800, GetTrackDuration(track));
  EXPECT_EQ(1800, GetMovieDuration(made));
  const std::pair<TimeValue, TimeValue> kTimes[] = {{0, 0},      {299, 498}, {300, 1000},
                                                    {450, 1500}, {600, 500}, {899, 998},
                                                    {900, -1},   {1199, -1}, {1200, 0}};
  for (const auto& [movie_time, media_time] : kTimes) {
    EXPECT_EQ(media_time, TrackTimeToMediaTime(movie_time, track)) << movie_time;
  }
}

}  // namespace
}  // namespace toolbox::testing
