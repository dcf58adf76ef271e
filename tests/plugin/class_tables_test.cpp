// The tables that the host reads, and the properties and lifetimes of the record classes.
#include <cstring>

#include "plugin/host/encodings.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::field;
using fake_host::property;

class ClassTables : public PluginTest {
 protected:
  template <class T>
  static T get(REALobject object, const char* class_name, const char* name) {
    const PropertyEntry& entry = property(class_name, name);
    return fake_host::function<T(REALobject, intptr_t)>(entry.getter)(object, entry.param);
  }
  template <class T>
  static void set(REALobject object, const char* class_name, const char* name, T value) {
    const PropertyEntry& entry = property(class_name, name);
    fake_host::function<void(REALobject, intptr_t, T)>(entry.setter)(object, entry.param, value);
  }
};

/// Every property as "name type", a direct field marked with "@" and "," between them.
std::string properties_of(const char* class_name) {
  const REALclassDefinition& one = fake_host::definition(class_name);
  std::string text;
  for (int32_t i = 0; i < one.property_count; ++i) {
    const PropertyEntry& entry = one.properties[i];
    EXPECT_EQ(entry.getter == kDirectField, entry.setter == kDirectField);
    EXPECT_NE(entry.setter, nullptr);
    EXPECT_EQ(entry.group, nullptr);
    text += std::string(i ? "," : "") + (entry.getter == kDirectField ? "@" : "") + entry.name +
            " " + entry.type;
  }
  return text;
}

TEST_F(ClassTables, NameTheirPropertiesInOrder) {
  const struct {
    const char* class_name;
    const char* properties;
  } cases[] = {
      {"QTUserDataKRZ", "@Handle Integer,@Lasterror Integer,@Release Boolean"},
      {"QTTrackKRZ", "@Movie Movie,@TrackHandle Integer,@Lasterror Integer"},
      {"QTChapterTrackKRZ", ""},
      {"QTMetaDataKRZ", "@Handle Integer,@Lasterror Integer"},
      {"QTMetaDataItemKRZ", "@Lasterror Integer"},
      {"QTTimeCodeKRZ",
       "UseTimeCode Boolean,DropFrames Boolean,IsNeg Boolean,Use24Hours Boolean,NumberOfFrames "
       "Integer,Flags "
       "Integer,TimeScale Integer,FrameDuration Integer,Counter Integer,Hours Integer,Minutes "
       "Integer,Seconds "
       "Integer,Frames Integer,@SourceName String,@FrameNumber Integer"},
      {"QTTimeCodeCreationParametersKRZ",
       "@Height Integer,@UseTimeCode Boolean,@DropFrames Boolean,@IsNeg Boolean,@Use24Hours "
       "Boolean,@FrameDuration "
       "Integer,@NumberOfFrames Integer,@Hours Integer,@Minutes Integer,@Seconds "
       "Integer,@TimeScale Integer,@Frames "
       "Integer,@CounterStartValue Integer,@DisplayBelowVideo Boolean,@SourceName String,@FontName "
       "String,@DisplayTimeCode Boolean,@FontFace Integer,@FontSize Integer,@FontForeColor "
       "Color,@FontBackColor Color"},
      {"QTSampleDescriptionKRZ", "@CodecType String"},
      {"QTVideoSampleDescriptionKRZ",
       "CodecVendor String,TemporalQuality Integer,SpatialQuality Integer,Width Integer,Height "
       "Integer,Size "
       "Integer,FrameCount Integer,CodecName String,Depth Integer,HorizontalResolution "
       "Double,VerticalResolution "
       "Double"},
      {"QTSoundSampleDescriptionKRZ",
       "CodecVendor String,ChannelCount Integer,SampleSize Integer,SampleRate Double,Version "
       "Integer"},
      {"QTSpriteSampleDescriptionKRZ", "DecompressorType String"},
      {"QTMusicSampleDescriptionKRZ", ""},
      {"QTThreeDeeSampleDescriptionKRZ", "RendererType String,DecompressorType String"},
      {"QTFlashSampleDescriptionKRZ", "DecompressorType String"},
      {"QTTextSampleDescriptionKRZ",
       "DefaultFontName String,DisplayFlags Integer,TextJustification Integer,BackgroundColor "
       "Color,Left Integer,Top "
       "Integer,Width Integer,Height Integer,TextHeight Integer,TextAscent Integer,TextFontID "
       "Integer,TextSize "
       "Integer,TextColor Color,TextFace Integer,Bold Boolean,Italic Boolean,Underline "
       "Boolean,Outline Boolean,Shadow "
       "Boolean,Condense Boolean,Extend Boolean"},
  };
  for (const auto& one : cases)
    EXPECT_EQ(properties_of(one.class_name), one.properties) << one.class_name;
}

TEST_F(ClassTables, FlagEveryPropertyOfChapters) {
  const REALclassDefinition& chapters = fake_host::definition("QTChapterDataKRZ");
  for (int32_t i = 0; i < chapters.property_count; ++i) EXPECT_EQ(chapters.properties[i].flags, 6u);
  EXPECT_EQ(property("QTTrackKRZ", "Movie").flags, 0u);
}

TEST_F(ClassTables, DirectFieldsDoNotOverlap) {
  for (const REALclassDefinition* one : fake_host::host().classes) {
    std::map<intptr_t, intptr_t> fields;  // begin, end
    for (int32_t i = 0; i < one->property_count; ++i) {
      const PropertyEntry& entry = one->properties[i];
      if (entry.getter != kDirectField) continue;
      const std::string_view type = entry.type;
      const intptr_t size = type == "Boolean"                      ? 1
                            : type == "Integer" || type == "Color" ? 4
                                                                   : sizeof(void*);
      EXPECT_EQ(entry.param % size, 0) << one->name << "." << entry.name;
      EXPECT_LE(entry.param + size, one->data_size) << one->name << "." << entry.name;
      EXPECT_TRUE(fields.emplace(entry.param, entry.param + size).second)
          << one->name << "." << entry.name;
    }
    intptr_t end = 0;
    for (const auto& [begin, field_end] : fields) {
      EXPECT_GE(begin, end) << one->name;
      end = field_end;
    }
  }
}

/// The declarations of a class's constants, in their order.
std::string constants_of(const char* class_name) {
  const REALclassDefinition& one = fake_host::definition(class_name);
  std::string text;
  for (int32_t i = 0; i < one.constant_count; ++i) {
    text += std::string(one.constants[i].declaration) + "; ";
  }
  return text;
}

TEST_F(ClassTables, ListTheirConstantsInOrder) {
  EXPECT_EQ(
      constants_of("QTMetaDataKRZ"),
      "kQTMetaDataTypeBinary = 0; kQTMetaDataTypeUTF8 = 1; kQTMetaDataTypeUTF16BE = 2; "
      "kQTMetaDataTypeMacEncodedText = 3; kQTMetaDataTypeJPEGImage = 13; "
      "kQTMetaDataTypePNGImage = 14; kQTMetaDataTypeSignedIntegerBE = 21; "
      "kQTMetaDataTypeUnsignedIntegerBE = 22; kQTMetaDataTypeFloat32BE = 23; "
      "kQTMetaDataTypeFloat64BE = 24; kQTMetaDataTypeBMPImage = 27; "
      R"(kQTMetaDataTypeQuickTimeMetaData = 28; kPropertyClass_MetaData = "meta"; )"
      R"(kQTMetaDataPropertyID_StorageFormats = "fmts"; )"
      R"(kQTMetaDataPropertyID_OwnerType = "ownt"; kQTMetaDataPropertyID_Owner = "ownr"; )"
      R"(kPropertyClass_MetaDataItem = "mdit"; kQTMetaDataKeyFormatCommon = "comn"; )"
      R"(kQTMetaDataCommonKeyAuthor = "auth"; kQTMetaDataCommonKeyComment = "cmmt"; )"
      R"(kQTMetaDataCommonKeyCopyright = "cprt"; kQTMetaDataCommonKeyDirector = "dtor"; )"
      R"(kQTMetaDataCommonKeyDisplayName = "name"; kQTMetaDataCommonKeyInformation = "info"; )"
      R"(kQTMetaDataCommonKeyKeywords = "keyw"; kQTMetaDataCommonKeyProducer = "prod"; )"
      R"(kQTMetaDataCommonKeyAlbum = "albm"; kQTMetaDataCommonKeyArtist = "arts"; )"
      R"(kQTMetaDataCommonKeyArtwork = "artw"; kQTMetaDataCommonKeyChapterName = "chap"; )"
      R"(kQTMetaDataCommonKeyComposer = "comp"; kQTMetaDataCommonKeyDescription = "desc"; )"
      R"(kQTMetaDataCommonKeyGenre = "genr"; kQTMetaDataCommonKeyOriginalFormat = "orif"; )"
      R"(kQTMetaDataCommonKeyOriginalSource = "oris"; kQTMetaDataCommonKeyPerformers = "perf"; )"
      R"(kQTMetaDataCommonKeySoftware = "soft"; kQTMetaDataCommonKeyWriter = "wrtr"; )"
      R"(kQTMetaDataStorageFormatQuickTime = "mdta"; kQTMetaDataKeyFormatQuickTime = "mdta"; )"
      R"(kQTMetaDataStorageFormatiTunes = "itms"; )"
      R"(kQTMetaDataKeyFormatiTunesShortForm = "itsk"; )"
      R"(kQTMetaDataKeyFormatiTunesLongForm = "itlk"; )"
      R"(kQTMetaDataStorageFormatUserData = "udta"; kQTMetaDataKeyFormatUserData = "udta"; )"
      R"(kUserDataMovieControllerType  = "ctyp"; kUserDataName = "name"; )"
      R"(kUserDataAnimatedGIFLoopCount = "gifc"; kQTAnimatedGIFLoopCountInfinite = 0; )"
      R"(kUserDataAnimatedGIFBufferingSize = "gifb"; kQTMetaDataInvalidMetaDataErr = -2173; )"
      "kQTMetaDataInvalidItemErr = -2174; kQTMetaDataInvalidStorageFormatErr = -2175; "
      "kQTMetaDataInvalidKeyFormatErr = -2176; kQTMetaDataNoMoreItemsErr = -2177; "
      R"(kQTMetaDataItemPropertyID_Value = "valu"; )"
      R"(kQTMetaDataItemPropertyID_DataType = "dtyp"; )"
      R"(kQTMetaDataItemPropertyID_StorageFormat = "sfmt"; )"
      R"(kQTMetaDataItemPropertyID_Key = "key "; kQTMetaDataItemPropertyID_KeyFormat = "keyf"; )"
      R"(kQTMetaDataItemPropertyID_Locale = "loc "; )");
  EXPECT_EQ(constants_of("QTChapterDataKRZ"),
            "dfDontDisplay = 1; dfDontAutoScale = 2; dfClipToTextBox = 4; dfUseMovieBGColor = 8; "
            "dfShrinkTextBoxToFit = 16; dfScrollIn = 32; dfScrollOut = 64; dfHorizScroll = 128; "
            "dfReverseScroll = 256; dfContinuousScroll = 512; dfFlowHoriz = 1024; "
            "dfContinuousKaraoke = 2048; dfDropShadow = 4096; dfAntiAlias = 8192; "
            "dfKeyedText = 16384; dfInverseHilite = 32768; dfTextColorHilite = 65536; "
            "teCenter = 1; teDefault = 0; teRight = -1; teLeft = -2; ");
}

TEST_F(ClassTables, AnswerTheTypesOfUserDataTexts) {
  const REALclassDefinition& metadata = fake_host::definition("QTMetaDataKRZ");
  std::string seen;
  for (int32_t i = 0; i < metadata.shared_method_count; ++i) {
    const MethodEntry& row = metadata.shared_methods[i];
    const REALstring code = fake_host::function<REALstring()>(row.function)();
    EXPECT_EQ(fake_host::encoding_of(code), krz::kMacRoman);
    EXPECT_EQ(fake_host::bytes_of(code)[0], '\xA9');
    std::string name = row.declaration;
    EXPECT_TRUE(name.starts_with("kUserDataText") && name.ends_with(" as string")) << name;
    name = name.substr(13, name.find(' ') - 13);
    seen += name + " " + fake_host::bytes_of(code).substr(1) + "; ";
    fake_host::unlock(code);
  }
  EXPECT_EQ(seen,
            "Album alb; Artist ART; Author aut; Chapter chp; Comment cmt; Composer com; "
            "Copyright cpy; CreationDate day; Description des; Director dir; Disclaimer dis; "
            "EncodedBy enc; FullName nam; Genre gen; HostComputer hst; Information inf; "
            "Keywords key; Make mak; Model mod; OriginalArtist ope; OriginalFormat fmt; "
            "OriginalSource src; Performers prf; Producer prd; Publisher pub; Product PRD; "
            "Software swr; SpecialPlaybackRequirements req; Track trk; Warning wrn; Writer wrt; "
            "URLLink url; EditDate1 ed1; ");
}

TEST_F(ClassTables, TimeCodeParametersHaveTextsInASCII) {
  const char* name = "QTTimeCodeCreationParametersKRZ";
  const REALobject parameters = fake_host::make_object(name);
  for (const char* text : {"SourceName", "FontName"}) {
    EXPECT_EQ(fake_host::encoding_of(field<REALstring>(parameters, name, text)), krz::kASCII);
  }
  fake_host::unlock(parameters);
}

TEST_F(ClassTables, TimeCodesTakeAnyByteButZeroForTrueAndGiveTheRawOneForNegative) {
  const char* name = "QTTimeCodeKRZ";
  const REALobject code = fake_host::make_object(name);
  set<int32_t>(code, name, "Flags", 8);
  set<Boolean>(code, name, "UseTimeCode", 0x80);
  set<Boolean>(code, name, "DropFrames", 2);
  set<Boolean>(code, name, "IsNeg", 2);
  EXPECT_EQ(get<int32_t>(code, name, "Flags"), 5);
  EXPECT_EQ(get<Boolean>(code, name, "IsNeg"), 4);
  EXPECT_EQ(get<Boolean>(code, name, "DropFrames"), 1);
  fake_host::unlock(code);
}

TEST_F(ClassTables, SampleDescriptionsOwnTheirStrings) {
  const char* name = "QTVideoSampleDescriptionKRZ";
  const REALobject description = fake_host::make_object(name);
  EXPECT_EQ(get<REALstring>(description, name, "CodecName"), nullptr);
  const REALstring first = fake_host::make_string("first", krz::kUTF8);
  const REALstring second = fake_host::make_string("second", krz::kUTF8);
  set(description, name, "CodecName", first);
  fake_host::unlock(first);
  const REALstring read = get<REALstring>(description, name, "CodecName");
  EXPECT_EQ(read, first);
  set(description, name, "CodecName", second);
  EXPECT_EQ(fake_host::bytes_of(read), "first") << "what was read is the reader's own";
  fake_host::unlock(read);
  EXPECT_EQ(fake_host::live_strings(), 1);
  set(description, name, "CodecVendor", second);
  set<REALstring>(description, name, "CodecName", nullptr);
  fake_host::unlock(second);
  EXPECT_EQ(fake_host::live_strings(), 1) << "the vendor still holds it";
  field<REALstring>(description, "QTSampleDescriptionKRZ", "CodecType") =
      fake_host::make_string("avc1", krz::kASCII);
  fake_host::unlock(description);
}

TEST_F(ClassTables, UserDataStartsEmptyAndTagged) {
  const REALobject object = fake_host::make_object("QTUserDataKRZ");
  uint32_t tag;
  std::memcpy(&tag, fake_host::data_of(object), sizeof tag);
  EXPECT_EQ(tag, 0x51545544u);
  EXPECT_EQ(field<int32_t>(object, "QTUserDataKRZ", "Handle"), 0);
  EXPECT_EQ(field<Boolean>(object, "QTUserDataKRZ", "Release"), 0);
  fake_host::unlock(object);
}

}  // namespace
