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

TEST_F(ClassTables, ListTheVocabularyOfMetadata) {
  const std::vector<std::string> expected = {
      "kQTMetaDataTypeBinary = 0",
      "kQTMetaDataTypeUTF8 = 1",
      "kQTMetaDataTypeUTF16BE = 2",
      "kQTMetaDataTypeMacEncodedText = 3",
      "kQTMetaDataTypeJPEGImage = 13",
      "kQTMetaDataTypePNGImage = 14",
      "kQTMetaDataTypeSignedIntegerBE = 21",
      "kQTMetaDataTypeUnsignedIntegerBE = 22",
      "kQTMetaDataTypeFloat32BE = 23",
      "kQTMetaDataTypeFloat64BE = 24",
      "kQTMetaDataTypeBMPImage = 27",
      "kQTMetaDataTypeQuickTimeMetaData = 28",
      R"(kPropertyClass_MetaData = "meta")",
      R"(kQTMetaDataPropertyID_StorageFormats = "fmts")",
      R"(kQTMetaDataPropertyID_OwnerType = "ownt")",
      R"(kQTMetaDataPropertyID_Owner = "ownr")",
      R"(kPropertyClass_MetaDataItem = "mdit")",
      R"(kQTMetaDataKeyFormatCommon = "comn")",
      R"(kQTMetaDataCommonKeyAuthor = "auth")",
      R"(kQTMetaDataCommonKeyComment = "cmmt")",
      R"(kQTMetaDataCommonKeyCopyright = "cprt")",
      R"(kQTMetaDataCommonKeyDirector = "dtor")",
      R"(kQTMetaDataCommonKeyDisplayName = "name")",
      R"(kQTMetaDataCommonKeyInformation = "info")",
      R"(kQTMetaDataCommonKeyKeywords = "keyw")",
      R"(kQTMetaDataCommonKeyProducer = "prod")",
      R"(kQTMetaDataCommonKeyAlbum = "albm")",
      R"(kQTMetaDataCommonKeyArtist = "arts")",
      R"(kQTMetaDataCommonKeyArtwork = "artw")",
      R"(kQTMetaDataCommonKeyChapterName = "chap")",
      R"(kQTMetaDataCommonKeyComposer = "comp")",
      R"(kQTMetaDataCommonKeyDescription = "desc")",
      R"(kQTMetaDataCommonKeyGenre = "genr")",
      R"(kQTMetaDataCommonKeyOriginalFormat = "orif")",
      R"(kQTMetaDataCommonKeyOriginalSource = "oris")",
      R"(kQTMetaDataCommonKeyPerformers = "perf")",
      R"(kQTMetaDataCommonKeySoftware = "soft")",
      R"(kQTMetaDataCommonKeyWriter = "wrtr")",
      R"(kQTMetaDataStorageFormatQuickTime = "mdta")",
      R"(kQTMetaDataKeyFormatQuickTime = "mdta")",
      R"(kQTMetaDataStorageFormatiTunes = "itms")",
      R"(kQTMetaDataKeyFormatiTunesShortForm = "itsk")",
      R"(kQTMetaDataKeyFormatiTunesLongForm = "itlk")",
      R"(kQTMetaDataStorageFormatUserData = "udta")",
      R"(kQTMetaDataKeyFormatUserData = "udta")",
      R"(kUserDataMovieControllerType  = "ctyp")",
      R"(kUserDataName = "name")",
      R"(kUserDataAnimatedGIFLoopCount = "gifc")",
      "kQTAnimatedGIFLoopCountInfinite = 0",
      R"(kUserDataAnimatedGIFBufferingSize = "gifb")",
      "kQTMetaDataInvalidMetaDataErr = -2173",
      "kQTMetaDataInvalidItemErr = -2174",
      "kQTMetaDataInvalidStorageFormatErr = -2175",
      "kQTMetaDataInvalidKeyFormatErr = -2176",
      "kQTMetaDataNoMoreItemsErr = -2177",
      R"(kQTMetaDataItemPropertyID_Value = "valu")",
      R"(kQTMetaDataItemPropertyID_DataType = "dtyp")",
      R"(kQTMetaDataItemPropertyID_StorageFormat = "sfmt")",
      R"(kQTMetaDataItemPropertyID_Key = "key ")",
      R"(kQTMetaDataItemPropertyID_KeyFormat = "keyf")",
      R"(kQTMetaDataItemPropertyID_Locale = "loc ")",
  };
  const REALclassDefinition& metadata = fake_host::definition("QTMetaDataKRZ");
  ASSERT_EQ(metadata.constant_count, 61);
  for (int32_t i = 0; i < 61; ++i)
    EXPECT_EQ(metadata.constants[i].declaration, expected[static_cast<size_t>(i)]);
}

TEST_F(ClassTables, AnswerTheTypesOfUserDataTexts) {
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"Album", "alb"},          {"Artist", "ART"},
      {"Author", "aut"},         {"Chapter", "chp"},
      {"Comment", "cmt"},        {"Composer", "com"},
      {"Copyright", "cpy"},      {"CreationDate", "day"},
      {"Description", "des"},    {"Director", "dir"},
      {"Disclaimer", "dis"},     {"EncodedBy", "enc"},
      {"FullName", "nam"},       {"Genre", "gen"},
      {"HostComputer", "hst"},   {"Information", "inf"},
      {"Keywords", "key"},       {"Make", "mak"},
      {"Model", "mod"},          {"OriginalArtist", "ope"},
      {"OriginalFormat", "fmt"}, {"OriginalSource", "src"},
      {"Performers", "prf"},     {"Producer", "prd"},
      {"Publisher", "pub"},      {"Product", "PRD"},
      {"Software", "swr"},       {"SpecialPlaybackRequirements", "req"},
      {"Track", "trk"},          {"Warning", "wrn"},
      {"Writer", "wrt"},         {"URLLink", "url"},
      {"EditDate1", "ed1"},
  };
  const REALclassDefinition& metadata = fake_host::definition("QTMetaDataKRZ");
  ASSERT_EQ(metadata.shared_method_count, 33);
  for (size_t i = 0; i < expected.size(); ++i) {
    const MethodEntry& row = metadata.shared_methods[i];
    EXPECT_EQ(row.declaration, "kUserDataText" + expected[i].first + " as string");
    const REALstring code = fake_host::function<REALstring()>(row.function)();
    EXPECT_EQ(fake_host::bytes_of(code), "\xA9" + expected[i].second);
    EXPECT_EQ(fake_host::encoding_of(code), krz::kMacRoman);
    fake_host::unlock(code);
  }
}

TEST_F(ClassTables, ChapterConstantsHaveTheirValues) {
  const std::vector<std::string> expected = {"dfDontDisplay = 1",
                                             "dfDontAutoScale = 2",
                                             "dfClipToTextBox = 4",
                                             "dfUseMovieBGColor = 8",
                                             "dfShrinkTextBoxToFit = 16",
                                             "dfScrollIn = 32",
                                             "dfScrollOut = 64",
                                             "dfHorizScroll = 128",
                                             "dfReverseScroll = 256",
                                             "dfContinuousScroll = 512",
                                             "dfFlowHoriz = 1024",
                                             "dfContinuousKaraoke = 2048",
                                             "dfDropShadow = 4096",
                                             "dfAntiAlias = 8192",
                                             "dfKeyedText = 16384",
                                             "dfInverseHilite = 32768",
                                             "dfTextColorHilite = 65536",
                                             "teCenter = 1",
                                             "teDefault = 0",
                                             "teRight = -1",
                                             "teLeft = -2"};
  const REALclassDefinition& chapters = fake_host::definition("QTChapterDataKRZ");
  ASSERT_EQ(chapters.constant_count, static_cast<int32_t>(expected.size()));
  for (size_t i = 0; i < expected.size(); ++i)
    EXPECT_EQ(chapters.constants[i].declaration, expected[i]);
}

TEST_F(ClassTables, ChaptersStartCentredAndReleaseTheirText) {
  const char* name = "QTChapterDataKRZ";
  const REALobject chapter = fake_host::make_object(name);
  EXPECT_EQ(field<int32_t>(chapter, name, "TextJustification"), 1);
  EXPECT_EQ(field<int32_t>(chapter, name, "DisplayFlags"), 4);
  EXPECT_EQ(field<int32_t>(chapter, name, "FontSize"), 0);
  EXPECT_EQ(field<Boolean>(chapter, name, "bold"), 0);
  field<REALstring>(chapter, name, "Text") = fake_host::make_string("Opening", krz::kUTF8);
  fake_host::unlock(chapter);  // the frame checks that the string is gone
}

TEST_F(ClassTables, TimeCodeParametersStartAtDropFrameZero) {
  const char* name = "QTTimeCodeCreationParametersKRZ";
  const REALobject parameters = fake_host::make_object(name);
  const std::map<std::string, int32_t> integers = {{"Height", 20},
                                                   {"FrameDuration", 100},
                                                   {"NumberOfFrames", 30},
                                                   {"Hours", 0},
                                                   {"Minutes", 0},
                                                   {"Seconds", 0},
                                                   {"TimeScale", 2997},
                                                   {"Frames", 0},
                                                   {"FontSize", -1},
                                                   {"FontFace", -1},
                                                   {"CounterStartValue", 0},
                                                   {"FontForeColor", 0},
                                                   {"FontBackColor", 0xFFFFFF}};
  for (const auto& [key, value] : integers)
    EXPECT_EQ(field<int32_t>(parameters, name, key), value) << key;
  const std::map<std::string, Boolean> booleans = {
      {"IsNeg", 0},      {"DropFrames", 1},        {"UseTimeCode", 1},
      {"Use24Hours", 1}, {"DisplayBelowVideo", 1}, {"DisplayTimeCode", 0}};
  for (const auto& [key, value] : booleans)
    EXPECT_EQ(field<Boolean>(parameters, name, key), value) << key;

  for (const auto& [key, text] : std::map<std::string, std::string>{
           {"SourceName", "KRZ REALbasic Plugin"}, {"FontName", "Monaco"}}) {
    EXPECT_EQ(fake_host::bytes_of(field<REALstring>(parameters, name, key)), text);
    EXPECT_EQ(fake_host::encoding_of(field<REALstring>(parameters, name, key)), krz::kASCII);
  }
  const MethodEntry& close = fake_host::method(name, "Close");
  fake_host::function<void(REALobject)>(close.function)(parameters);
  EXPECT_EQ(field<REALstring>(parameters, name, "SourceName"), nullptr);
  EXPECT_EQ(field<REALstring>(parameters, name, "FontName"), nullptr);
  EXPECT_EQ(fake_host::live_strings(), 0);
  fake_host::unlock(parameters);
}

TEST_F(ClassTables, TimeCodesOverlayFlagsAndCounter) {
  const char* name = "QTTimeCodeKRZ";
  const REALobject code = fake_host::make_object(name);
  EXPECT_EQ(get<Boolean>(code, name, "UseTimeCode"), 1);
  set<Boolean>(code, name, "UseTimeCode", 0);
  EXPECT_EQ(get<int32_t>(code, name, "Flags"), 8);
  set<Boolean>(code, name, "UseTimeCode", 0x80);
  EXPECT_EQ(get<int32_t>(code, name, "Flags"), 0);
  set<Boolean>(code, name, "DropFrames", 1);
  set<Boolean>(code, name, "IsNeg", 2);
  set<Boolean>(code, name, "Use24Hours", 1);
  EXPECT_EQ(get<int32_t>(code, name, "Flags"), 7);
  EXPECT_EQ(get<Boolean>(code, name, "IsNeg"), 4) << "the raw masked value";
  EXPECT_EQ(get<Boolean>(code, name, "DropFrames"), 1);
  set<Boolean>(code, name, "IsNeg", 0);
  EXPECT_EQ(get<int32_t>(code, name, "Flags"), 3);

  set<int32_t>(code, name, "Counter", 0x04038201);
  EXPECT_EQ(get<int32_t>(code, name, "Hours"), 1);
  EXPECT_EQ(get<int32_t>(code, name, "Minutes"), 130);
  EXPECT_EQ(get<int32_t>(code, name, "Seconds"), 3);
  EXPECT_EQ(get<int32_t>(code, name, "Frames"), 4);
  set<int32_t>(code, name, "Hours", 300);
  EXPECT_EQ(get<int32_t>(code, name, "Hours"), 44);
  EXPECT_EQ(get<int32_t>(code, name, "Counter"), 0x0403822C);
  set<int32_t>(code, name, "NumberOfFrames", -1);
  EXPECT_EQ(get<int32_t>(code, name, "NumberOfFrames"), 255);
  set<int32_t>(code, name, "TimeScale", 2997);
  set<int32_t>(code, name, "FrameDuration", -7);
  EXPECT_EQ(get<int32_t>(code, name, "TimeScale"), 2997);
  EXPECT_EQ(get<int32_t>(code, name, "FrameDuration"), -7);
  EXPECT_EQ(field<int32_t>(code, name, "FrameNumber"), 0);

  field<REALstring>(code, name, "SourceName") = fake_host::make_string("camera", krz::kUTF8);
  const auto close =
      fake_host::function<void(REALobject)>(fake_host::method(name, "Close").function);
  close(code);
  close(code);
  EXPECT_EQ(fake_host::live_strings(), 0);
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

  set<double>(description, name, "HorizontalResolution", 72.5);
  set<int32_t>(description, name, "Width", 640);
  EXPECT_EQ(get<double>(description, name, "HorizontalResolution"), 72.5);
  EXPECT_EQ(get<int32_t>(description, "QTTextSampleDescriptionKRZ", "Width"), 640)
      << "one record for all kinds";
  EXPECT_EQ(get<int32_t>(description, "QTSoundSampleDescriptionKRZ", "Version"), 0);
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
