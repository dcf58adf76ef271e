// The text and number functions, by tables of calls and what they answer.
#include "library_test.h"

namespace krz {
namespace {

struct Case {
  const char* function;
  std::vector<TestValue> arguments;
  const char* expected;
};

class LibraryTextTest : public LibraryTest {
 protected:
  void check(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
      std::string trace = c.function;
      for (const Value& argument : c.arguments) trace += " <" + argument.text() + ">";
      SCOPED_TRACE(trace);
      EXPECT_EQ(call(c.function, c.arguments).text(), c.expected);
    }
  }
};

TEST_F(LibraryTextTest, PlacesAndLengthsAreInCharacters) {
  check({{"Len", {"héllo"}, "5"},
         {"LenB", {"héllo"}, "6"},
         {"Len", {""}, "0"},
         {"Len",
          {Value("\x8E"
                 "b",
                 encoding::kMacRoman)},
          "2"},
         {"Len", {Value(std::string_view("\x3D\xD8\x00\xDE", 4), encoding::kUtf16)}, "1"},
         {"Left", {"héllo", 2}, "hé"},
         {"Left", {"héllo", 99}, "héllo"},
         {"Left", {"héllo", -1}, ""},
         {"Left", {Value("\x8E\x8E\x8E", encoding::kMacRoman), 2}, "éé"},
         {"Right", {"llé", 2}, "lé"},
         {"Right", {"llé", 99}, "llé"},
         {"Mid", {"aébc", 2, 2}, "éb"},
         {"Mid", {"aébc", 2}, "ébc"},
         {"Mid", {"abc", 0, 2}, "a"},
         {"Mid", {"abc", -5, 3}, ""},
         {"Mid", {"abc", 2, 2147483647}, "bc"},
         {"Mid", {"abc", 9, 1}, ""},
         {"LeftB", {Value("\xFF\xFE\xFD", kEncodingUnknown), 1}, "ˇ"},
         {"MidB", {"abcd", 2, 2}, "bc"},
         {"MidB", {"abcd", 3}, "cd"},
         {"RightB", {"abcd", 3}, "bcd"}});
}

TEST_F(LibraryTextTest, TextsAreTrimmedAndCased) {
  check({{"Trim", {"\t a b \r\n"}, "a b"},
         {"LTrim", {"  a "}, "a "},
         {"RTrim", {" a  "}, " a"},
         {"Trim", {"   "}, ""},
         {"Uppercase", {"straße éñ ÿ ω д ж 1"}, "STRAßE ÉÑ Ÿ Ω Д Ж 1"},
         {"Lowercase", {"ÄŒŽ×Ÿ ΑΣ ЁЯ"}, "äœž×ÿ ασ ёя"},
         {"Lowercase", {""}, ""}});
}

TEST_F(LibraryTextTest, SearchingIgnoresCase) {
  check({{"InStr", {"Été à la plage", "À"}, "5"},
         {"InStr", {"abcABC", "b"}, "2"},
         {"InStr", {3, "abcABC", "b"}, "5"},
         {"InStr", {"abc", "x"}, "0"},
         {"InStr", {99, "abc", "a"}, "0"},
         {"InStr", {Value("caf\x8E", encoding::kMacRoman), "é"}, "4"},
         {"InStrB", {1, "aéb", "b"}, "4"},
         {"Replace", {"one One one", "ONE", "two"}, "two One one"},
         {"ReplaceAll", {"one One one", "ONE", "é"}, "é é é"},
         {"ReplaceAll", {"aaa", "a", "aa"}, "aaaaaa"},
         {"ReplaceAll", {"abc", "", "x"}, "abc"},
         {"ReplaceLineEndings", {"a\r\nb\rc\n\rd", "-"}, "a-b-c--d"},
         {"ReplaceLineEndings", {"a b", "-"}, "a b"},
         {"StrComp", {"abc", "ABC"}, "0"},
         {"StrComp", {"abc", "ABC", 0}, "1"},
         {"StrComp", {"a", "b"}, "-1"}});
}

TEST_F(LibraryTextTest, FieldsAreSplitCountedAndJoined) {
  check({{"Split", {"a,b,,c", ","}, "[a|b||c]"},
         {"Split", {"a b"}, "[a|b]"},
         {"Split", {"aéb", ""}, "[a|é|b]"},
         {"Split", {"", ","}, "[]"},
         {"NthField", {"a::b::c", "::", 3}, "c"},
         {"NthField", {"a,b", ",", 3}, ""},
         {"NthField", {"a,b", ",", 0}, ""},
         {"CountFields", {"a,b,", ","}, "3"},
         {"CountFields", {"", ","}, "0"}});
  const Value fields = call("Split", {"a,b", ","});
  EXPECT_EQ(call("Join", {fields, "—"}).text(), "a—b");
  EXPECT_EQ(call("Join", {fields}).text(), "a b");
}

TEST_F(LibraryTextTest, NumbersBecomeTextAndBack) {
  check({{"Str", {10}, "10"},
         {"Str", {0.1}, "0.1"},
         {"Str", {1e6}, "1000000"},
         {"Str", {true}, "True"},
         {"Str", {int64_t{1} << 40}, "1099511627776"},
         {"Str", {1234.5, "#,##0.00"}, "1,234.50"},
         {"Val", {" -12.5kg"}, "-12.5"},
         {"Val", {"&h1F"}, "31"},
         {"Val", {"none"}, "0"},
         {"Hex", {255}, "FF"},
         {"Hex", {-1}, "FFFFFFFF"},
         {"Oct", {8}, "10"},
         {"Bin", {5}, "101"},
         {"Chr", {233}, "é"},
         {"Asc", {"é!"}, "233"},
         {"Asc", {""}, "0"},
         {"AscB", {"é"}, "195"}});
  call("Chr", {-1});
  EXPECT_EQ(take_message(), "OutOfBoundsException: -1 is no character");
}

TEST_F(LibraryTextTest, FormatsFollowTheirPattern) {
  check({{"Format", {3.14159, "0.00"}, "3.14"},
         {"Format", {0.5, "#.##"}, ".5"},
         {"Format", {0.5, "0.0#"}, "0.5"},
         {"Format", {7, "000"}, "007"},
         {"Format", {1234567.891, "#,##0.0"}, "1,234,567.9"},
         {"Format", {-5, "0"}, "-5"},
         {"Format", {-0.001, "0.00"}, "0.00"},
         {"Format", {0.256, "0.0%"}, "25.6%"},
         {"Format", {12, "[0] s"}, "[12] s"},
         {"Format", {-3, "0;(0);zero"}, "(3)"},
         {"Format", {0, "0;(0);zero"}, "zero"},
         {"Format", {5, ""}, "5"},
         {"Format", {1e300, "0"}, call("Format", {1e300, "#"}).text().c_str()}});
  EXPECT_EQ(call("Format", {1e300, "0"}).text().size(), 301u);
}

TEST_F(LibraryTextTest, EncodingsAreStatedAndChanged) {
  const Value latin = call("ConvertEncoding", {"é", int(encoding::kMacRoman)});
  EXPECT_EQ(string_bytes(latin.slot().string), "\x8E");
  EXPECT_EQ(call("Encoding", {latin}).text(), "0");
  const Value defined = call("DefineEncoding", {latin, int(encoding::kLatin1)});
  EXPECT_EQ(string_bytes(defined.slot().string), "\x8E");
  const ClassInfo* const encodings = registry().find_class("Encodings");
  EXPECT_EQ(encodings->find_constant("utf8")->value.color, encoding::kUtf8);
  EXPECT_EQ(encodings->find_constant("UTF16")->value.color, encoding::kUtf16);
}

TEST_F(LibraryTextTest, NumbersAreWorkedOut) {
  check({{"Abs", {-3}, "3"},
         {"Abs", {-3.5}, "3.5"},
         {"Min", {2, 1}, "1"},
         {"Max", {2, 1.5}, "2"},
         {"Max", {int64_t{1} << 33, 1}, "8589934592"},
         {"Floor", {-1.5}, "-2"},
         {"Ceil", {-1.5}, "-1"},
         {"Round", {2.5}, "3"},
         {"Round", {-2.5}, "-3"},
         {"Sqrt", {2.25}, "1.5"},
         {"Pow", {2, 10}, "1024"},
         {"Sign", {-0.1}, "-1"},
         {"Atan2", {0, -1}, "3.141592653589793"},
         {"Exp", {0}, "1"},
         {"Log", {1}, "0"},
         {"Abs", {int(INT32_MIN)}, "-2147483648"}});
  double least = 1;
  double greatest = 0;
  for (int i = 0; i < 1000; ++i) {
    const double number = call("Rnd", {}).slot().real;
    least = std::min(least, number);
    greatest = std::max(greatest, number);
  }
  EXPECT_GE(least, 0);
  EXPECT_LT(least, 0.1);
  EXPECT_GT(greatest, 0.9);
  EXPECT_LT(greatest, 1);
}

}  // namespace
}  // namespace krz
