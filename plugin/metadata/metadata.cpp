// The class "QTMetaDataKRZ": a metadata container, and the vocabulary of metadata and user-data
// codes.
#include "metadata/metadata.h"

#include "host/class_table.h"
#include "host/registration.h"
#include "host/strings.h"

namespace krz {
namespace {

void QTMetaDataConstructor(REALobject) {}

/// Three letters, as a template argument.
struct Letters {
  char text[4];
  consteval Letters(const char (&letters)[4]) {  // NOLINT: meant to convert
    for (int i = 0; i < 4; ++i) text[i] = letters[i];
  }
};

/// The code of a user-data text: the sign of copyright in MacRoman, then the letters.
template <Letters letters>
REALstring text_type() {
  constexpr OSType kSign = 0xA9;
  return REALBuildOSTypeString(kSign << 24 | OSType{static_cast<uint8_t>(letters.text[0])} << 16 |
                               OSType{static_cast<uint8_t>(letters.text[1])} << 8 |
                               OSType{static_cast<uint8_t>(letters.text[2])});
}

PropertyEntry metadata_properties[] = {
    DIRECT_FIELD(QTMetaDataClassData, handle, "Handle", "Integer"),
    DIRECT_FIELD(QTMetaDataClassData, lasterror, "Lasterror", "Integer"),
};

MethodEntry metadata_shared_methods[] = {
    METHOD(text_type<"alb">, "kUserDataTextAlbum as string"),
    METHOD(text_type<"ART">, "kUserDataTextArtist as string"),
    METHOD(text_type<"aut">, "kUserDataTextAuthor as string"),
    METHOD(text_type<"chp">, "kUserDataTextChapter as string"),
    METHOD(text_type<"cmt">, "kUserDataTextComment as string"),
    METHOD(text_type<"com">, "kUserDataTextComposer as string"),
    METHOD(text_type<"cpy">, "kUserDataTextCopyright as string"),
    METHOD(text_type<"day">, "kUserDataTextCreationDate as string"),
    METHOD(text_type<"des">, "kUserDataTextDescription as string"),
    METHOD(text_type<"dir">, "kUserDataTextDirector as string"),
    METHOD(text_type<"dis">, "kUserDataTextDisclaimer as string"),
    METHOD(text_type<"enc">, "kUserDataTextEncodedBy as string"),
    METHOD(text_type<"nam">, "kUserDataTextFullName as string"),
    METHOD(text_type<"gen">, "kUserDataTextGenre as string"),
    METHOD(text_type<"hst">, "kUserDataTextHostComputer as string"),
    METHOD(text_type<"inf">, "kUserDataTextInformation as string"),
    METHOD(text_type<"key">, "kUserDataTextKeywords as string"),
    METHOD(text_type<"mak">, "kUserDataTextMake as string"),
    METHOD(text_type<"mod">, "kUserDataTextModel as string"),
    METHOD(text_type<"ope">, "kUserDataTextOriginalArtist as string"),
    METHOD(text_type<"fmt">, "kUserDataTextOriginalFormat as string"),
    METHOD(text_type<"src">, "kUserDataTextOriginalSource as string"),
    METHOD(text_type<"prf">, "kUserDataTextPerformers as string"),
    METHOD(text_type<"prd">, "kUserDataTextProducer as string"),
    METHOD(text_type<"pub">, "kUserDataTextPublisher as string"),
    METHOD(text_type<"PRD">, "kUserDataTextProduct as string"),
    METHOD(text_type<"swr">, "kUserDataTextSoftware as string"),
    METHOD(text_type<"req">, "kUserDataTextSpecialPlaybackRequirements as string"),
    METHOD(text_type<"trk">, "kUserDataTextTrack as string"),
    METHOD(text_type<"wrn">, "kUserDataTextWarning as string"),
    METHOD(text_type<"wrt">, "kUserDataTextWriter as string"),
    METHOD(text_type<"url">, "kUserDataTextURLLink as string"),
    METHOD(text_type<"ed1">, "kUserDataTextEditDate1 as string"),
};

// One row has two blanks before its equals sign; programs compare the texts as they have always
// been.
ConstantEntry metadata_constants[] = {
    CONSTANT("kQTMetaDataTypeBinary = 0"),
    CONSTANT("kQTMetaDataTypeUTF8 = 1"),
    CONSTANT("kQTMetaDataTypeUTF16BE = 2"),
    CONSTANT("kQTMetaDataTypeMacEncodedText = 3"),
    CONSTANT("kQTMetaDataTypeJPEGImage = 13"),
    CONSTANT("kQTMetaDataTypePNGImage = 14"),
    CONSTANT("kQTMetaDataTypeSignedIntegerBE = 21"),
    CONSTANT("kQTMetaDataTypeUnsignedIntegerBE = 22"),
    CONSTANT("kQTMetaDataTypeFloat32BE = 23"),
    CONSTANT("kQTMetaDataTypeFloat64BE = 24"),
    CONSTANT("kQTMetaDataTypeBMPImage = 27"),
    CONSTANT("kQTMetaDataTypeQuickTimeMetaData = 28"),
    CONSTANT(R"(kPropertyClass_MetaData = "meta")"),
    CONSTANT(R"(kQTMetaDataPropertyID_StorageFormats = "fmts")"),
    CONSTANT(R"(kQTMetaDataPropertyID_OwnerType = "ownt")"),
    CONSTANT(R"(kQTMetaDataPropertyID_Owner = "ownr")"),
    CONSTANT(R"(kPropertyClass_MetaDataItem = "mdit")"),
    CONSTANT(R"(kQTMetaDataKeyFormatCommon = "comn")"),
    CONSTANT(R"(kQTMetaDataCommonKeyAuthor = "auth")"),
    CONSTANT(R"(kQTMetaDataCommonKeyComment = "cmmt")"),
    CONSTANT(R"(kQTMetaDataCommonKeyCopyright = "cprt")"),
    CONSTANT(R"(kQTMetaDataCommonKeyDirector = "dtor")"),
    CONSTANT(R"(kQTMetaDataCommonKeyDisplayName = "name")"),
    CONSTANT(R"(kQTMetaDataCommonKeyInformation = "info")"),
    CONSTANT(R"(kQTMetaDataCommonKeyKeywords = "keyw")"),
    CONSTANT(R"(kQTMetaDataCommonKeyProducer = "prod")"),
    CONSTANT(R"(kQTMetaDataCommonKeyAlbum = "albm")"),
    CONSTANT(R"(kQTMetaDataCommonKeyArtist = "arts")"),
    CONSTANT(R"(kQTMetaDataCommonKeyArtwork = "artw")"),
    CONSTANT(R"(kQTMetaDataCommonKeyChapterName = "chap")"),
    CONSTANT(R"(kQTMetaDataCommonKeyComposer = "comp")"),
    CONSTANT(R"(kQTMetaDataCommonKeyDescription = "desc")"),
    CONSTANT(R"(kQTMetaDataCommonKeyGenre = "genr")"),
    CONSTANT(R"(kQTMetaDataCommonKeyOriginalFormat = "orif")"),
    CONSTANT(R"(kQTMetaDataCommonKeyOriginalSource = "oris")"),
    CONSTANT(R"(kQTMetaDataCommonKeyPerformers = "perf")"),
    CONSTANT(R"(kQTMetaDataCommonKeySoftware = "soft")"),
    CONSTANT(R"(kQTMetaDataCommonKeyWriter = "wrtr")"),
    CONSTANT(R"(kQTMetaDataStorageFormatQuickTime = "mdta")"),
    CONSTANT(R"(kQTMetaDataKeyFormatQuickTime = "mdta")"),
    CONSTANT(R"(kQTMetaDataStorageFormatiTunes = "itms")"),
    CONSTANT(R"(kQTMetaDataKeyFormatiTunesShortForm = "itsk")"),
    CONSTANT(R"(kQTMetaDataKeyFormatiTunesLongForm = "itlk")"),
    CONSTANT(R"(kQTMetaDataStorageFormatUserData = "udta")"),
    CONSTANT(R"(kQTMetaDataKeyFormatUserData = "udta")"),
    CONSTANT(R"(kUserDataMovieControllerType  = "ctyp")"),
    CONSTANT(R"(kUserDataName = "name")"),
    CONSTANT(R"(kUserDataAnimatedGIFLoopCount = "gifc")"),
    CONSTANT("kQTAnimatedGIFLoopCountInfinite = 0"),
    CONSTANT(R"(kUserDataAnimatedGIFBufferingSize = "gifb")"),
    CONSTANT("kQTMetaDataInvalidMetaDataErr = -2173"),
    CONSTANT("kQTMetaDataInvalidItemErr = -2174"),
    CONSTANT("kQTMetaDataInvalidStorageFormatErr = -2175"),
    CONSTANT("kQTMetaDataInvalidKeyFormatErr = -2176"),
    CONSTANT("kQTMetaDataNoMoreItemsErr = -2177"),
    CONSTANT(R"(kQTMetaDataItemPropertyID_Value = "valu")"),
    CONSTANT(R"(kQTMetaDataItemPropertyID_DataType = "dtyp")"),
    CONSTANT(R"(kQTMetaDataItemPropertyID_StorageFormat = "sfmt")"),
    CONSTANT(R"(kQTMetaDataItemPropertyID_Key = "key ")"),
    CONSTANT(R"(kQTMetaDataItemPropertyID_KeyFormat = "keyf")"),
    CONSTANT(R"(kQTMetaDataItemPropertyID_Locale = "loc ")"),
};

// clang-format off
MethodEntry metadata_methods[] = {
    METHOD(QTMetaDataSetPropertyString, "SetPropertyString(what as string, data as string)"),
    METHOD(QTMetaDataSetPropertyMemory, "SetPropertyMemory(what as string, data as memoryblock, offset as integer, size as integer)"),
    METHOD(QTMetaDataGetPropertyString, "GetPropertyString(what as string) as string"),
    METHOD(QTMetaDataGetPropertyMemory, "GetPropertyMemory(what as string) as memoryblock"),
    METHOD(QTMetaDataDestructor, "Close"),
    METHOD(CountItems, "CountItems as integer"),
    METHOD(FirstItem, "FirstItem as QTMetaDataItemKRZ"),
    METHOD(NextItem, "NextItem as QTMetaDataItemKRZ"),
    METHOD(RemoveItem, "RemoveItem(item as QTMetaDataItemKRZ)"),
    METHOD(rbQTMetaDataRemoveItemsWithKey, "RemoveItemsWithKey(StorageFormat as string, KeyFormat as string, Key as string)"),
    METHOD(rbQTMetaDataGetItemCountWithKey, "CountItemsWithKey(StorageFormat as string, KeyFormat as string, Key as string) as integer"),
    METHOD(rbQTMetaDataRemoveItemsWithKeyCode, "RemoveItemsWithKeyCode(StorageFormat as string, KeyCode as string, Key as string)"),
    METHOD(rbQTMetaDataGetItemCountWithKeyCode, "CountItemsWithKeyCode(StorageFormat as string, KeyCode as string, Key as string) as integer"),
    METHOD(rbQTMetaDataAddItem, "AddItem(StorageFormat as string, KeyFormat as string, Key as string, Value as String, DataType as integer) as QTMetaDataItemKRZ"),
    METHOD(rbQTMetaDataAddItemCode, "AddItemCode(StorageFormat as string, KeyFormat as string, KeyCode as string, Value as String, DataType as integer) as QTMetaDataItemKRZ"),
};
// clang-format on

}  // namespace

REALclassDefinition QTMetaDataClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTMetaDataKRZ",
    .data_size = sizeof(QTMetaDataClassData),
    .constructor = HOST_FUNCTION(QTMetaDataConstructor),
    .destructor = HOST_FUNCTION(QTMetaDataDestructor),
    .properties = metadata_properties,
    .property_count = std::size(metadata_properties),
    .methods = metadata_methods,
    .method_count = std::size(metadata_methods),
    .constants = metadata_constants,
    .constant_count = std::size(metadata_constants),
    .shared_methods = metadata_shared_methods,
    .shared_method_count = std::size(metadata_shared_methods),
};

}  // namespace krz
