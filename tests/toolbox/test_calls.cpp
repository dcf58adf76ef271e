// The C calls at their edges: bad references, stale ones, errors per call, nothing left behind.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <thread>
#include <vector>

#include "opened_movie.h"

namespace toolbox::testing {
namespace {

struct Call {
  const char* name;
  OSErr error;
  std::function<bool(uintptr_t)> answers_nothing;  // and leaves its outputs
};

Call call_of(const char* name, OSErr error, std::function<bool(uintptr_t)> answers_nothing) {
  return {name, error, std::move(answers_nothing)};
}

/// A call of one expression over a number `n`.
#define NOTHING(kind, call, nothing) \
  call_of(#call, invalid##kind, [](auto n) { return (call) == (nothing); })

const std::vector<Call>& calls() {
  static const auto movie = [](uintptr_t n) { return reinterpret_cast<::Movie>(n); };
  static const auto track = [](uintptr_t n) { return reinterpret_cast<::Track>(n); };
  static const auto media = [](uintptr_t n) { return reinterpret_cast<::Media>(n); };
  static const std::vector<Call> kCalls = {
      NOTHING(Movie, GetMovieTrackCount(movie(n)), 0),
      NOTHING(Movie, GetMovieIndTrack(movie(n), 1), nullptr),
      NOTHING(Movie, GetMovieTrack(movie(n), 1), nullptr),
      NOTHING(Movie, GetMovieIndTrackType(movie(n), 1, VideoMediaType, 1), nullptr),
      NOTHING(Movie, GetMovieTimeScale(movie(n)), 0),
      NOTHING(Movie, GetMovieDuration(movie(n)), 0),
      {"DisposeMovie", invalidMovie, [](auto n) { return ::DisposeMovie(movie(n)), true; }},
      NOTHING(Track, GetTrackMovie(track(n)), nullptr),
      NOTHING(Track, GetTrackMedia(track(n)), nullptr),
      NOTHING(Track, GetTrackID(track(n)), 0),
      NOTHING(Track, GetTrackVolume(track(n)), 0),
      NOTHING(Track, GetTrackEnabled(track(n)), 0),
      NOTHING(Track, GetTrackDuration(track(n)), 0),
      NOTHING(Track, GetTrackOffset(track(n)), 0),
      NOTHING(Track, GetTrackLayer(track(n)), 0),
      NOTHING(Track, GetTrackCreationTime(track(n)), 0),
      NOTHING(Track, GetTrackModificationTime(track(n)), 0),
      NOTHING(Track, TrackTimeToMediaTime(0, track(n)), -1),
      {"GetTrackDimensions", invalidTrack,
       [](auto n) {
         Fixed width = 5;
         Fixed height = 6;
         GetTrackDimensions(track(n), &width, &height);
         return width == 5 && height == 6;
       }},
      {"GetTrackMatrix", invalidTrack,
       [](auto n) {
         MatrixRecord matrix;
         std::memset(&matrix, 9, sizeof matrix);
         const MatrixRecord before = matrix;
         GetTrackMatrix(track(n), &matrix);
         return std::memcmp(&before, &matrix, sizeof matrix) == 0;
       }},
      {"GetTrackNextInterestingTime", invalidTrack,
       [](auto n) {
         TimeValue time = 5;
         TimeValue duration = 6;
         GetTrackNextInterestingTime(track(n), nextTimeMediaSample, 0, 1, &time, &duration);
         return time == -1 && duration == 0;  // always written
       }},
      NOTHING(Media, GetMediaHandler(media(n)), nullptr),
      NOTHING(Media, GetMediaTrack(media(n)), nullptr),
      NOTHING(Media, GetMediaTimeScale(media(n)), 0),
      NOTHING(Media, GetMediaDuration(media(n)), 0),
      NOTHING(Media, GetMediaSampleCount(media(n)), 0),
      NOTHING(Media, GetMediaSampleDescriptionCount(media(n)), 0),
      {"GetMediaHandlerDescription", invalidMedia,
       [](auto n) {
         OSType type = 5;
         Str255 name = {3};
         OSType manufacturer = 6;
         GetMediaHandlerDescription(media(n), &type, name, &manufacturer);
         return type == 5 && name[0] == 3 && manufacturer == 6;
       }},
      {"GetMediaSampleDescription", invalidMedia,
       [](auto n) {
         const Handle handle = NewHandle(3);
         GetMediaSampleDescription(media(n), 1, handle);
         const bool same = GetHandleSize(handle) == 3;
         DisposeHandle(handle);
         return same;
       }},
      {"GetMediaDataRefCount", invalidMedia,
       [](auto n) {
         SInt16 count = 5;
         return GetMediaDataRefCount(media(n), &count) == invalidMedia && count == 5;
       }},
  };
  return kCalls;
}

BuiltMovie small_movie() {
  BuiltMovie built;
  built.tracks.push_back(video_track(8, 8, 3, 100));
  return built;
}

TEST(Calls, RefuseReferencesThatAreNotTheirs) {
  const OpenedTestMovie movie(small_movie());
  const uintptr_t numbers[] = {0, 1, 0xFFFFFFFF, UINTPTR_MAX, reinterpret_cast<uintptr_t>(&movie),
                               // A handler is neither movie nor track nor media.
                               reinterpret_cast<uintptr_t>(GetMediaHandler(movie.media(1)))};
  for (const Call& call : calls()) {
    SCOPED_TRACE(call.name);
    for (const uintptr_t number : numbers) {
      EXPECT_TRUE(call.answers_nothing(number)) << number;
      EXPECT_EQ(call.error, GetMoviesError()) << number;
      EXPECT_STRNE("", ToolboxErrorDetail());
    }
    const bool is_movie_call = call.error == invalidMovie;
    const auto wrong_kind = is_movie_call
                                ? reinterpret_cast<uintptr_t>(movie.track(1))
                                : reinterpret_cast<uintptr_t>(static_cast<::Movie>(movie));
    EXPECT_TRUE(call.answers_nothing(wrong_kind));
    EXPECT_EQ(call.error, GetMoviesError());
  }
}

TEST(Calls, ReferencesGoStaleWithTheirMovie) {
  const uint32_t before = ToolboxLiveReferences();
  uintptr_t movie = 0;
  uintptr_t track = 0;
  uintptr_t media = 0;
  {
    const OpenedTestMovie opened(small_movie());
    movie = reinterpret_cast<uintptr_t>(static_cast<::Movie>(opened));
    track = reinterpret_cast<uintptr_t>(opened.track(1));
    media = reinterpret_cast<uintptr_t>(opened.media(1));
    EXPECT_LE(movie | track | media, UINT32_MAX);
    EXPECT_EQ(before + 3, ToolboxLiveReferences());
  }
  EXPECT_EQ(before, ToolboxLiveReferences());
  for (const Call& call : calls()) {
    SCOPED_TRACE(call.name);
    EXPECT_TRUE(call.answers_nothing(call.error == invalidMovie   ? movie
                                     : call.error == invalidTrack ? track
                                                                  : media));
    EXPECT_EQ(call.error, GetMoviesError());
  }
}

TEST(Calls, EveryCallSetsTheErrorOfItsThread) {
  const OpenedTestMovie movie(small_movie());
  EXPECT_EQ(0, GetMovieTrackCount(nullptr));
  EXPECT_EQ(invalidMovie, GetMoviesError());
  EXPECT_EQ(invalidMovie, GetMoviesError());
  DisposeHandle(NewHandle(1));
  EXPECT_EQ(invalidMovie, GetMoviesError());
  std::thread([] { EXPECT_EQ(noErr, GetMoviesError()); }).join();
  EXPECT_EQ(1, GetMovieTrackCount(movie));
  EXPECT_EQ(noErr, GetMoviesError());
}

TEST(Calls, OpeningSaysWhatIsWrongWithAFile) {
  const uint32_t before = ToolboxLiveReferences();
  const TemporaryFile empty;
  const TemporaryFile text(Bytes{'h', 'e', 'l', 'l', 'o', ' ', 'y', 'o', 'u', '.'});
  const std::pair<std::string, OSErr> cases[] = {{"/nowhere/at all.mov", fnfErr},
                                                 {empty.path, noMovieFound},
                                                 {text.path, noMovieFound},
                                                 {"/tmp", fnfErr}};
  for (const auto& [path, error] : cases) {
    auto movie = reinterpret_cast<::Movie>(uintptr_t{1});
    EXPECT_EQ(error, ToolboxOpenMovie(path.c_str(), &movie)) << path;
    EXPECT_EQ(nullptr, movie);
    EXPECT_EQ(error, GetMoviesError());
    EXPECT_NE(nullptr, std::strstr(ToolboxErrorDetail(), path.c_str())) << ToolboxErrorDetail();
  }
  EXPECT_EQ(paramErr, ToolboxOpenMovie(nullptr, nullptr));
  EXPECT_EQ(before, ToolboxLiveReferences());
}

TEST(Calls, MemoryManagerAnswersForHandles) {
  const uint32_t before = ToolboxLiveHandles();
  Handle handle = nullptr;
  EXPECT_EQ(noErr, PtrToHand("abcd", &handle, 4));
  ASSERT_NE(nullptr, handle);
  EXPECT_EQ(0, std::memcmp(*handle, "abcd", 4));
  HLock(handle);
  HUnlock(handle);
  EXPECT_EQ(noErr, SetHandleSize(handle, 2));
  EXPECT_EQ(2, GetHandleSize(handle));
  EXPECT_EQ(before + 1, ToolboxLiveHandles());
  Handle untouched = handle;
  EXPECT_EQ(memFullErr, PtrToHand("x", &untouched, -1));
  EXPECT_EQ(paramErr, PtrToHand(nullptr, &untouched, 1));
  EXPECT_EQ(handle, untouched);
  DisposeHandle(handle);
  EXPECT_EQ(memWZErr, SetHandleSize(handle, 1));
  EXPECT_EQ(nilHandleErr, SetHandleSize(nullptr, 1));
  EXPECT_EQ(before, ToolboxLiveHandles());
}

TEST(Calls, FileRecordsStandForPathsOfAnyLength) {
  const TemporaryFile file;
  const std::string longest = "/nowhere/" + std::string(400, 'x');
  FSSpec spec;
  FSSpec again;
  ASSERT_EQ(noErr, ToolboxMakeFSSpec(longest.c_str(), &spec));
  ASSERT_EQ(noErr, ToolboxMakeFSSpec(longest.c_str(), &again));
  EXPECT_STREQ(longest.c_str(), ToolboxPathOfFSSpec(&spec));
  EXPECT_EQ(0, std::memcmp(&spec, &again, sizeof spec));
  FSRef ref;
  std::memset(&ref, 7, sizeof ref);
  const FSRef before = ref;
  EXPECT_EQ(fnfErr, ToolboxMakeFSRef(longest.c_str(), &ref));
  EXPECT_EQ(0, std::memcmp(&before, &ref, sizeof ref));
  EXPECT_EQ(nullptr, ToolboxPathOfFSRef(&ref));
  ASSERT_EQ(noErr, ToolboxMakeFSRef(file.path.c_str(), &ref));
  EXPECT_STREQ(file.path.c_str(), ToolboxPathOfFSRef(&ref));
  ASSERT_EQ(noErr, ToolboxMakeFSSpec("here", &spec));
  EXPECT_EQ('/', ToolboxPathOfFSSpec(&spec)[0]);
  const FSSpec made_up{};
  EXPECT_EQ(nullptr, ToolboxPathOfFSSpec(&made_up));
  EXPECT_EQ(nullptr, ToolboxPathOfFSSpec(nullptr));
  EXPECT_EQ(paramErr, ToolboxMakeFSSpec(nullptr, &spec));
}

}  // namespace
}  // namespace toolbox::testing
