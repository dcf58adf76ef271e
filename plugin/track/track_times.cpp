// When a track plays: its duration, its place in the movie, its dates and the times at which
// something happens in it.
#include "host/fixed_point.h"
#include "host/instance_data.h"
#include "track/track.h"

namespace krz {
namespace {

constexpr Fixed kFixedOne = 0x10000;

constexpr SInt16 kNextSample = nextTimeMediaSample;
constexpr SInt16 kThisOrNextSample = nextTimeMediaSample | nextTimeEdgeOK;

Track track_of(REALobject object) { return to_reference<Track>(track_data(object).track); }

bool next_interesting_time(REALobject object, SInt16 flags, Fixed rate, int32_t* time,
                           int32_t* duration) {
  QTTrackClassData& data = track_data(object);
  TimeValue found_time = *time;
  TimeValue found_duration = *duration;
  GetTrackNextInterestingTime(to_reference<Track>(data.track), flags, *time, rate, &found_time,
                              &found_duration);
  *time = found_time;
  *duration = found_duration;
  data.lasterror = GetMoviesError();
  return true;
}

}  // namespace

int32_t rbTrackDuration(REALobject object) {
  const Track track = track_of(object);
  return track ? GetTrackDuration(track) : 0;
}

int32_t rbTrackOffset(REALobject object) {
  const Track track = track_of(object);
  return track ? GetTrackOffset(track) : 0;
}

void rbSetTrackOffset(REALobject object, int32_t value) {
  if (const Track track = track_of(object)) SetTrackOffset(track, value);
}

int32_t rbTrackCreationTime(REALobject object) {
  const Track track = track_of(object);
  return track ? static_cast<int32_t>(GetTrackCreationTime(track)) : 0;
}

int32_t rbTrackModificationTime(REALobject object) {
  const Track track = track_of(object);
  return track ? static_cast<int32_t>(GetTrackModificationTime(track)) : 0;
}

bool rbNextInterestingTime(REALobject object, int32_t* time, int32_t* duration) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return false;
  // A sample that begins right at the time counts, save for times before the movie.
  const SInt16 flags = *time >= 0 ? kThisOrNextSample : kNextSample;
  return next_interesting_time(object, flags, kFixedOne, time, duration);
}

bool rbNextInterestingTimeWithRate(REALobject object, int32_t* time, int32_t* duration,
                                   double rate) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return false;
  // Unlike without a rate, a sample that begins right at the time counts at the start of the movie
  // only. A loop in either direction moves on from the time it found, save from 0, which it finds
  // again.
  const SInt16 flags = *time == 0 ? kThisOrNextSample : kNextSample;
  return next_interesting_time(object, flags, FixedFromDouble(rate), time, duration);
}

}  // namespace krz
