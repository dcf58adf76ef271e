// The calls of QuickTime/Movies.h that look at a movie as a whole and find its tracks.
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

TOOLBOX_CALL TimeValue GetMovieTime(Movie movie, TimeRecord* currentTime) {
  return ask(TimeValue{0}, find_movie, movie, [&](auto& found) {
    const int64_t time = found.current_time();
    if (currentTime != nullptr) {
      *currentTime = {{static_cast<UInt32>(time), static_cast<SInt32>(time >> 32)},
                      to_count(found.time_scale()),
                      nullptr};
    }
    return to_time_value(time);
  });
}

TOOLBOX_CALL void SetMovieTimeValue(Movie movie, TimeValue newTime) {
  guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    found->session().time = newTime;
    return {};
  });
}

TOOLBOX_CALL SInt16 GetMoviePreferredVolume(Movie movie) {
  return ask(SInt16{0}, find_movie, movie,
             [](auto& found) { return found.header().preferred_volume; });
}

TOOLBOX_CALL void SetMoviePreferredVolume(Movie movie, SInt16 volume) {
  guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    found->change_header().preferred_volume = volume;
    return {};
  });
}

TOOLBOX_CALL TimeValue GetMovieDuration(Movie movie) {
  return ask(TimeValue{0}, find_movie, movie,
             [](auto& found) { return to_time_value(found.duration()); });
}
