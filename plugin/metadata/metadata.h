// What metadata objects hold: containers and items.
#pragma once

#include <krz/abi.h>

namespace krz {

/// Instance data of "QTMetaDataKRZ". Scripts may overwrite the error and the handle.
struct QTMetaDataClassData {
  int32_t lasterror;  // -1: nothing was asked of the toolbox
  int32_t handle;     // reference of the toolbox, owned; 0: no container
  uint64_t cursor;    // the item that was handed out last; 0: before the first
  int32_t reserved;
};

/// Instance data of "QTMetaDataItemKRZ".
struct QTMetaDataItemClassData {
  int32_t lasterror;  // -1: nothing was asked of the toolbox
  REALobject owner;   // the container object, locked
  uint64_t item;
  int32_t metadata;  // reference of the toolbox, retained by this object
  int32_t reserved;
};

}  // namespace krz
