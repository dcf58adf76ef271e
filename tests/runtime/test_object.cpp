// Strings, objects, arrays and variants: their layout, their counts and the order in which they
// live and die.
#include "host_test.h"

namespace krz {
namespace {

using ObjectTest = CountedTest;

TEST_F(ObjectTest, StringsReadAsTheRecordOfOldHostsAndEndInFourZeroBytes) {
  const OwnedString string("clip", encoding::kAscii);
  const auto* record = static_cast<REALstringRecord*>(static_cast<REALstring>(string));
  EXPECT_EQ(record->length, 4);
  EXPECT_EQ(record->encoding, encoding::kAscii);
  EXPECT_EQ(std::string_view(record->storage + 1, 8), std::string_view("clip\0\0\0\0", 8));
  EXPECT_EQ(reinterpret_cast<uintptr_t>(record->storage + 1) % 4, 0u);
}

TEST_F(ObjectTest, NullAndEmptyStringsAreBothTheEmptyText) {
  const OwnedString empty("");
  EXPECT_NE(static_cast<REALstring>(empty), nullptr);
  EXPECT_EQ(string_bytes(empty), string_bytes(nullptr));
  EXPECT_EQ(string_utf8(nullptr), "");
  EXPECT_EQ(convert_string(nullptr, encoding::kUtf8), nullptr);
  unlock_string(nullptr);
}

TEST_F(ObjectTest, TextsConvertBetweenEncodings) {
  const std::string_view utf16("\xA9\x00n\x00\x3D\xD8\x00\xDE", 8);
  const std::string_view utf32("\xA9\0\0\0n\0\0\0\0\xF6\x01\0", 12);
  const struct {
    std::string_view from;
    uint32_t from_encoding;
    uint32_t to_encoding;
    std::string_view to;
  } cases[] = {
      {"\xA9nam", encoding::kMacRoman, encoding::kUtf8, "\xC2\xA9nam"},
      {"\xC2\xA9nam", encoding::kUtf8, encoding::kMacRoman, "\xA9nam"},
      {"\xDB", encoding::kMacRoman, encoding::kUtf8, "\xE2\x82\xAC"},
      {"\xC2\xA9n\xF0\x9F\x98\x80", encoding::kUtf8, encoding::kUtf16, utf16},
      {utf16, encoding::kUtf16, encoding::kUtf8, "\xC2\xA9n\xF0\x9F\x98\x80"},
      {"\xC2\xA9n\xF0\x9F\x98\x80", encoding::kUtf8, encoding::kUtf32, utf32},
      {utf32, encoding::kUtf32, encoding::kUtf16, utf16},
      {"\xE9", encoding::kLatin1, encoding::kUtf8, "\xC3\xA9"},
      {"\xF0\x9F\x98\x80", encoding::kUtf8, encoding::kMacRoman, "?"},
      {"\xC3\xA9", encoding::kUtf8, encoding::kAscii, "?"},
      {"a\x80", encoding::kAscii, encoding::kUtf8, "a\xEF\xBF\xBD"},
      {"\xFF\xFE", kEncodingUnknown, kEncodingUnknown, "\xFF\xFE"},
      {"\xA9", kEncodingUnknown, encoding::kUtf8, "\xC2\xA9"},
      {"\xC2\xA9", kEncodingUnknown, encoding::kUtf8, "\xC2\xA9"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.from));
    const OwnedString from(c.from, c.from_encoding);
    const OwnedString to(convert_string(from, c.to_encoding));
    EXPECT_EQ(to.bytes(), c.to);
  }
}

TEST_F(ObjectTest, BytesThatAreNoTextReadAsReplacementCharacters) {
  const std::string_view replacement = "\xEF\xBF\xBD";
  const struct {
    std::string_view bytes;
    uint32_t text_encoding;
    int replacements;
  } cases[] = {
      {"\xC0\x80", encoding::kUtf8, 2},          // longer than needed
      {"\xED\xA0\x80", encoding::kUtf8, 3},      // half of a pair
      {"\xF4\x90\x80\x80", encoding::kUtf8, 4},  // beyond the last character
      {"\xE2\x82", encoding::kUtf8, 2},          // cut
      {{"\x00\xD8", 2}, encoding::kUtf16, 1},
      {{"\x00\xDC\x41", 3}, encoding::kUtf16, 2},
      {{"\x00\xD8\x00\x00\x01", 5}, encoding::kUtf32, 2},
      {{"\xFF\xFF\xFF\xFF", 4}, encoding::kUtf32, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::PrintToString(c.bytes));
    const OwnedString string(c.bytes, c.text_encoding);
    std::string expected;
    for (int i = 0; i < c.replacements; ++i) expected.append(replacement);
    EXPECT_EQ(string_utf8(string), expected);
  }
}

TEST_F(ObjectTest, ArraysOwnWhatTheyHoldAndRefuseImpossibleBounds) {
  const OwnedString text("x");
  ArrayObject* const array = new_array({Kind::kString}, {1, 2});
  ASSERT_EQ(array->elements.size(), 6u);
  for (Slot& element : array->elements) {
    EXPECT_EQ(element.bits, 0u);
    element.string = text;
    lock_string(text);
  }
  EXPECT_EQ(static_cast<REALstring>(text)->locks, 7);
  unlock_object(array);
  EXPECT_EQ(static_cast<REALstring>(text)->locks, 1);

  EXPECT_EQ(new_array({Kind::kInteger}, {}), nullptr);
  EXPECT_EQ(new_array({Kind::kInteger}, {-2}), nullptr);
  EXPECT_EQ(new_array({Kind::kInteger}, {INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX}), nullptr);
  EXPECT_EQ(new_array({Kind::kInteger}, std::vector<int32_t>(9, 0)), nullptr);
}

TEST_F(ObjectTest, LongChainsOfVariantsDieWithoutDeepRecursion) {
  REALobject chain = nullptr;
  for (int i = 0; i < 1'000'000; ++i) {
    VariantObject* const next = new_variant({Kind::kVariant}, object_slot(chain));
    unlock_object(chain);
    chain = next;
  }
  unlock_object(chain);
}

TEST_F(ObjectTest, ValuesConvertOrSayThatTheyCannot) {
  const OwnedString text(" 12.5 pounds");
  const OwnedString exact("9007199254740993");
  const struct {
    Type from;
    Slot value;
    Kind to;
    Slot expected;
  } cases[] = {
      {{Kind::kInteger}, integer_slot(-3), Kind::kDouble, real_slot(-3)},
      {{Kind::kDouble}, real_slot(-2.9), Kind::kInteger, integer_slot(-2)},
      {{Kind::kDouble}, real_slot(4294967297.0), Kind::kInteger, integer_slot(1)},
      {{Kind::kDouble}, real_slot(1e300), Kind::kInt64, int64_slot(INT64_MAX)},
      {{Kind::kString}, string_slot(text), Kind::kDouble, real_slot(12.5)},
      {{Kind::kString}, string_slot(exact), Kind::kInt64, int64_slot(9007199254740993)},
      {{Kind::kBoolean}, boolean_slot(true), Kind::kInteger, integer_slot(1)},
      {{Kind::kDouble}, real_slot(0.5), Kind::kBoolean, boolean_slot(true)},
      {{Kind::kNil}, {}, Kind::kInteger, integer_slot(0)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(value_text(c.from, c.value) + " to kind " + std::to_string(int(c.to)));
    Slot result;
    ASSERT_TRUE(convert_value(c.from, c.value, {c.to}, &result));
    EXPECT_EQ(result.bits, c.expected.bits);
    // The same through a variant.
    Slot variant;
    ASSERT_TRUE(convert_value(c.from, c.value, {Kind::kVariant}, &variant));
    Slot again;
    ASSERT_TRUE(convert_value({Kind::kVariant}, variant, {c.to}, &again));
    EXPECT_EQ(again.bits, c.expected.bits);
    unlock_object(variant.object);
  }
  ArrayObject* const array = new_array({Kind::kInteger}, {0});
  Slot untouched = integer_slot(7);
  const Type array_type{Kind::kArray, Kind::kInteger, 1};
  EXPECT_FALSE(convert_value(array_type, object_slot(array), {Kind::kInteger}, &untouched));
  EXPECT_FALSE(convert_value(array_type, object_slot(array), {Kind::kString}, &untouched));
  EXPECT_EQ(untouched.integer, 7);
  unlock_object(array);
}

TEST(NumberText, IsTheShortestThatReadsBack) {
  const struct {
    double number;
    const char* text;
  } cases[] = {{0, "0"},
               {10, "10"},
               {0.1, "0.1"},
               {1000000, "1000000"},
               {-2.5, "-2.5"},
               {1e20, "1e+20"},
               {1.0 / 3, "0.3333333333333333"},
               {0.00001, "0.00001"},
               {1e-7, "1e-07"},
               {123456789012.25, "123456789012.25"}};
  for (const auto& c : cases) {
    EXPECT_EQ(number_text(c.number), c.text);
    EXPECT_EQ(leading_number(c.text), c.number);
  }
  EXPECT_EQ(number_text(0.1f), "0.1");
  EXPECT_EQ(leading_number("infinity"), 0);
  EXPECT_EQ(leading_number("&hFFFF"), 65535);
  EXPECT_EQ(leading_number("--5"), 0);
}

}  // namespace
}  // namespace krz
