// The toolbox's metadata and user data calls, scripted: what they are asked is written down, what
// they answer stands under "metadata", "item", "value" and "list".
#include <cstring>

#include "plugin/fake_toolbox.h"

using fake_toolbox::toolbox;

namespace {

template <class... Arguments>
int64_t answer(const char* name, Arguments... arguments) {
  std::string call = std::string(name) + "(";
  [[maybe_unused]] const auto add = [&](int64_t argument) {
    if (!call.ends_with('(')) call += ", ";
    call += std::to_string(argument);
  };
  (add(static_cast<int64_t>(arguments)), ...);
  toolbox().calls.push_back(call + ")");
  return toolbox().answers[name];
}

int64_t number(const void* reference) {
  return static_cast<int64_t>(reinterpret_cast<uintptr_t>(reference));
}

template <class Reference>
Reference reference(const char* name) {
  return reinterpret_cast<Reference>(static_cast<uintptr_t>(toolbox().answers[name]));
}

/// A key of four bytes as the number that it is in memory, -1 for none, -2 for any other.
int64_t key_number(const UInt8* key, ByteCount size) {
  if (key == nullptr && size == 0) return -1;
  uint32_t code = 0;
  if (size != sizeof code) return -2;
  std::memcpy(&code, key, sizeof code);
  return code;
}

}  // namespace

extern "C" {

OSStatus QTCopyMovieMetaData(Movie movie, QTMetaDataRef* metadata) {
  *metadata = reference<QTMetaDataRef>("metadata");
  return static_cast<OSStatus>(answer("QTCopyMovieMetaData", number(movie)));
}
OSStatus QTCopyTrackMetaData(Track track, QTMetaDataRef* metadata) {
  *metadata = reference<QTMetaDataRef>("metadata");
  return static_cast<OSStatus>(answer("QTCopyTrackMetaData", number(track)));
}
QTMetaDataRef QTMetaDataRetain(QTMetaDataRef metadata) {
  answer("QTMetaDataRetain", number(metadata));
  return metadata;
}
void QTMetaDataRelease(QTMetaDataRef metadata) { answer("QTMetaDataRelease", number(metadata)); }
OSStatus QTMetaDataGetNextItem(QTMetaDataRef metadata, OSType storage, QTMetaDataItem current,
                               OSType format, const UInt8* key, ByteCount size,
                               QTMetaDataItem* next) {
  const auto status = static_cast<OSStatus>(answer(
      "QTMetaDataGetNextItem", number(metadata), storage, current, format, key_number(key, size)));
  if (status == noErr) *next = static_cast<QTMetaDataItem>(toolbox().answers["item"]);
  return status;
}
OSStatus QTMetaDataGetItemCountWithKey(QTMetaDataRef metadata, OSType storage, OSType format,
                                       const UInt8* key, ByteCount size, ItemCount* count) {
  *count = static_cast<ItemCount>(toolbox().answers["count"]);
  return static_cast<OSStatus>(answer("QTMetaDataGetItemCountWithKey", number(metadata), storage,
                                      format, key_number(key, size)));
}
OSStatus QTMetaDataAddItem(QTMetaDataRef metadata, OSType storage, OSType format, const UInt8* key,
                           ByteCount key_size, const UInt8*, ByteCount size, UInt32 type,
                           QTMetaDataItem* item) {
  *item = static_cast<QTMetaDataItem>(toolbox().answers["item"]);
  return static_cast<OSStatus>(answer("QTMetaDataAddItem", number(metadata), storage, format,
                                      key_number(key, key_size), size, type));
}
OSStatus QTMetaDataSetItem(QTMetaDataRef metadata, QTMetaDataItem item, const UInt8*,
                           ByteCount size, UInt32 type) {
  return static_cast<OSStatus>(answer("QTMetaDataSetItem", number(metadata), item, size, type));
}
OSStatus QTMetaDataRemoveItem(QTMetaDataRef metadata, QTMetaDataItem item) {
  return static_cast<OSStatus>(answer("QTMetaDataRemoveItem", number(metadata), item));
}
OSStatus QTMetaDataRemoveItemsWithKey(QTMetaDataRef metadata, OSType storage, OSType format,
                                      const UInt8* key, ByteCount size) {
  return static_cast<OSStatus>(answer("QTMetaDataRemoveItemsWithKey", number(metadata), storage,
                                      format, key_number(key, size)));
}
OSStatus QTMetaDataGetItemValue(QTMetaDataRef metadata, QTMetaDataItem item, UInt8* value,
                                ByteCount size, ByteCount* actual) {
  const std::string& bytes = toolbox().sample;
  if (actual != nullptr) *actual = bytes.size();
  if (value != nullptr) std::memcpy(value, bytes.data(), size);
  return static_cast<OSStatus>(
      answer("QTMetaDataGetItemValue", number(metadata), item, value != nullptr, size));
}
OSStatus QTMetaDataGetItemPropertyInfo(QTMetaDataRef metadata, QTMetaDataItem item, OSType kind,
                                       OSType id, OSType*, ByteCount* size, UInt32*) {
  *size = toolbox().sample.size();
  return static_cast<OSStatus>(
      answer("QTMetaDataGetItemPropertyInfo", number(metadata), item, kind, id));
}
OSStatus QTMetaDataGetItemProperty(QTMetaDataRef metadata, QTMetaDataItem item, OSType kind,
                                   OSType id, ByteCount size, void* value, ByteCount* used) {
  if (value != nullptr) std::memcpy(value, toolbox().sample.data(), size);
  *used = size;
  return static_cast<OSStatus>(
      answer("QTMetaDataGetItemProperty", number(metadata), item, kind, id, size));
}
OSStatus QTMetaDataSetItemProperty(QTMetaDataRef metadata, QTMetaDataItem item, OSType kind,
                                   OSType id, ByteCount size, const void* value) {
  return static_cast<OSStatus>(answer("QTMetaDataSetItemProperty", number(metadata), item, kind, id,
                                      key_number(static_cast<const UInt8*>(value), size)));
}
OSStatus QTMetaDataGetPropertyInfo(QTMetaDataRef metadata, OSType kind, OSType id, OSType*,
                                   ByteCount* size, UInt32*) {
  *size = toolbox().sample.size();
  return static_cast<OSStatus>(answer("QTMetaDataGetPropertyInfo", number(metadata), kind, id));
}
OSStatus QTMetaDataGetProperty(QTMetaDataRef metadata, OSType kind, OSType id, ByteCount size,
                               void* value, ByteCount* used) {
  if (value != nullptr) std::memcpy(value, toolbox().sample.data(), size);
  *used = size;
  return static_cast<OSStatus>(answer("QTMetaDataGetProperty", number(metadata), kind, id, size));
}
OSStatus QTMetaDataSetProperty(QTMetaDataRef metadata, OSType kind, OSType id, ByteCount size,
                               const void*) {
  return static_cast<OSStatus>(answer("QTMetaDataSetProperty", number(metadata), kind, id, size));
}

OSErr NewUserData(UserData* list) {
  *list = reference<UserData>("list");
  return static_cast<OSErr>(answer("NewUserData"));
}
OSErr NewUserDataFromHandle(Handle handle, UserData* list) {
  *list = reference<UserData>("list");
  return static_cast<OSErr>(answer("NewUserDataFromHandle", GetHandleSize(handle)));
}
OSErr DisposeUserData(UserData list) {
  return static_cast<OSErr>(answer("DisposeUserData", number(list)));
}
OSErr PutUserDataIntoHandle(UserData list, Handle handle) {
  fake_toolbox::fill_handle(handle, toolbox().sample);
  return static_cast<OSErr>(answer("PutUserDataIntoHandle", number(list)));
}
UserData GetMovieUserData(Movie movie) {
  answer("GetMovieUserData", number(movie));
  return reference<UserData>("list");
}
UserData GetTrackUserData(Track track) {
  answer("GetTrackUserData", number(track));
  return reference<UserData>("list");
}
OSErr AddUserData(UserData list, Handle data, OSType type) {
  return static_cast<OSErr>(answer("AddUserData", number(list), GetHandleSize(data), type));
}
OSErr GetUserData(UserData list, Handle data, OSType type, SInt32 index) {
  fake_toolbox::fill_handle(data, toolbox().sample);
  return static_cast<OSErr>(answer("GetUserData", number(list), type, index));
}
OSErr RemoveUserData(UserData list, OSType type, SInt32 index) {
  return static_cast<OSErr>(answer("RemoveUserData", number(list), type, index));
}
SInt16 CountUserDataType(UserData list, OSType type) {
  return static_cast<SInt16>(answer("CountUserDataType", number(list), type));
}
OSType GetNextUserDataType(UserData list, OSType type) {
  return static_cast<OSType>(answer("GetNextUserDataType", number(list), type));
}
OSErr AddUserDataText(UserData list, Handle data, OSType type, SInt32 index, SInt16 region) {
  return static_cast<OSErr>(
      answer("AddUserDataText", number(list), GetHandleSize(data), type, index, region));
}
OSErr GetUserDataText(UserData list, Handle data, OSType type, SInt32 index, SInt16 region) {
  fake_toolbox::fill_handle(data, toolbox().sample);
  return static_cast<OSErr>(answer("GetUserDataText", number(list), type, index, region));
}
OSErr RemoveUserDataText(UserData list, OSType type, SInt32 index, SInt16 region) {
  return static_cast<OSErr>(answer("RemoveUserDataText", number(list), type, index, region));
}

}  // extern "C"
