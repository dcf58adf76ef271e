// The class "QTMetaDataItemKRZ": one item of a metadata container.
#include "host/class_table.h"
#include "host/encodings.h"
#include "host/entries.h"
#include "host/exceptions.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "host/registration.h"
#include "host/strings.h"
#include "host/text_view.h"
#include "metadata/metadata.h"

namespace krz {
namespace {

constexpr int32_t kNotAttempted = -1;

QTMetaDataItemClassData& item_data(REALobject object) {
  return instance_data<QTMetaDataItemClassData>(object, QTMetaDataItemClass);
}

QTMetaDataRef metadata_of(const QTMetaDataItemClassData& data) {
  return to_reference<QTMetaDataRef>(data.metadata);
}

/// The object's data, with the error preset.
QTMetaDataItemClassData& begin(REALobject object) {
  QTMetaDataItemClassData& data = item_data(object);
  data.lasterror = kNotAttempted;
  return data;
}

OSType code_of(REALstring string) { return string ? REALstringToOSType(string) : 0; }

void QTMetaDataItemConstructor(REALobject) {}

void QTMetaDataItemDestructor(REALobject object) {
  QTMetaDataItemClassData& data = item_data(object);
  if (data.metadata) QTMetaDataRelease(metadata_of(data));
  data.metadata = 0;
  if (data.owner) REALUnlockObject(data.owner);
  data.owner = nullptr;
}

/// The address of a part of a block; raises for a nil block, which is looked at before anything
/// else.
const char* part_of(REALmemoryBlockStruct* block, int32_t offset) {
  if (block) return static_cast<const char*>(REALMemoryBlockGetPtr(block)) + offset;
  RaiseException("NilObjectException", "value memoryblock is nil", kASCII);
  return nullptr;
}

void set_value(QTMetaDataItemClassData& data, const void* bytes, int32_t size, int32_t type) {
  if (!data.metadata) return;
  data.lasterror = QTMetaDataSetItem(metadata_of(data), data.item, static_cast<const UInt8*>(bytes),
                                     static_cast<ByteCount>(size), static_cast<UInt32>(type));
}

void set_property(QTMetaDataItemClassData& data, REALstring what, const void* bytes, int32_t size) {
  if (!data.metadata) return;
  data.lasterror =
      QTMetaDataSetItemProperty(metadata_of(data), data.item, kPropertyClass_MetaDataItem,
                                code_of(what), static_cast<ByteCount>(size), bytes);
}

/// A property's bytes, `size` of them; nothing when it cannot be had.
Memory read_property(QTMetaDataItemClassData& data, REALstring what, ByteCount& size) {
  if (!data.metadata) return nullptr;
  const OSType id = code_of(what);
  OSType type = 0;
  UInt32 flags = 0;
  ByteCount needed = 0;
  QTMetaDataGetItemPropertyInfo(metadata_of(data), data.item, kPropertyClass_MetaDataItem, id,
                                &type, &needed, &flags);
  Memory buffer(AllocateClearMemory(static_cast<int64_t>(needed)));
  size = 0;
  data.lasterror = QTMetaDataGetItemProperty(
      metadata_of(data), data.item, kPropertyClass_MetaDataItem, id, needed, buffer.get(), &size);
  return data.lasterror == noErr ? std::move(buffer) : nullptr;
}

/// The value's bytes, likewise. An empty value gives no buffer, and so an error.
Memory read_value(QTMetaDataItemClassData& data, ByteCount& size) {
  if (!data.metadata) return nullptr;
  size = 0;
  QTMetaDataGetItemValue(metadata_of(data), data.item, nullptr, 0, &size);
  Memory buffer(AllocateClearMemory(static_cast<int64_t>(size)));
  data.lasterror = QTMetaDataGetItemValue(metadata_of(data), data.item,
                                          static_cast<UInt8*>(buffer.get()), size, nullptr);
  return data.lasterror == noErr ? std::move(buffer) : nullptr;
}

void QTMetaDataSetItemString(REALobject object, REALstring value, int32_t datatype) {
  const rbData bytes(value);
  set_value(begin(object), bytes.bytes(), bytes.size(), datatype);
}

void QTMetaDataSetItemMemory(REALobject object, REALmemoryBlockStruct* value, int32_t offset,
                             int32_t size, int32_t datatype) {
  QTMetaDataItemClassData& data = begin(object);
  const char* bytes = part_of(value, offset);
  if (value) set_value(data, bytes, size, datatype);
}

void QTMetaDataSetItemPropertyCode(REALobject object, REALstring what, REALstring code) {
  const OSType value = code_of(code);
  set_property(begin(object), what, &value, sizeof value);
}

void QTMetaDataSetItemPropertyString(REALobject object, REALstring what, REALstring value) {
  const rbData bytes(value);
  set_property(begin(object), what, bytes.bytes(), bytes.size());
}

void QTMetaDataSetItemPropertyMemory(REALobject object, REALstring what,
                                     REALmemoryBlockStruct* value, int32_t offset, int32_t size) {
  QTMetaDataItemClassData& data = begin(object);
  const char* bytes = part_of(value, offset);
  if (value) set_property(data, what, bytes, size);
}

REALstring QTMetaDataGetItemPropertyString(REALobject object, REALstring what) {
  ByteCount size = 0;
  const Memory bytes = read_property(begin(object), what, size);
  return REALBuildUnicodeString(bytes.get(), static_cast<int64_t>(size), kEncodingUnknown);
}

REALmemoryBlockStruct* QTMetaDataGetItemPropertyMemory(REALobject object, REALstring what) {
  ByteCount size = 0;
  const Memory bytes = read_property(begin(object), what, size);
  return REALBuildMemoryblock(bytes.get(), static_cast<int64_t>(size));
}

REALstring QTMetaDataGetItemPropertyCode(REALobject object, REALstring what) {
  ByteCount size = 0;
  const Memory bytes = read_property(begin(object), what, size);
  if (!bytes || size != sizeof(OSType)) return nullptr;
  return REALBuildOSTypeString(*static_cast<const OSType*>(bytes.get()));
}

REALstring QTMetaDataGetItemValueString(REALobject object) {
  ByteCount size = 0;
  const Memory bytes = read_value(begin(object), size);
  return REALBuildUnicodeString(bytes.get(), static_cast<int64_t>(size), kEncodingUnknown);
}

REALmemoryBlockStruct* QTMetaDataGetItemValueMemory(REALobject object) {
  ByteCount size = 0;
  const Memory bytes = read_value(begin(object), size);
  return REALBuildMemoryblock(bytes.get(), static_cast<int64_t>(size));
}

PropertyEntry item_properties[] = {
    DIRECT_FIELD(QTMetaDataItemClassData, lasterror, "Lasterror", "Integer"),
};

// clang-format off
MethodEntry item_methods[] = {
    METHOD(QTMetaDataItemDestructor, "Close"),
    METHOD(QTMetaDataSetItemString, "SetString(data as string, datatype as integer)"),
    METHOD(QTMetaDataSetItemMemory, "SetMemory(data as memoryblock, offset as integer, size as integer, datatype as integer)"),
    METHOD(QTMetaDataSetItemPropertyCode, "SetPropertyCode(what as string, code as string)"),
    METHOD(QTMetaDataSetItemPropertyString, "SetPropertyString(what as string, data as string)"),
    METHOD(QTMetaDataSetItemPropertyMemory, "SetPropertyMemory(what as string, data as memoryblock, offset as integer, size as integer)"),
    METHOD(QTMetaDataGetItemPropertyString, "GetPropertyString(what as string) as string"),
    METHOD(QTMetaDataGetItemPropertyMemory, "GetPropertyMemory(what as string) as memoryblock"),
    METHOD(QTMetaDataGetItemPropertyCode, "GetPropertyCode(what as string) as string"),
    METHOD(QTMetaDataGetItemValueString, "GetString as string"),
    METHOD(QTMetaDataGetItemValueMemory, "GetMemory as memoryblock"),
};
// clang-format on

}  // namespace

REALclassDefinition QTMetaDataItemClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTMetaDataItemKRZ",
    .data_size = sizeof(QTMetaDataItemClassData),
    .constructor = HOST_FUNCTION(QTMetaDataItemConstructor),
    .destructor = HOST_FUNCTION(QTMetaDataItemDestructor),
    .properties = item_properties,
    .property_count = std::size(item_properties),
    .methods = item_methods,
    .method_count = std::size(item_methods),
};

}  // namespace krz
