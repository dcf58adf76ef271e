/* Metadata of movies and tracks: items with a key, a typed value and a locale, from three storages.

   Storage formats: 'mdta' (QuickTime keys), 'itms' (lists with four-letter keys), 'udta' (the texts
   of the user data list, which are the very ones that the user data calls see). Items come in this
   order, within a storage in that of the file. 0 stands for any storage and any key format; no key
   and size 0 for any key.
   Key formats: 'mdta' (text), 'itlk' (text, "mean:name"), 'itsk', 'udta' and 'comn' (an OSType in
   the machine's own order). 'comn' names the same thing in every storage.

   Every call answers a code, 0 or negative, and sets the current error. A container that is nil,
   released, or whose movie is gone: kQTMetaDataInvalidMetaDataErr. An item that was removed:
   kQTMetaDataInvalidItemErr. Outputs are untouched on failure; all may be nil unless said
   otherwise. */
#ifndef KRZ_QUICKTIME_METADATA_H
#define KRZ_QUICKTIME_METADATA_H

#include <QuickTime/Movies.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct QTMetaDataRecord* QTMetaDataRef;
typedef UInt64 QTMetaDataItem;

enum { kQTMetaDataItemUninitialized = 0 };

/* Property classes; containers take either. */
enum {
  kPropertyClass_MetaData = 0x6D657461,     /* 'meta' */
  kPropertyClass_MetaDataItem = 0x6D646974, /* 'mdit' */

  kQTMetaDataPropertyID_StorageFormats = 0x666D7473, /* 'fmts': the storages that have items */
  kQTMetaDataPropertyID_OwnerType = 0x6F776E74,      /* 'ownt': 'moov' or 'trak' */
  kQTMetaDataPropertyID_Owner = 0x6F776E72,          /* 'ownr': the owner's reference, 32 bits */

  kQTMetaDataItemPropertyID_Value = 0x76616C75,         /* 'valu' */
  kQTMetaDataItemPropertyID_DataType = 0x64747970,      /* 'dtyp', 32 bits */
  kQTMetaDataItemPropertyID_StorageFormat = 0x73666D74, /* 'sfmt', read only */
  kQTMetaDataItemPropertyID_Key = 0x6B657920,           /* 'key ', read only */
  kQTMetaDataItemPropertyID_KeyFormat = 0x6B657966,     /* 'keyf', read only */
  kQTMetaDataItemPropertyID_Locale = 0x6C6F6320         /* 'loc ', text such as "en_GB" */
};

/* The container of a movie or track, the same each time, with one reference more for the caller to
   release. Fail: invalidMovie, invalidTrack, memFullErr, ioErr; the output is then nil. */
OSStatus QTCopyMovieMetaData(Movie movie, QTMetaDataRef* metaData);
OSStatus QTCopyTrackMetaData(Track track, QTMetaDataRef* metaData);

/* One reference more, and one less. Retain answers the container, nil for a bad one. */
QTMetaDataRef QTMetaDataRetain(QTMetaDataRef metaData);
void QTMetaDataRelease(QTMetaDataRef metaData);

/* The first match behind `currentItem`, from the start for 0. Fails: kQTMetaDataNoMoreItemsErr. */
OSStatus QTMetaDataGetNextItem(QTMetaDataRef metaData, OSType storageFormat,
                               QTMetaDataItem currentItem, OSType keyFormat, const UInt8* key,
                               ByteCount keySize, QTMetaDataItem* nextItem);
OSStatus QTMetaDataGetItemCountWithKey(QTMetaDataRef metaData, OSType storageFormat,
                                       OSType keyFormat, const UInt8* key, ByteCount keySize,
                                       ItemCount* count);

/* Adds an item, whether or not there is one with that key. `dataType` is not compared with the
   value. Fails: kQTMetaDataInvalidStorageFormatErr, kQTMetaDataInvalidKeyFormatErr; paramErr for
   what user data cannot hold: types other than 1 to 3, more than 65535 bytes. */
OSStatus QTMetaDataAddItem(QTMetaDataRef metaData, OSType storageFormat, OSType keyFormat,
                           const UInt8* key, ByteCount keySize, const UInt8* value,
                           ByteCount valueSize, UInt32 dataType, QTMetaDataItem* item);
OSStatus QTMetaDataSetItem(QTMetaDataRef metaData, QTMetaDataItem item, const UInt8* value,
                           ByteCount valueSize, UInt32 dataType);
OSStatus QTMetaDataRemoveItem(QTMetaDataRef metaData, QTMetaDataItem item);

/* Removes all matches; none is no error. */
OSStatus QTMetaDataRemoveItemsWithKey(QTMetaDataRef metaData, OSType storageFormat,
                                      OSType keyFormat, const UInt8* key, ByteCount keySize);

/* The value of an item. Without a buffer, its size. Fails: paramErr for neither buffer nor size,
   and for a buffer that is too small. */
OSStatus QTMetaDataGetItemValue(QTMetaDataRef metaData, QTMetaDataItem item, UInt8* value,
                                ByteCount valueSize, ByteCount* actualSize);

/* Properties of items and of the container, those of the container read only. Fail:
   kQTPropertyNotSupportedErr, kQTPropertyReadOnlyErr, kQTPropertyBadValueSizeErr; paramErr for no
   buffer, one that is too small, and a locale that is none. */
OSStatus QTMetaDataGetItemPropertyInfo(QTMetaDataRef metaData, QTMetaDataItem item,
                                       OSType propertyClass, OSType propertyID,
                                       OSType* propertyType, ByteCount* size, UInt32* flags);
OSStatus QTMetaDataGetItemProperty(QTMetaDataRef metaData, QTMetaDataItem item,
                                   OSType propertyClass, OSType propertyID, ByteCount size,
                                   void* value, ByteCount* used);
OSStatus QTMetaDataSetItemProperty(QTMetaDataRef metaData, QTMetaDataItem item,
                                   OSType propertyClass, OSType propertyID, ByteCount size,
                                   const void* value);
OSStatus QTMetaDataGetPropertyInfo(QTMetaDataRef metaData, OSType propertyClass, OSType propertyID,
                                   OSType* propertyType, ByteCount* size, UInt32* flags);
OSStatus QTMetaDataGetProperty(QTMetaDataRef metaData, OSType propertyClass, OSType propertyID,
                               ByteCount size, void* value, ByteCount* used);
OSStatus QTMetaDataSetProperty(QTMetaDataRef metaData, OSType propertyClass, OSType propertyID,
                               ByteCount size, const void* value);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_QUICKTIME_METADATA_H */
