// Text and chapter tracks: how they are built, linked, found, read and removed. Times are in the
// movie's time scale.
#pragma once

#include <QuickTime/QuickTime.h>
#include <krz/abi.h>

namespace krz {

/// A new "QTChapterTrackKRZ" that keeps `movie` locked while it lives; nil for a nil track or movie
/// and without memory.
REALobject MakeChapterTrackObject(Track track, REALmovieStruct* movie);

/// Builds a text track of `count` chapter objects right below the first track of a media type, in
/// that track's media time scale, and makes it that track's chapter track if asked. What fails once
/// the track is there is not reported: the track is answered as far as it came. Nil before that.
Track QTText_AddTextTrack(Movie movie, REALobjectArrayStruct* chapters, SInt16 count,
                          OSType referenceType, bool isChapterTrack);

/// Makes a text track the chapter track of the first enabled track of a media type, or takes that
/// track's first chapter reference away, whichever track it names.
OSErr QTText_SetTextTrackAsChapterTrack(Movie movie, Track textTrack, OSType type,
                                        bool isChapterTrack);

/// Removes text track `index`, or all of them for 0. Fails: badTrackIndex when there is none.
OSErr QTText_RemoveIndTextTrack(Movie movie, SInt16 index);

/// Removes every reference that other tracks of the movie have to a track. The result of the last
/// removal; noErr when there was none.
OSErr QTUtils_DeleteAllReferencesToTrack(Track track);

bool QTText_TrackHasAChapterTrack(Track track);
Track QTText_GetChapterTrackForTrack(Track track);

/// Of the first enabled track that has one; disabled tracks do not count.
bool QTText_MovieHasAChapterTrack(Movie movie);
Track QTText_GetChapterTrackForMovie(Movie movie);

/// Whether any other track, enabled or not, names the track as its chapters.
bool QTText_IsChapterTrack(Track track);

/// The first chapter's time, and the next behind `*time`; -1 when there is none.
OSErr QTText_GetFirstChapterTime(Track track, TimeValue* time);
OSErr QTText_GetNextChapterTime(Track track, TimeValue* time);

/// Chapters count from 1; -1 for one that is not there.
TimeValue QTText_GetIndChapterTime(Track track, SInt32 index);
SInt32 QTText_GetChapterCount(Track track);

// The rows that other classes have of these.

REALobject rbAddTextTrack(REALmovieStruct* movie, REALobjectArrayStruct* chapters, REALstring type,
                          bool isChapterTrack);
int32_t rbRemoveIndTextTrack(REALmovieStruct* movie, int32_t index);
REALobject rbChapterTrackForMovie(REALmovieStruct* movie);
bool rbMovieHasAChapterTrack(REALmovieStruct* movie);

void rbSetTextTrackAsChapterTrack(REALobject object, REALstring type, bool isChapterTrack);
bool rbTrackHasAChapterTrack(REALobject object);
bool rbIsChapterTrack(REALobject object);
REALobject rbChapterTrackForTrack(REALobject object);

}  // namespace krz
