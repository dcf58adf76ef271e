// Finds chapter tracks and walks their chapters.
#include "text/text_track.h"

namespace krz {
namespace {

constexpr Fixed kForward = 0x10000;
constexpr SInt16 kNextSample = nextTimeMediaSample;
constexpr SInt16 kThisOrNextSample = nextTimeMediaSample | nextTimeEdgeOK;

}  // namespace

bool QTText_TrackHasAChapterTrack(Track track) {
  return QTText_GetChapterTrackForTrack(track) != nullptr;
}

Track QTText_GetChapterTrackForTrack(Track track) {
  return GetTrackReference(track, kTrackReferenceChapterList, 1);
}

bool QTText_MovieHasAChapterTrack(Movie movie) {
  return QTText_GetChapterTrackForMovie(movie) != nullptr;
}

Track QTText_GetChapterTrackForMovie(Movie movie) {
  const SInt32 count = GetMovieTrackCount(movie);
  for (SInt32 i = 1; i <= count; ++i) {
    const Track track = GetMovieIndTrack(movie, i);
    // Disabled tracks do not count: players do not look at them either.
    if (!GetTrackEnabled(track)) continue;
    if (const Track chapters = QTText_GetChapterTrackForTrack(track)) return chapters;
  }
  return nullptr;
}

bool QTText_IsChapterTrack(Track track) {
  const Movie movie = GetTrackMovie(track);
  if (!movie) return false;
  const SInt32 count = GetMovieTrackCount(movie);
  for (SInt32 i = 1; i <= count; ++i) {
    const Track other = GetMovieIndTrack(movie, i);
    if (!other || other == track) continue;
    const SInt32 references = GetTrackReferenceCount(other, kTrackReferenceChapterList);
    for (SInt32 k = 1; k <= references; ++k) {
      if (GetTrackReference(other, kTrackReferenceChapterList, k) == track) return true;
    }
  }
  return false;
}

OSErr QTText_GetFirstChapterTime(Track track, TimeValue* time) {
  if (!track) {
    *time = -1;
    return invalidTrack;
  }
  GetTrackNextInterestingTime(track, kThisOrNextSample, 0, kForward, time, nullptr);
  return GetMoviesError();
}

OSErr QTText_GetNextChapterTime(Track track, TimeValue* time) {
  if (!track) {
    *time = -1;
    return invalidTrack;
  }
  GetTrackNextInterestingTime(track, kNextSample, *time, kForward, time, nullptr);
  return GetMoviesError();
}

TimeValue QTText_GetIndChapterTime(Track track, SInt32 index) {
  TimeValue time = -1;
  if (!track || index < 1) return time;
  QTText_GetFirstChapterTime(track, &time);
  // From -1 the walk would begin again, so the end is the end.
  for (SInt32 i = 1; i < index && time != -1; ++i) QTText_GetNextChapterTime(track, &time);
  return time;
}

SInt32 QTText_GetChapterCount(Track track) {
  if (!track) return 0;
  TimeValue time = -1;
  QTText_GetFirstChapterTime(track, &time);
  SInt32 count = 0;
  while (time != -1) {
    QTText_GetNextChapterTime(track, &time);
    ++count;
  }
  return count;
}

}  // namespace krz
