// What a user-data object holds.
#pragma once

#include <QuickTime/QuickTime.h>
#include <krz/abi.h>

namespace krz {

/// Instance data of "QTUserDataKRZ". Scripts may overwrite all but the tag.
struct QTUserDataClassData {
  uint32_t tag;       // 'QTUD'
  Boolean release;    // true: the object owns the list
  int32_t lasterror;  // -1: nothing was asked of the toolbox
  int32_t handle;     // reference of the toolbox; 0: no list
};

/// A new "QTUserDataKRZ" over a list; with `release` it owns the list. Nil when the host cannot
/// make one.
REALobject CreateQTUserData(UserData list, bool release);

/// The objects of a movie's and a track's own list; nil without a list.
REALobject rbMovieUserData(REALmovieStruct* movie);
REALobject rbTrackUserData(REALobject track);

}  // namespace krz
