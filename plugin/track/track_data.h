// What a track object holds.
#pragma once

#include <krz/abi.h>

namespace krz {

/// Instance data of "QTTrackKRZ". Scripts may overwrite every field.
struct QTTrackClassData {
  REALmovieStruct* movie;  // locked by the object
  int32_t lasterror;       // -1: nothing was asked of the toolbox
  int32_t track;           // reference of the toolbox; 0: no track
};

}  // namespace krz
