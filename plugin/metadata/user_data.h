// What a user-data object holds.
#pragma once

#include <krz/abi.h>

namespace krz {

/// Instance data of "QTUserDataKRZ". Scripts may overwrite all but the tag.
struct QTUserDataClassData {
  uint32_t tag;       // 'QTUD'
  Boolean release;    // true: the object owns the list
  int32_t lasterror;  // -1: nothing was asked of the toolbox
  int32_t handle;     // reference of the toolbox; 0: no list
};

}  // namespace krz
