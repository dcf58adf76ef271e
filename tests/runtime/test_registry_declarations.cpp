// Declaration texts: every form that modules use, and every way to get one wrong.
#include "host_test.h"
#include "registry/declaration.h"

namespace krz {
namespace {

using DeclarationTest = CountedTest;

char kind_letter(const Type& type) {
  constexpr char kLetters[] = "vnbilfdcsoaV";
  return kLetters[static_cast<int>(type.kind)];
}

std::string type_text(const Type& type) {
  std::string text(1, kind_letter(type));
  if (type.kind == Kind::kArray) text += kind_letter(type.element_type());
  if (type.class_info) text += ":" + type.class_info->name();
  return text;
}

// "name(parameters)result", with "&" for byref and "?" for optional parameters.
std::string summary(const std::string& name, const Signature& signature) {
  std::string text = name;
  if (!signature.reads_like_property) {
    text += "(";
    for (const Parameter& parameter : signature.parameters) {
      if (parameter.by_ref) text += "&";
      text += type_text(parameter.type);
      if (parameter.optional) text += "?";
      text += " ";
    }
    text += ")";
  }
  return text + type_text(signature.result);
}

TEST_F(DeclarationTest, ReadsTheFormsThatModulesUse) {
  const struct {
    const char* declaration;
    const char* expected;
  } cases[] = {
      {"TrackCountKRZ as integer", "TrackCountKRZi"},
      {"HasQTChapterTrackKRZ as Boolean", "HasQTChapterTrackKRZb"},
      {"PitchKRZ as double", "PitchKRZd"},
      {"Close", "Closev"},
      {"kUserDataTextAlbum as string", "kUserDataTextAlbums"},
      {"ChapterTrack as QTChapterTrackKRZ", "ChapterTracko:QTChapterTrackKRZ"},
      {"GetVideoTrackKRZ(index as integer, EnabledTracksOnly as boolean = false) as QTTrackKRZ",
       "GetVideoTrackKRZ(i b? )o:QTTrackKRZ"},
      {"AddTextTrackKRZ(chapters() as QTChapterDataKRZ, type as string, isChapterTrack as "
       "boolean) as QTChapterTrackKRZ",
       "AddTextTrackKRZ(ao:QTChapterDataKRZ s b )o:QTChapterTrackKRZ"},
      {"NextInterestingTimeKRZ(byref time as integer, byref duration as integer, rate as double) "
       "as boolean",
       "NextInterestingTimeKRZ(&i &i d )b"},
      {"MediaGetGraphicsMode(byref Mode as integer, byref TheColor as color)",
       "MediaGetGraphicsMode(&i &c )v"},
      {"SetTrackDimensions(width as double, height as double)", "SetTrackDimensions(d d )v"},
      {"SetFile(index as integer, file as folderitem) as integer", "SetFile(i o:folderitem )i"},
      {"InsertMovieSegmentKRZ(dest as movie, srcIn as integer, srcDuration as integer, dstIn as "
       "integer) as integer",
       "InsertMovieSegmentKRZ(o:movie i i i )i"},
      {"DrawPicture(Image as Picture, x as Integer, sx as Integer = 0, sw as Integer = -10000)",
       "DrawPicture(o:Picture i i? i? )v"},
      {"LenB( s as string ) as integer", "LenB(s )i"},
      {"Flush()", "Flush()v"},
      {"Split(text as string, separator as string = \" \") as string()", "Split(s s? )as"},
      {"Sort(byref grid(,) as Int64, ByVal b as Variant, optional c as Object, d as Single = 1)",
       "Sort(&al V o? f? )v"},
  };
  Registry registry;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.declaration);
    std::string name;
    Signature signature;
    ASSERT_EQ(parse_method(c.declaration, registry, name, signature), "");
    EXPECT_EQ(summary(name, signature), c.expected);
    release_defaults(signature);
  }
}

TEST_F(DeclarationTest, DefaultsHaveTheTypeOfTheirParameter) {
  Registry registry;
  std::string name;
  Signature signature;
  ASSERT_EQ(parse_method("F(a as double = -3, b as string = \"a\"\"b\", c as integer = &hFF, d as "
                         "boolean = TRUE, e as int64 = 5000000000, f as Movie = nil)",
                         registry, name, signature),
            "");
  const auto& parameters = signature.parameters;
  ASSERT_EQ(parameters.size(), 6u);
  EXPECT_EQ(parameters[0].default_value.real, -3.0);
  EXPECT_EQ(string_utf8(parameters[1].default_value.string), "a\"b");
  EXPECT_EQ(parameters[2].default_value.integer, 255);
  EXPECT_TRUE(parameters[3].default_value.boolean);
  EXPECT_EQ(parameters[4].default_value.int64, 5000000000);
  EXPECT_EQ(parameters[5].default_value.object, nullptr);
  EXPECT_EQ(signature.required_count(), 0u);
  release_defaults(signature);
}

TEST_F(DeclarationTest, WrongTextsAreExplainedAndOwnNothing) {
  const struct {
    const char* declaration;
    const char* error;
  } cases[] = {
      {"", "a name is missing"},
      {"(a as integer)", "a name is missing"},
      {"9Lives as integer", "a name is missing"},
      {"F(a integer)", "a parameter needs \"as\" and a type"},
      {"F(a as )", "a type is missing after \"as\""},
      {"F as", "a type is missing after \"as\""},
      {"F(a as integer", "\")\" is missing after the parameters"},
      {"F(a as integer,)", "a parameter's name is missing"},
      {"F(a as integer = )", "a value is missing"},
      {"F(a as string = \"x)", "a quoted value does not end"},
      {"F(a as string = \"x\", b as integer)",
       "a parameter without a default value follows one with"},
      {"F(a as integer = \"x\")", "a default value does not have the type of its parameter"},
      {"F(a as boolean = 3)", "a default value does not have the type of its parameter"},
      {"F(byref a as integer = 3)", "a byref parameter cannot be optional"},
      {"F as integer as string", "unexpected text at the end"},
      {"F(a(,,,,,,,,) as integer)", "an array has at most eight dimensions"},
      {"F(a as integer = 1e999)", "a number is not readable"},
      {"F(a as int64 = 99999999999999999999)", "a number does not fit in 64 bits"},
  };
  Registry registry;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.declaration);
    std::string name;
    Signature signature;
    EXPECT_EQ(parse_method(c.declaration, registry, name, signature), c.error);
  }
  std::string many = "F(";
  for (int i = 0; i < 1000; ++i) many += "a as integer,";
  std::string name;
  Signature signature;
  EXPECT_EQ(parse_method(many, registry, name, signature), "there are too many parameters");
}

// Every declaration cut at every byte, and with every byte spoiled, is read or refused, and leaks
// nothing.
TEST_F(DeclarationTest, SpoiledTextsNeverCrash) {
  const std::string whole =
      "F(byref a() as T, b as string = \"x\"\"y\", optional c as double = -1.5e3) as string()";
  Registry registry;
  std::string name;
  Signature signature;
  int refused = 0;
  for (size_t i = 0; i < whole.size(); ++i) {
    for (const char spoil : {'\0', '(', '"', ',', '='}) {
      std::string text = whole;
      text[i] = spoil;
      if (spoil == '\0') text.resize(i);
      refused += !parse_method(text, registry, name, signature).empty();
      release_defaults(signature);
    }
  }
  EXPECT_GT(refused, 100);
}

TEST_F(DeclarationTest, ConstantsHaveTheTypeOfTheirValue) {
  const struct {
    const char* declaration;
    const char* name;
    Kind kind;
    const char* text;
  } cases[] = {
      {"dfDontDisplay = 1", "dfDontDisplay", Kind::kInteger, "1"},
      {"kQTMetaDataKeyFormatCommon = \"comn\"", "kQTMetaDataKeyFormatCommon", Kind::kString,
       "comn"},
      {"  spaced   =   -7  ", "spaced", Kind::kInteger, "-7"},
      {"tight=&h10", "tight", Kind::kInteger, "16"},
      {"half = 0.5", "half", Kind::kDouble, "0.5"},
      {"yes = True", "yes", Kind::kBoolean, "True"},
      {"big = 4294967296", "big", Kind::kInt64, "4294967296"},
      {"red = &cFF0000", "red", Kind::kColor, "&cFF0000"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.declaration);
    ConstantInfo constant;
    ASSERT_EQ(parse_constant(c.declaration, constant), "");
    EXPECT_EQ(constant.name, c.name);
    EXPECT_EQ(constant.type.kind, c.kind);
    EXPECT_EQ(value_text(constant.type, constant.value), c.text);
    unlock_slot(constant.type, constant.value);
  }
  for (const char* wrong : {"", "x", "x =", "= 1", "x = y", "x = \"a", "x = \"a\" b", "x = 1 2"}) {
    SCOPED_TRACE(wrong);
    ConstantInfo constant;
    EXPECT_NE(parse_constant(wrong, constant), "");
  }
}

}  // namespace
}  // namespace krz
