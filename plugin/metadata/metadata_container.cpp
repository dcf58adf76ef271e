// The methods of "QTMetaDataKRZ": a container's properties, its items and their keys.
#include "host/encodings.h"
#include "host/entries.h"
#include "host/exceptions.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "host/registration.h"
#include "host/strings.h"
#include "host/text_view.h"
#include "metadata/metadata.h"
#include "movie/movie.h"
#include "track/track.h"

namespace krz {
namespace {

constexpr int32_t kNotAttempted = -1;

QTMetaDataClassData& container_data(REALobject object) {
  return instance_data<QTMetaDataClassData>(object, QTMetaDataClass);
}

QTMetaDataItemClassData& item_data(REALobject object) {
  return instance_data<QTMetaDataItemClassData>(object, QTMetaDataItemClass);
}

QTMetaDataRef metadata_of(const QTMetaDataClassData& data) {
  return to_reference<QTMetaDataRef>(data.handle);
}

/// The object's data, with the error preset.
QTMetaDataClassData& begin(REALobject object) {
  QTMetaDataClassData& data = container_data(object);
  data.lasterror = kNotAttempted;
  return data;
}

/// The code of a property, a storage or a key format; nil is 0, the wildcard.
OSType code_of(REALstring string) { return string ? REALstringToOSType(string) : 0; }

/// A new item object that keeps the container and its object alive.
REALobject NewMetaDataItemObject(REALobject container, QTMetaDataItem item) {
  const REALobject object = REALnewInstance("QTMetaDataItemKRZ");
  if (!object) return nullptr;
  QTMetaDataItemClassData& data = item_data(object);
  data.item = item;
  data.owner = container;
  data.metadata = container_data(container).handle;
  REALLockObject(container);
  QTMetaDataRetain(to_reference<QTMetaDataRef>(data.metadata));
  return object;
}

/// A property's bytes, `size` of them; nothing when it cannot be had. All property calls name the
/// class of items although they ask the container: so it always was.
Memory read_property(QTMetaDataClassData& data, REALstring what, ByteCount& size) {
  if (!data.handle) return nullptr;
  const OSType id = code_of(what);
  OSType type = 0;
  UInt32 flags = 0;
  ByteCount needed = 0;
  QTMetaDataGetPropertyInfo(metadata_of(data), kPropertyClass_MetaDataItem, id, &type, &needed,
                            &flags);
  Memory buffer(AllocateClearMemory(static_cast<int64_t>(needed)));
  size = 0;
  data.lasterror = QTMetaDataGetProperty(metadata_of(data), kPropertyClass_MetaDataItem, id, needed,
                                         buffer.get(), &size);
  return data.lasterror == noErr ? std::move(buffer) : nullptr;
}

/// The item behind the cursor, which moves to it.
REALobject next_item(REALobject object) {
  QTMetaDataClassData& data = begin(object);
  QTMetaDataItem item = data.cursor;
  data.lasterror = QTMetaDataGetNextItem(metadata_of(data), 0, item, 0, nullptr, 0, &data.cursor);
  if (data.lasterror != noErr || !data.handle) return nullptr;
  return NewMetaDataItemObject(object, data.cursor);
}

/// A key as the toolbox takes it.
struct Key {
  const void* bytes;
  ByteCount size;
};

Key key_of(const rbData& bytes) { return {bytes.bytes(), static_cast<ByteCount>(bytes.size())}; }
Key key_of(const OSType& code) { return {&code, sizeof code}; }

void remove_items(REALobject object, REALstring storage, REALstring format, Key key) {
  QTMetaDataClassData& data = begin(object);
  if (!data.handle) return;
  data.lasterror =
      QTMetaDataRemoveItemsWithKey(metadata_of(data), code_of(storage), code_of(format),
                                   static_cast<const UInt8*>(key.bytes), key.size);
}

int32_t count_items(REALobject object, REALstring storage, REALstring format, Key key) {
  QTMetaDataClassData& data = begin(object);
  if (!data.handle) return 0;
  ItemCount count = 0;
  data.lasterror =
      QTMetaDataGetItemCountWithKey(metadata_of(data), code_of(storage), code_of(format),
                                    static_cast<const UInt8*>(key.bytes), key.size, &count);
  return static_cast<int32_t>(count);
}

REALobject add_item(REALobject object, REALstring storage, REALstring format, Key key,
                    REALstring value, int32_t type) {
  QTMetaDataClassData& data = begin(object);
  if (!data.handle) return nullptr;
  const rbData bytes(value);
  QTMetaDataItem item = kQTMetaDataItemUninitialized;
  data.lasterror = QTMetaDataAddItem(
      metadata_of(data), code_of(storage), code_of(format), static_cast<const UInt8*>(key.bytes),
      key.size, static_cast<const UInt8*>(bytes.bytes()), static_cast<ByteCount>(bytes.size()),
      static_cast<UInt32>(type), &item);
  return data.lasterror == noErr ? NewMetaDataItemObject(object, item) : nullptr;
}

/// A new container object that takes the reference over. Without one the reference is lost.
REALobject container_object(QTMetaDataRef metadata) {
  const REALobject object = REALnewInstance("QTMetaDataKRZ");
  if (object) container_data(object).handle = to_token(metadata);
  return object;
}

}  // namespace

void QTMetaDataDestructor(REALobject object) {
  QTMetaDataClassData& data = container_data(object);
  if (data.handle) QTMetaDataRelease(metadata_of(data));
  data.handle = 0;
}

void QTMetaDataSetPropertyString(REALobject object, REALstring what, REALstring value) {
  QTMetaDataClassData& data = begin(object);
  if (!data.handle) return;
  const rbData bytes(value);
  data.lasterror =
      QTMetaDataSetProperty(metadata_of(data), kPropertyClass_MetaDataItem, code_of(what),
                            static_cast<ByteCount>(bytes.size()), bytes.bytes());
}

void QTMetaDataSetPropertyMemory(REALobject object, REALstring what, REALmemoryBlockStruct* value,
                                 int32_t offset, int32_t size) {
  QTMetaDataClassData& data = begin(object);
  if (!value) {
    RaiseException("NilObjectException", "value memoryblock is nil", kASCII);
    return;
  }
  if (!data.handle) return;
  data.lasterror = QTMetaDataSetProperty(
      metadata_of(data), kPropertyClass_MetaDataItem, code_of(what), static_cast<ByteCount>(size),
      static_cast<const char*>(REALMemoryBlockGetPtr(value)) + offset);
}

REALstring QTMetaDataGetPropertyString(REALobject object, REALstring what) {
  ByteCount size = 0;
  const Memory bytes = read_property(begin(object), what, size);
  return REALBuildUnicodeString(bytes.get(), static_cast<int64_t>(size), kEncodingUnknown);
}

REALmemoryBlockStruct* QTMetaDataGetPropertyMemory(REALobject object, REALstring what) {
  ByteCount size = 0;
  const Memory bytes = read_property(begin(object), what, size);
  return REALBuildMemoryblock(bytes.get(), static_cast<int64_t>(size));
}

int32_t CountItems(REALobject object) {
  QTMetaDataClassData& data = begin(object);
  ItemCount count = 0;
  data.lasterror = QTMetaDataGetItemCountWithKey(metadata_of(data), 0, 0, nullptr, 0, &count);
  return data.lasterror == noErr ? static_cast<int32_t>(count) : 0;
}

REALobject FirstItem(REALobject object) {
  container_data(object).cursor = kQTMetaDataItemUninitialized;
  return next_item(object);
}

REALobject NextItem(REALobject object) { return next_item(object); }

void RemoveItem(REALobject object, REALobject item) {
  QTMetaDataClassData& data = begin(object);
  if (!item) return;
  const QTMetaDataItem id = item_data(item).item;
  data.lasterror = QTMetaDataRemoveItem(metadata_of(data), id);
  // The walk begins anew when it lost its place.
  if (id == data.cursor) data.cursor = kQTMetaDataItemUninitialized;
}

void rbQTMetaDataRemoveItemsWithKey(REALobject object, REALstring StorageFormat,
                                    REALstring KeyFormat, REALstring Key) {
  remove_items(object, StorageFormat, KeyFormat, key_of(rbData(Key)));
}

int32_t rbQTMetaDataGetItemCountWithKey(REALobject object, REALstring StorageFormat,
                                        REALstring KeyFormat, REALstring Key) {
  return count_items(object, StorageFormat, KeyFormat, key_of(rbData(Key)));
}

void rbQTMetaDataRemoveItemsWithKeyCode(REALobject object, REALstring StorageFormat,
                                        REALstring KeyCode, REALstring Key) {
  // A nil key is the key 0, not the wildcard: a slip of a script must not remove everything.
  remove_items(object, StorageFormat, KeyCode, key_of(code_of(Key)));
}

int32_t rbQTMetaDataGetItemCountWithKeyCode(REALobject object, REALstring StorageFormat,
                                            REALstring KeyCode, REALstring Key) {
  // Counting has nothing to lose: a nil key counts all items of the formats.
  if (!Key) return count_items(object, StorageFormat, KeyCode, {nullptr, 0});
  return count_items(object, StorageFormat, KeyCode, key_of(code_of(Key)));
}

REALobject rbQTMetaDataAddItem(REALobject object, REALstring StorageFormat, REALstring KeyFormat,
                               REALstring Key, REALstring Value, int32_t DataType) {
  return add_item(object, StorageFormat, KeyFormat, key_of(rbData(Key)), Value, DataType);
}

REALobject rbQTMetaDataAddItemCode(REALobject object, REALstring StorageFormat,
                                   REALstring KeyFormat, REALstring KeyCode, REALstring Value,
                                   int32_t DataType) {
  return add_item(object, StorageFormat, KeyFormat, key_of(code_of(KeyCode)), Value, DataType);
}

REALobject rbQTCopyMovieMetaData(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  if (!movie) return nullptr;
  QTMetaDataRef metadata = nullptr;
  if (QTCopyMovieMetaData(movie, &metadata) != noErr || !metadata) return nullptr;
  return container_object(metadata);
}

REALobject rbQTCopyTrackMetaData(REALobject object) {
  QTTrackClassData& track = track_data(object);
  track.lasterror = kNotAttempted;
  QTMetaDataRef metadata = nullptr;
  track.lasterror = QTCopyTrackMetaData(to_reference<Track>(track.track), &metadata);
  return track.lasterror == noErr && metadata ? container_object(metadata) : nullptr;
}

}  // namespace krz
