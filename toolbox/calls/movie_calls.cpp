// The calls of QuickTime/Movies.h that look at a movie as a whole and find its tracks.
#include <algorithm>

#include "calls/guard.h"
#include "calls/references.h"
#include "handlers/characteristics.h"

using namespace toolbox::calls;
using toolbox::Result;
using toolbox::Status;

namespace {

constexpr SInt32 kKnownTypeFlags =
    movieTrackMediaType | movieTrackCharacteristic | movieTrackEnabledOnly;

Status no_such_track(SInt32 index) {
  return Status(badTrackIndex, "the movie has no such track number " + std::to_string(index));
}

bool is_wanted(const toolbox::Track& track, OSType type, SInt32 flags) {
  if ((flags & movieTrackEnabledOnly) != 0 && !track.enabled()) return false;
  if (track.media() == nullptr) return false;
  const toolbox::FourCC media_type = track.media()->type();
  return (flags & movieTrackCharacteristic) != 0 ? toolbox::has_characteristic(media_type, type)
                                                 : media_type == type;
}

}  // namespace

// Reading the error leaves it.
TOOLBOX_CALL OSErr GetMoviesError() { return current_error(); }

TOOLBOX_CALL SInt32 GetMovieTrackCount(Movie movie) {
  return ask(SInt32{0}, find_movie, movie,
             [](auto& found) { return to_count(found.tracks().size()); });
}

TOOLBOX_CALL Track GetMovieIndTrack(Movie movie, SInt32 index) {
  return guarded_value<Track>(nullptr, [&]() -> Result<Track> {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    if (index < 1 || static_cast<size_t>(index) > found->tracks().size())
      return no_such_track(index);
    return reference_to(*found->tracks()[static_cast<size_t>(index) - 1]);
  });
}

TOOLBOX_CALL Track GetMovieTrack(Movie movie, SInt32 trackID) {
  return guarded_value<Track>(nullptr, [&]() -> Result<Track> {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    toolbox::Track* track = found->find_track(static_cast<uint32_t>(trackID));
    if (track == nullptr) {
      return Status(trackIDNotFound, "the movie has no track with ID " + std::to_string(trackID));
    }
    return reference_to(*track);
  });
}

TOOLBOX_CALL Track GetMovieIndTrackType(Movie movie, SInt32 index, OSType trackType, SInt32 flags) {
  return guarded_value<Track>(nullptr, [&]() -> Result<Track> {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    const bool by_type = (flags & movieTrackMediaType) != 0;
    const bool by_characteristic = (flags & movieTrackCharacteristic) != 0;
    if (by_type == by_characteristic || (flags & ~kKnownTypeFlags) != 0) {
      return Status(paramErr, "tracks are looked up either by media type or by characteristic");
    }
    SInt32 left = index;
    for (const auto& track : found->tracks()) {
      if (is_wanted(*track, trackType, flags) && --left == 0) return reference_to(*track);
    }
    return no_such_track(index);
  });
}

TOOLBOX_CALL TimeScale GetMovieTimeScale(Movie movie) {
  return ask(TimeScale{0}, find_movie, movie,
             [](auto& found) { return to_count(found.time_scale()); });
}

TOOLBOX_CALL TimeValue GetMovieTime(Movie movie, TimeRecord* time) {
  return guarded_value<TimeValue>(0, [&]() -> Result<TimeValue> {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    const TimeValue value = to_time_value(found->current_time());
    if (time != nullptr) {
      *time = {.value = {.lo = static_cast<UInt32>(value), .hi = 0},
               .scale = to_count(found->time_scale()),
               .base = nullptr};
    }
    return value;
  });
}

TOOLBOX_CALL void SetMovieTimeValue(Movie movie, TimeValue time) {
  guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie* const found, find_movie(movie));
    found->session().time = std::clamp<int64_t>(time, 0, std::max<int64_t>(found->duration(), 0));
    return {};
  });
}

TOOLBOX_CALL TimeValue GetMovieDuration(Movie movie) {
  return ask(TimeValue{0}, find_movie, movie,
             [](auto& found) { return to_time_value(found.duration()); });
}
