// Time codes: what an object holds, the functions behind the rows of other classes, and the tracks
// that they come from.
#pragma once

#include <QuickTime/QuickTime.h>
#include <krz/abi.h>

namespace krz {

/// Instance data of "QTTimeCodeKRZ".
struct QTTimeCodeClassData {
  int32_t frame_number;
  TimeCodeDef definition;
  TimeCodeRecord record;
  REALstring source_name;  // owned
};

enum { kTrackReferenceTimeCode = TimeCodeMediaType };

/// The text of the time code of the movie's first timecode track, where the movie stands; emptied
/// first. Fails: -1 without such a track or time code.
ComponentResult QTTC_ShowCurrentTimeCode(Movie movie, Str255 text);

/// Removes every timecode track, with the references that other tracks have to it.
void QTTC_DeleteTimeCodeTracks(Movie movie);

// The rows that movies have of these.

/// Adds a timecode track as the parameters say, below the first video track. -1 without a movie,
/// trackNotInMovie without video, 0 when the track, its media or its description cannot be made.
int32_t AddTimeCodeToMovie(REALmovieStruct* movie, REALobject parameters);
void DeleteTimeCodeTracks(REALmovieStruct* movie);
bool MovieHasTimeCodeTrack(REALmovieStruct* movie);
REALstring GetCurrentTimeCodeString(REALmovieStruct* movie);
bool Movie_GetTimeCodeDisplay(REALmovieStruct* movie);
void Movie_SetTimeCodeDisplay(REALmovieStruct* movie, bool value);

// The rows that tracks have. Errors of the toolbox go to the track's "Lasterror".

REALobject rbTCGetTimeCodeAtTime(REALobject object, int32_t MediaTime);
REALobject rbTCGetCurrentTimeCode(REALobject object);
void rbTCFrameNumberToTimeCode(REALobject object, REALobject timecode);
void rbTCTimeCodeToFrameNumber(REALobject object, REALobject timecode);
REALstring rbTCTimeCodeToString(REALobject object, REALobject timecode);

}  // namespace krz
