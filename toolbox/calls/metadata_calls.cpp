// The calls of QuickTime/MetaData.h.
#include <cstring>

#include "calls/guard.h"
#include "calls/references.h"

using namespace toolbox::calls;
using toolbox::Bytes;
using toolbox::ByteView;
using toolbox::ItemFilter;
using toolbox::ItemId;
using toolbox::ItemValue;
using toolbox::MetaData;
using toolbox::Result;
using toolbox::Status;
using toolbox::Token;

namespace {

constexpr OSType kMovieOwner = 0x6D6F6F76;  // 'moov'
constexpr OSType kTrackOwner = 0x7472616B;  // 'trak'

/// The bytes of a caller; none for a size that only a negative number can have become.
ByteView view(const void* bytes, ByteCount size) {
  if (bytes == nullptr || size > INT32_MAX) return {};
  return {static_cast<const uint8_t*>(bytes), size};
}

Result<QTMetaDataRef> reference_more(MetaData& metadata) {
  const Token token = metadata.retain();
  if (token == 0) return Status(memFullErr, "too many references are in use; release some");
  return reinterpret_cast<QTMetaDataRef>(uintptr_t{token});
}

template <class Owner>
Status copy_metadata(Owner& owner, OSType type, QTMetaDataRef* reference) {
  TRY_ASSIGN(toolbox::Annotations* const lists, owner.annotations());
  MetaData& metadata = lists->metadata();
  metadata.owner = {type, owner.token()};
  TRY_ASSIGN(*reference, reference_more(metadata));
  return {};
}

/// Hands bytes over, when the buffer takes them.
Status give(const Result<Bytes>& bytes, ByteCount size, void* buffer, ByteCount* used) {
  if (!bytes.ok()) return Status(bytes.status().code(), bytes.status().message());
  const ByteCount needed = bytes.value().size();
  if (buffer == nullptr) return {paramErr, "a place for the value is needed"};
  if (size < needed) {
    return {paramErr, "the value has " + std::to_string(needed) + " bytes, there is room for " +
                          std::to_string(size)};
  }
  std::memcpy(buffer, bytes.value().data(), needed);
  if (used != nullptr) *used = needed;
  return {};
}

Status give_info(const Result<Bytes>& bytes, OSType type, bool is_settable, OSType* property_type,
                 ByteCount* size, UInt32* flags) {
  if (!bytes.ok()) return Status(bytes.status().code(), bytes.status().message());
  if (property_type != nullptr) *property_type = type;
  if (size != nullptr) *size = bytes.value().size();
  if (flags != nullptr) *flags = is_settable ? 1 : 0;
  return {};
}

Status not_supported() { return {kQTPropertyNotSupportedErr, "there is no such property here"}; }

Result<Bytes> item_property(MetaData& metadata, QTMetaDataItem item, OSType property_class,
                            OSType id) {
  if (property_class != kPropertyClass_MetaDataItem) return not_supported();
  return metadata.property(item, id);
}

Result<Bytes> container_property(MetaData& metadata, OSType property_class, OSType id) {
  if (property_class != kPropertyClass_MetaData && property_class != kPropertyClass_MetaDataItem) {
    return not_supported();
  }
  Bytes bytes;
  const auto number = [&](uint32_t value) {
    const size_t at = bytes.size();
    bytes.resize(at + sizeof value);
    std::memcpy(bytes.data() + at, &value, sizeof value);
  };
  if (id == kQTMetaDataPropertyID_StorageFormats) {
    for (const OSType storage : metadata.storages()) number(storage);
  } else if (id == kQTMetaDataPropertyID_OwnerType) {
    number(metadata.owner.type);
  } else if (id == kQTMetaDataPropertyID_Owner) {
    number(metadata.owner.token);
  } else {
    return not_supported();
  }
  return bytes;
}

/// What kind of value a property has.
OSType type_of(OSType id) {
  switch (id) {
    case kQTMetaDataItemPropertyID_Value:
    case kQTMetaDataItemPropertyID_Key:
      return 0x62797465;  // 'byte'
    case kQTMetaDataItemPropertyID_Locale:
      return 0x74657874;  // 'text'
    case kQTMetaDataItemPropertyID_DataType:
    case kQTMetaDataPropertyID_Owner:
      return 0x75693332;  // 'ui32'
    default:
      return 0x636F6465;  // 'code'
  }
}

bool is_settable(OSType id) {
  return id == kQTMetaDataItemPropertyID_Value || id == kQTMetaDataItemPropertyID_DataType ||
         id == kQTMetaDataItemPropertyID_Locale;
}

}  // namespace

TOOLBOX_CALL OSStatus QTCopyMovieMetaData(Movie movie, QTMetaDataRef* metaData) {
  return guarded([&]() -> Status {
    if (metaData == nullptr) return {paramErr, "a place for the container is needed"};
    *metaData = nullptr;
    TRY_ASSIGN(toolbox::Movie* const found, find_movie(movie));
    return copy_metadata(*found, kMovieOwner, metaData);
  });
}

TOOLBOX_CALL OSStatus QTCopyTrackMetaData(Track track, QTMetaDataRef* metaData) {
  return guarded([&]() -> Status {
    if (metaData == nullptr) return {paramErr, "a place for the container is needed"};
    *metaData = nullptr;
    TRY_ASSIGN(toolbox::Track* const found, find_track(track));
    return copy_metadata(*found, kTrackOwner, metaData);
  });
}

TOOLBOX_CALL QTMetaDataRef QTMetaDataRetain(QTMetaDataRef metaData) {
  return guarded_value<QTMetaDataRef>(nullptr, [&]() -> Result<QTMetaDataRef> {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    return reference_more(*metadata);
  });
}

TOOLBOX_CALL void QTMetaDataRelease(QTMetaDataRef metaData) {
  guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    metadata->release();
    return {};
  });
}

TOOLBOX_CALL OSStatus QTMetaDataGetNextItem(QTMetaDataRef metaData, OSType storageFormat,
                                            QTMetaDataItem currentItem, OSType keyFormat,
                                            const UInt8* key, ByteCount keySize,
                                            QTMetaDataItem* nextItem) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    TRY_ASSIGN(const ItemId next,
               metadata->next(currentItem, {storageFormat, keyFormat, view(key, keySize)}));
    if (nextItem != nullptr) *nextItem = next;
    return {};
  });
}

TOOLBOX_CALL OSStatus QTMetaDataGetItemCountWithKey(QTMetaDataRef metaData, OSType storageFormat,
                                                    OSType keyFormat, const UInt8* key,
                                                    ByteCount keySize, ItemCount* count) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    TRY_ASSIGN(const size_t found, metadata->count({storageFormat, keyFormat, view(key, keySize)}));
    if (count != nullptr) *count = static_cast<ItemCount>(found);
    return {};
  });
}

TOOLBOX_CALL OSStatus QTMetaDataAddItem(QTMetaDataRef metaData, OSType storageFormat,
                                        OSType keyFormat, const UInt8* key, ByteCount keySize,
                                        const UInt8* value, ByteCount valueSize, UInt32 dataType,
                                        QTMetaDataItem* item) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    const ByteView bytes = view(value, valueSize);
    TRY_ASSIGN(const ItemId added, metadata->add({storageFormat, keyFormat, view(key, keySize)},
                                                 {dataType, Bytes(bytes.begin(), bytes.end())}));
    if (item != nullptr) *item = added;
    return {};
  });
}

TOOLBOX_CALL OSStatus QTMetaDataSetItem(QTMetaDataRef metaData, QTMetaDataItem item,
                                        const UInt8* value, ByteCount valueSize, UInt32 dataType) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    const ByteView bytes = view(value, valueSize);
    return metadata->set_value(item, {dataType, Bytes(bytes.begin(), bytes.end())});
  });
}

TOOLBOX_CALL OSStatus QTMetaDataRemoveItem(QTMetaDataRef metaData, QTMetaDataItem item) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    return metadata->remove(item);
  });
}

TOOLBOX_CALL OSStatus QTMetaDataRemoveItemsWithKey(QTMetaDataRef metaData, OSType storageFormat,
                                                   OSType keyFormat, const UInt8* key,
                                                   ByteCount keySize) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    return metadata->remove_matching({storageFormat, keyFormat, view(key, keySize)});
  });
}

TOOLBOX_CALL OSStatus QTMetaDataGetItemValue(QTMetaDataRef metaData, QTMetaDataItem item,
                                             UInt8* value, ByteCount valueSize,
                                             ByteCount* actualSize) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    TRY_ASSIGN(ItemValue found, metadata->value(item));
    if (value == nullptr && actualSize != nullptr) {
      *actualSize = found.bytes.size();
      return {};
    }
    return give(std::move(found.bytes), valueSize, value, actualSize);
  });
}

TOOLBOX_CALL OSStatus QTMetaDataGetItemPropertyInfo(QTMetaDataRef metaData, QTMetaDataItem item,
                                                    OSType propertyClass, OSType propertyID,
                                                    OSType* propertyType, ByteCount* size,
                                                    UInt32* flags) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    return give_info(item_property(*metadata, item, propertyClass, propertyID), type_of(propertyID),
                     is_settable(propertyID), propertyType, size, flags);
  });
}

TOOLBOX_CALL OSStatus QTMetaDataGetItemProperty(QTMetaDataRef metaData, QTMetaDataItem item,
                                                OSType propertyClass, OSType propertyID,
                                                ByteCount size, void* value, ByteCount* used) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    return give(item_property(*metadata, item, propertyClass, propertyID), size, value, used);
  });
}

TOOLBOX_CALL OSStatus QTMetaDataSetItemProperty(QTMetaDataRef metaData, QTMetaDataItem item,
                                                OSType propertyClass, OSType propertyID,
                                                ByteCount size, const void* value) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    if (propertyClass != kPropertyClass_MetaDataItem) return not_supported();
    return metadata->set_property(item, propertyID, view(value, size));
  });
}

TOOLBOX_CALL OSStatus QTMetaDataGetPropertyInfo(QTMetaDataRef metaData, OSType propertyClass,
                                                OSType propertyID, OSType* propertyType,
                                                ByteCount* size, UInt32* flags) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    return give_info(container_property(*metadata, propertyClass, propertyID), type_of(propertyID),
                     false, propertyType, size, flags);
  });
}

TOOLBOX_CALL OSStatus QTMetaDataGetProperty(QTMetaDataRef metaData, OSType propertyClass,
                                            OSType propertyID, ByteCount size, void* value,
                                            ByteCount* used) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    return give(container_property(*metadata, propertyClass, propertyID), size, value, used);
  });
}

TOOLBOX_CALL OSStatus QTMetaDataSetProperty(QTMetaDataRef metaData, OSType propertyClass,
                                            OSType propertyID, ByteCount, const void*) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(MetaData* const metadata, find_metadata(metaData));
    TRY(container_property(*metadata, propertyClass, propertyID).take_status());
    return {kQTPropertyReadOnlyErr, "what a container says of itself cannot be changed"};
  });
}
