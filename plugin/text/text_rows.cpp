// What movies and tracks have of text and chapter tracks.
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/strings.h"
#include "movie/movie.h"
#include "text/text_track.h"
#include "track/track.h"

namespace krz {

REALobject rbAddTextTrack(REALmovieStruct* host_movie, REALobjectArrayStruct* chapters,
                          REALstring type, bool isChapterTrack) {
  const Movie movie = movie_of(host_movie);
  if (!movie || !chapters) return nullptr;
  // Counts of more than 16 bits are cut to what is left of them.
  const auto count = static_cast<SInt16>(static_cast<uint32_t>(REALGetArrayUBound(chapters)) + 1);
  return MakeChapterTrackObject(
      QTText_AddTextTrack(movie, chapters, count, REALstringToOSType(type), isChapterTrack),
      host_movie);
}

int32_t rbRemoveIndTextTrack(REALmovieStruct* host_movie, int32_t index) {
  const Movie movie = movie_of(host_movie);
  return movie ? QTText_RemoveIndTextTrack(movie, static_cast<SInt16>(index)) : -1;
}

REALobject rbChapterTrackForMovie(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  return movie ? MakeChapterTrackObject(QTText_GetChapterTrackForMovie(movie), host_movie)
               : nullptr;
}

bool rbMovieHasAChapterTrack(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  return movie && QTText_MovieHasAChapterTrack(movie);
}

void rbSetTextTrackAsChapterTrack(REALobject object, REALstring type, bool isChapterTrack) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return;
  const Track track = to_reference<Track>(data.track);
  data.lasterror = QTText_SetTextTrackAsChapterTrack(GetTrackMovie(track), track,
                                                     REALstringToOSType(type), isChapterTrack);
}

bool rbTrackHasAChapterTrack(REALobject object) {
  const QTTrackClassData& data = track_data(object);
  return data.track && QTText_TrackHasAChapterTrack(to_reference<Track>(data.track));
}

bool rbIsChapterTrack(REALobject object) {
  const QTTrackClassData& data = track_data(object);
  return data.track && QTText_IsChapterTrack(to_reference<Track>(data.track));
}

REALobject rbChapterTrackForTrack(REALobject object) {
  const QTTrackClassData& data = track_data(object);
  if (!data.track) return nullptr;
  return MakeChapterTrackObject(QTText_GetChapterTrackForTrack(to_reference<Track>(data.track)),
                                data.movie);
}

}  // namespace krz
