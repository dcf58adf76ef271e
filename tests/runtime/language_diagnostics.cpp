// What the language says about mistakes, and where; and that no input makes it do worse than
// complain.
#include <gtest/gtest.h>

#include <random>

#include "scripts/script_runner.h"

namespace krz::test {
namespace {

std::vector<Diagnostic> diagnostics_of(const std::string& source) {
  Runtime runtime{RuntimeOptions{}};
  std::vector<Diagnostic> diagnostics;
  const auto script = Script::compile(runtime, source, "test.bas", diagnostics);
  EXPECT_EQ(script == nullptr, !diagnostics.empty());
  return diagnostics;
}

struct Mistake {
  const char* source;
  int line;
  int column;
  const char* message;  // a part of it
};

TEST(LanguageDiagnostics, NameThePlaceAndWhatToDo) {
  const Mistake mistakes[] = {
      {"Dim x As Integer = 1.5", 1, 20, "must be an Integer, not a Double; Integer(…) converts it"},
      {"Dim a As Strng", 1, 10, "there is no type “Strng”; did you mean “String”?"},
      {"Dim total As Integer\nPrint totl", 2, 7, "did you mean “total”?"},
      {"Dim m As New MemoryBlock(4)\nPrint m.Sise", 2, 9, "did you mean “Size”?"},
      {"Sub F(a As Integer, b As String)\nEnd Sub\nF 1", 3, 1,
       "F takes 2 arguments, not 1: Sub F(a As Integer, b As String)"},
      {"Sub F(a As Integer)\nEnd Sub\nF \"x\"", 3, 3, "the argument “a” must be an Integer"},
      {"Sub F(ByRef a As Integer)\nEnd Sub\nF 5", 3, 3, "is ByRef and needs a variable"},
      {"Sub F(ByRef a As Integer)\nEnd Sub\nDim d As Double\nF d", 4, 3,
       "needs a variable of type Integer, not Double"},
      {"If 1 Then\nEnd If", 1, 4, "a condition must be a Boolean"},
      {"For i As Integer = 1 To 3\nPrint i", 1, 1, "this For is not closed; Next is missing"},
      {"Sub A()\nIf True Then\nEnd Sub", 3, 1, "End If is expected here, for the If in line 2"},
      {"While True\nEnd If", 2, 1, "Wend is expected here"},
      {"Print \"abc", 1, 7, "no closing quote"},
      {"Dim s As String = \"é\" + §", 1, 25, "the character § has no meaning here"},
      {"Print “a", 1, 7, "straight quotes"},
      {"Dim x As Integer\nDim X As String", 2, 5, "“x” is declared already, in line 1"},
      {"Print 1 + \"a\"", 1, 9, "use “&” to join"},
      {"Dim o As Object\nDim m As MemoryBlock = o", 2, 24,
       "MemoryBlock(…) converts it when it is one"},
      {"Dim m As MemoryBlock\nPrint RuntimeException(m) Is Nil", 2, 24,
       "is never a RuntimeException"},
      {"Exit For", 1, 1, "this Exit is in no For"},
      {"Next", 1, 1, "closes nothing that is open here"},
      {"Print Nil = \"\"", 1, 11, "a String is never Nil"},
      {"Const k = Len(\"abc\")", 1, 11, "known before the script runs"},
      {"Print 99999999999999999999", 1, 7, "does not fit in 64 bits"},
      {"Dim a(2) As Integer\nPrint a(1, 2)", 2, 7, "1 dimension, not 2"},
      {"Function F() As Integer\nReturn\nEnd Function", 2, 1, "Return needs a value"},
      {"Dim m As New MemoryBlock(1, 2, 3, 4)", 1, 14, "takes 1 argument, not 4: Constructor"},
      {"Dim If As Integer", 1, 5, "“If” is a reserved word"},
      {"\tPrint nothing", 1, 8, "there is no variable"},
  };
  for (const Mistake& mistake : mistakes) {
    SCOPED_TRACE(mistake.source);
    const std::vector<Diagnostic> found = diagnostics_of(mistake.source);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].line, mistake.line);
    EXPECT_EQ(found[0].column, mistake.column);
    EXPECT_NE(found[0].message.find(mistake.message), std::string::npos) << found[0].message;
  }
}

TEST(LanguageDiagnostics, ShowTheLineAndACaretUnderTheColumn) {
  const std::vector<Diagnostic> found = diagnostics_of("\tPrint \"é\", nothing\r\n");
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].text(),
            "test.bas:1:13: error: there is no variable or function “nothing”\n"
            "\tPrint \"é\", nothing\n"
            "\t           ^\n");
}

TEST(LanguageDiagnostics, ComeSeveralAtATimeInSourceOrderAndNoMoreThanTwenty) {
  const std::vector<Diagnostic> found =
      diagnostics_of("F 1\nSub F()\nPrint a\nEnd Sub\nPrint b\nPrint b\n");
  ASSERT_EQ(found.size(), 3u);
  EXPECT_EQ(found[0].line, 1);
  EXPECT_EQ(found[1].line, 3);
  EXPECT_EQ(found[2].line, 5) << "an unknown name is reported once";

  std::string many;
  for (int i = 0; i < 100; ++i) many += "Print name" + std::to_string(i) + "\n";
  EXPECT_EQ(diagnostics_of(many).size(), 20u);
}

std::string repeated(const std::string& text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

TEST(LanguageDiagnostics, DepthAndLengthAreBounded) {
  const int many = 100000;
  const std::string inputs[] = {
      "Print " + repeated("(", many),
      "Print " + repeated("-", many) + "1",
      "Print " + repeated("Not ", many) + "True",
      "Print 1" + repeated("+1", many),
      "Print a" + repeated(".b", many),
      "Print a" + repeated("(1)", many),
      "Print " + repeated("F(", many),
      "Print 1" + repeated(" ^ 1", many),
      repeated("If True Then\n", many),
      repeated("Try\n", many),
      repeated("For i = 1 To 2\n", many),
      repeated("Sub A()\n", many),
      repeated("Select Case 1\nCase 1\n", many),
      "If a Then\n" + repeated("ElseIf b Then\n", many),
      repeated("_\n", many) + "(",
      repeated("Dim a(", many),
      repeated("Try\nFinally\n", 50) + repeated("End Try\n", 50) + "(",
  };
  for (const std::string& input : inputs) {
    SCOPED_TRACE(input.substr(0, 40));
    EXPECT_FALSE(diagnostics_of(input).empty());
  }
}

TEST(LanguageDiagnostics, FinallyInFinallyStaysSmall) {
  std::string source;
  for (int i = 0; i < 50; ++i) source += "Try\nPrint 1\nFinally\n";
  source += "Print 2\n" + repeated("End Try\n", 50);
  EXPECT_TRUE(diagnostics_of(source).empty());
}

// Pieces of programs in random order, cut and with random bytes: everything gets an answer.
TEST(LanguageDiagnostics, AnyBytesAreAnswered) {
  const std::string pieces[] = {
      "Dim ",        "a",
      " As ",        "Integer",
      "\n",          "If ",
      " Then",       "End If",
      "For ",        "Each ",
      " In ",        " To ",
      "Next\n",      "Try\n",
      "Catch ",      "Finally",
      "End Try",     "Sub ",
      "Function ",   "End Sub",
      "(",           ")",
      ",",           ".",
      "=",           "\"x\"",
      "&h",          "&",
      "1",           "2.5",
      "New ",        "Nil",
      " IsA ",       "Select Case ",
      "Case ",       "End Select",
      "Return ",     "Raise ",
      "ByRef ",      "Optional ",
      "ReDim ",      "Const ",
      "MemoryBlock", "String",
      "Args",        "Array",
      "UBound",      "Quit",
      "'",           "_\n",
      " Not ",       " And ",
      "-",           "^",
      "Print ",      "Exit ",
      "Continue ",   "While ",
      "Wend",        "Loop\n",
      "Do ",         "\xff",
      "\xe2\x80",    std::string(1, '\0'),
      "\r",
  };
  std::mt19937 random(20);
  Runtime runtime{RuntimeOptions{}};
  const int64_t strings = live_strings();
  for (int round = 0; round < 3000; ++round) {
    std::string source;
    const size_t length = random() % 60;
    for (size_t i = 0; i < length; ++i) source += pieces[random() % std::size(pieces)];
    std::vector<Diagnostic> diagnostics;
    const auto script = Script::compile(runtime, source, "random.bas", diagnostics);
    EXPECT_EQ(script == nullptr, !diagnostics.empty()) << source;
    for (const Diagnostic& one : diagnostics) {
      EXPECT_GE(one.line, 1);
      EXPECT_GE(one.column, 1);
    }
  }
  EXPECT_LE(live_strings() - strings, 200) << "only what the registry keeps";
}

// A program cut anywhere, and with any single byte replaced.
TEST(LanguageDiagnostics, ADamagedProgramIsAnswered) {
  const std::string source =
      "Function F(ByRef a As Integer, b() As String) As String\n"
      "  Try\n    For Each s As String In b\n      If s = \"x\" And a > 3 Then Return s & a\n    "
      "Next\n"
      "  Catch e As RuntimeException\n    Raise e\n  Finally\n    a = a + 1\n  End Try\nEnd "
      "Function\n"
      "Dim n As Integer, list(2) As String\nSelect Case n\nCase 1 To 3, Is > 5\n  Print F(n, "
      "list)\nEnd Select\n";
  Runtime runtime{RuntimeOptions{}};
  std::vector<Diagnostic> diagnostics;
  ASSERT_NE(Script::compile(runtime, source, "whole.bas", diagnostics), nullptr);
  for (size_t i = 0; i < source.size(); ++i) {
    Script::compile(runtime, source.substr(0, i), "cut.bas", diagnostics);
    for (const char byte : {'(', '"', '\n', '.', '\'', '9', '\xC3'}) {
      std::string damaged = source;
      damaged[i] = byte;
      Script::compile(runtime, damaged, "damaged.bas", diagnostics);
    }
  }
}

}  // namespace
}  // namespace krz::test
