// Edits of movie segments and the audio properties of a movie.
#include "host/audio_layout.h"
#include "host/entries.h"
#include "host/memory.h"
#include "movie/movie.h"

namespace krz {

Movie movie_of(REALmovieStruct* movie) { return movie ? REALgetMovieMovie(movie) : nullptr; }

// A nil movie reaches the toolbox in the four edits, which answers for it.

int32_t rbScaleMovieSegment(REALmovieStruct* movie, int32_t startTime, int32_t oldDuration,
                            int32_t newDuration) {
  return ScaleMovieSegment(REALgetMovieMovie(movie), startTime, oldDuration, newDuration);
}

int32_t rbInsertMovieSegment(REALmovieStruct* movie, REALmovieStruct* dest, int32_t srcIn,
                             int32_t srcDuration, int32_t dstIn) {
  if (!dest) return -1;
  return InsertMovieSegment(REALgetMovieMovie(movie), REALgetMovieMovie(dest), srcIn, srcDuration,
                            dstIn);
}

int32_t rbInsertEmptyMovieSegment(REALmovieStruct* movie, int32_t time, int32_t duration) {
  return InsertEmptyMovieSegment(REALgetMovieMovie(movie), time, duration);
}

int32_t rbDeleteMovieSegment(REALmovieStruct* movie, int32_t time, int32_t duration) {
  return DeleteMovieSegment(REALgetMovieMovie(movie), time, duration);
}

bool rbRateChangesPreservePitch(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  Boolean value = 0;
  return movie &&
         QTGetMovieProperty(movie, kQTPropertyClass_Audio,
                            kQTAudioPropertyID_RateChangesPreservePitch, sizeof value, &value,
                            nullptr) == noErr &&
         value;
}

void rbSetRateChangesPreservePitch(REALmovieStruct* host_movie, bool value) {
  const Movie movie = movie_of(host_movie);
  const Boolean byte = value;
  if (movie) {
    QTSetMovieProperty(movie, kQTPropertyClass_Audio, kQTAudioPropertyID_RateChangesPreservePitch,
                       sizeof byte, &byte);
  }
}

double rbPitch(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  float value = 0;
  const bool known =
      movie && QTGetMovieProperty(movie, kQTPropertyClass_Audio, kQTAudioPropertyID_Pitch,
                                  sizeof value, &value, nullptr) == noErr;
  return known ? value : 0.0;
}

void rbSetPitch(REALmovieStruct* host_movie, double value) {
  const Movie movie = movie_of(host_movie);
  const auto cents = static_cast<float>(value);
  if (movie) {
    QTSetMovieProperty(movie, kQTPropertyClass_Audio, kQTAudioPropertyID_Pitch, sizeof cents,
                       &cents);
  }
}

// Asks for the size twice and never for the value: the layout that scripts get is all zero.
REALobject rbAudioSummaryChannelLayout(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  if (!movie) return nullptr;
  OSType type = 0;
  ByteCount size = 0;
  UInt32 flags = 0;
  const auto ask = [&] {
    return QTGetMoviePropertyInfo(movie, kQTPropertyClass_Audio,
                                  kQTAudioPropertyID_SummaryChannelLayout, &type, &size,
                                  &flags) == noErr;
  };
  if (!ask()) return nullptr;
  const Memory buffer(AllocateClearMemory(static_cast<int64_t>(size)));
  if (!buffer || !ask()) return nullptr;
  return NewQTAudioChannelLayoutKRZ(static_cast<const AudioChannelLayout*>(buffer.get()));
}

}  // namespace krz
