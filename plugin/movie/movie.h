// The functions behind the rows that the module adds to the host's class "movie".
#pragma once

#include <QuickTime/QuickTime.h>
#include <krz/abi.h>

namespace krz {

/// The toolbox's movie behind the host's; nil when there is none.
Movie movie_of(REALmovieStruct* movie);

// Times are in the movie's time scale; results are the toolbox's codes.
int32_t rbScaleMovieSegment(REALmovieStruct* movie, int32_t startTime, int32_t oldDuration,
                            int32_t newDuration);
int32_t rbInsertMovieSegment(REALmovieStruct* movie, REALmovieStruct* dest, int32_t srcIn,
                             int32_t srcDuration, int32_t dstIn);
int32_t rbInsertEmptyMovieSegment(REALmovieStruct* movie, int32_t time, int32_t duration);
int32_t rbDeleteMovieSegment(REALmovieStruct* movie, int32_t time, int32_t duration);

bool rbRateChangesPreservePitch(REALmovieStruct* movie);
void rbSetRateChangesPreservePitch(REALmovieStruct* movie, bool value);
double rbPitch(REALmovieStruct* movie);
void rbSetPitch(REALmovieStruct* movie, double value);
REALobject rbAudioSummaryChannelLayout(REALmovieStruct* movie);

// movie_apertures.cpp: -1 and nil without a movie.
int32_t rbGenerateMovieApertureModeDimensions(REALmovieStruct* movie);
int32_t rbRemoveMovieApertureModeDimensions(REALmovieStruct* movie);
int32_t rbSetMovieApertureMode(REALmovieStruct* movie, REALstring theApertureMode);
REALstring rbGetMovieApertureMode(REALmovieStruct* movie);

}  // namespace krz
