// What metadata objects hold: containers and items.
#pragma once

#include <QuickTime/QuickTime.h>
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

/// The containers of a movie and a track as new "QTMetaDataKRZ" objects; nil when there is none.
REALobject rbQTCopyMovieMetaData(REALmovieStruct* movie);
REALobject rbQTCopyTrackMetaData(REALobject track);

// Rows of "QTMetaDataKRZ", in metadata_container.cpp.
void QTMetaDataDestructor(REALobject object);
void QTMetaDataSetPropertyString(REALobject object, REALstring what, REALstring data);
void QTMetaDataSetPropertyMemory(REALobject object, REALstring what, REALmemoryBlockStruct* data,
                                 int32_t offset, int32_t size);
REALstring QTMetaDataGetPropertyString(REALobject object, REALstring what);
REALmemoryBlockStruct* QTMetaDataGetPropertyMemory(REALobject object, REALstring what);
int32_t CountItems(REALobject object);
REALobject FirstItem(REALobject object);
REALobject NextItem(REALobject object);
void RemoveItem(REALobject object, REALobject item);
void rbQTMetaDataRemoveItemsWithKey(REALobject object, REALstring StorageFormat,
                                    REALstring KeyFormat, REALstring Key);
int32_t rbQTMetaDataGetItemCountWithKey(REALobject object, REALstring StorageFormat,
                                        REALstring KeyFormat, REALstring Key);
void rbQTMetaDataRemoveItemsWithKeyCode(REALobject object, REALstring StorageFormat,
                                        REALstring KeyCode, REALstring Key);
int32_t rbQTMetaDataGetItemCountWithKeyCode(REALobject object, REALstring StorageFormat,
                                            REALstring KeyCode, REALstring Key);
REALobject rbQTMetaDataAddItem(REALobject object, REALstring StorageFormat, REALstring KeyFormat,
                               REALstring Key, REALstring Value, int32_t DataType);
REALobject rbQTMetaDataAddItemCode(REALobject object, REALstring StorageFormat,
                                   REALstring KeyFormat, REALstring KeyCode, REALstring Value,
                                   int32_t DataType);

}  // namespace krz
