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

void expect_mistake(const std::string& source, const Mistake& mistake) {
  SCOPED_TRACE(source);
  const std::vector<Diagnostic> found = diagnostics_of(source);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].line, mistake.line);
  EXPECT_EQ(found[0].column, mistake.column);
  EXPECT_NE(found[0].message.find(mistake.message), std::string::npos) << found[0].message;
}

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
      {"Dim i As Integer\ni += 1.5", 2, 1, "the value for “i” must be an Integer, not a Double"},
      {"Dim s As String\ns -= \"x\"", 2, 3, "“-” has no meaning between a String and a String"},
      {"Dim v As Variant\nv.Size = 1", 2, 3,
       "convert it to its class first: ClassName(value).Size"},
      {"Print Nil + 1", 1, 11, "“+” has no meaning between Nil and an Integer"},
      {"Dim v As Variant\nPrint v + Nil", 2, 9, "between a Variant and Nil"},
      {"Print 1 : Print x : Print 2", 1, 17, "there is no variable or function “x”"},
      {"If True Then Print 1 : ) : Print 2", 1, 24, "a statement is expected here, not “)”"},
      {"Print &c112233.Rad", 1, 16, "a Color has no member “Rad”; did you mean “Red”?"},
      {"Args.Count += 1", 1, 6, "this cannot be assigned to"},
      {"Print √2", 1, 7, "the character √ has no meaning here"},
  };
  for (const Mistake& mistake : mistakes) expect_mistake(mistake.source, mistake);
}

TEST(LanguageDiagnostics, NameWhatIsWrongWithAClass) {
  const std::string two =
      "Class A\nPrivate x As Integer\nProtected y As Integer\nz As Integer\n"
      "Sub Constructor(n As Integer)\nEnd Sub\nSub M()\nEnd Sub\nEnd Class\n";
  const Mistake mistakes[] = {
      {"Class A Inherits B\nEnd Class\nClass B Inherits A\nEnd Class", 3, 18,
       "“B” inherits from itself"},
      {"Class A Inherits A\nEnd Class", 1, 18, "“A” inherits from itself"},
      {"Class A Inherits Nobody\nEnd Class", 1, 18, "there is no type “Nobody”"},
      {"Class A\nEnd Class\nClass a\nEnd Class", 3, 7, "there is a type “A” already"},
      {"Class Dictionary\nEnd Class", 1, 7, "there is a type “Dictionary” already"},
      {"Class A\nx As Integer", 1, 1, "this Class is not closed; End Class is missing"},
      {"Class A\nPrint 1\nEnd Class", 2, 1, "a property, a method or End Class is expected"},
      {"Class A\nx As Integer\nSub x()\nEnd Sub\nEnd Class", 3, 5, "is a member of A already"},
      {"Class A\nSub M(a As Integer)\nEnd Sub\nSub M(b As Integer)\nEnd Sub\nEnd Class", 4, 5,
       "is declared already, in line 2"},
      {"Class A\nSub M()\nEnd Sub\nEnd Class\nClass B Inherits A\nFunction M() As Integer\n"
       "Return 1\nEnd Function\nEnd Class",
       6, 10, "overrides the one of A and must have the same result"},
      {"Class A\nFunction Destructor() As Integer\nReturn 1\nEnd Function\nEnd Class", 2, 10,
       "a Destructor is a Sub of each instance"},
      {"Class A\nSub M(Assigns a As Integer, b As Integer)\nEnd Sub\nEnd Class", 2, 15,
       "Assigns belongs to the last parameter"},
      {"Class A\nShared Sub M()\nPrint Self Is Nil\nEnd Sub\nEnd Class", 3, 7,
       "there is no variable or function “Self”"},
      {"Class A\nSub M()\nSuper.M\nEnd Sub\nEnd Class", 3, 1, "“A” has no superclass"},
      {"Class A\nx As Integer\nEnd Class\nPrint A.x", 4, 9, "belongs to an instance of A"},
      {"Class A\nShared a = b\nShared b = 1\nEnd Class", 2, 12,
       "the type of “b” is not known here yet; write it with As"},
      {"Class A\nPrivate Sub Constructor()\nEnd Sub\nEnd Class\nDim a As New A", 5, 14,
       "“Constructor” is private to A"},
      {"Class A\nConst k = 1\nEnd Class\nA.k = 2", 4, 3, "cannot be assigned to"},
  };
  for (const Mistake& mistake : mistakes) expect_mistake(mistake.source, mistake);
  const Mistake uses[] = {
      {"Dim a As New A", 10, 14, "A.Constructor takes 1 argument, not 0"},
      {"Dim a As New A(1)\nPrint a.x", 11, 9, "“x” is private to A"},
      {"Dim a As New A(1)\nPrint a.y", 11, 9, "“y” is protected in A"},
      {"Dim a As New A(1)\nPrint a.zz", 11, 9, "an A has no member “zz”"},
      {"Dim a As New A(1)\na.Constructor(2)", 11, 3, "called by New and Super.Constructor alone"},
      {"Dim a As New A(1)\na.M = 2", 11, 3, "this gives no value"},
      {"A.M", 10, 3, "belongs to an instance of A"},
      {"Class B Inherits A\nFunction F() As Integer\nReturn x\nEnd Function\nEnd Class", 12, 8,
       "“x” is private to A"},
      {"Class B Inherits A\nSub Constructor()\nEnd Sub\nEnd Class", 11, 5,
       "the Constructor of A needs arguments; call Super.Constructor(…) here"},
      {"Class B Inherits A\nSub N()\nSuper.Constructor(1)\nEnd Sub\nEnd Class", 12, 7,
       "only a Constructor calls that of the superclass"},
      {"Class B Inherits A\nSub N()\nSelf = Nil\nEnd Sub\nEnd Class", 12, 1,
       "Self cannot be assigned to"},
      {"Dim d As Dictionary = New A(1)", 10, 23, "must be a Dictionary, not an A"},
  };
  for (const Mistake& mistake : uses) expect_mistake(two + mistake.source, mistake);
}

TEST(LanguageDiagnostics, AFunctionReturnsOnEveryWayToItsEnd) {
  const struct {
    const char* body;
    bool complete;
  } bodies[] = {
      {"", false},
      {"If n = 1 Then Return 1", false},
      {"If n = 1 Then Return 1 Else Return 2", true},
      {"If n = 1 Then\nReturn 1\nElseIf n = 2 Then\nReturn 2\nEnd If", false},
      {"Select Case n\nCase 1\nReturn 1\nEnd Select", false},
      {"Select Case n\nCase 1\nReturn 1\nCase Else\nExit Select\nEnd Select", false},
      {"Select Case n\nCase 1\nReturn 1\nCase Else\nQuit\nEnd Select", true},
      {"Do\nn = n + 1\nLoop", true},
      {"Do\nIf n = 1 Then Exit\nLoop", false},
      {"Do\nFor i As Integer = 1 To 2\nExit\nNext\nLoop", true},
      {"Do\nReturn 1\nLoop Until n = 5", true},
      {"Do\nIf n = 2 Then Continue\nReturn 1\nLoop Until n = 5", false},
      {"While True\nn = n + 1\nWend", true},
      {"While n > 1\nReturn 1\nWend", false},
      {"For i As Integer = 1 To 2\nReturn 1\nNext", false},
      {"Raise New RuntimeException", true},
      {"Try\nReturn 1\nCatch\nn = 1\nEnd Try", false},
      {"Try\nReturn 1\nCatch\nRaise New RuntimeException\nEnd Try", true},
      {"Try\nn = 1\nFinally\nReturn 1\nEnd Try", true},
      {"Exit Function", false},
  };
  for (const auto& one : bodies) {
    const std::string source =
        "Function F(n As Integer) As Integer\n" + std::string(one.body) + "\nEnd Function";
    SCOPED_TRACE(source);
    const std::vector<Diagnostic> found = diagnostics_of(source);
    ASSERT_EQ(found.size(), one.complete ? 0u : 1u);
    if (one.complete) continue;
    EXPECT_EQ(found[0].source_line, "End Function");
    EXPECT_NE(found[0].message.find("this Function can end without Return"), std::string::npos);
  }
}

TEST(LanguageDiagnostics, ComeForWhatParsedWholeBesideWhatDidNot) {
  struct Case {
    const char* source;
    std::vector<int> lines;
  };
  const Case cases[] = {
      // A routine that did not parse does not hide what is wrong in others, nor in the main code.
      {"Print x\nSub A()\n  Print )\n  Print y\nEnd Sub\nSub B()\n  Print z\nEnd Sub", {1, 3, 7}},
      // What a line with a mistake may have declared is not missed; types are still compared.
      {"Dim x As Integer\nDim w As Integer, ) y As String\nSub A()\n  y = x + w\n  x = \"a\"\nEnd "
       "Sub",
       {2, 5}},
      {"Sub A(n As )\nEnd Sub\nSub B()\n  A 1, 2\n  C\n  Dim s As String = 1\nEnd Sub", {1, 6}},
      {"Function A() As Integer\n  If True Then\nEnd Function\nDim s As String = A()", {3, 4}},
      {"Sub A(n As )\nEnd Sub\nSub A(s As String)\nEnd Sub\nA 1", {1}},
      {"For i = 1 To\nNext\nPrint i\nPrint x + \"a\" + 1", {1}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.source);
    std::vector<int> lines;
    for (const Diagnostic& found : diagnostics_of(one.source)) lines.push_back(found.line);
    EXPECT_EQ(lines, one.lines);
  }
}

TEST(LanguageDiagnostics, ShowLongNamesInPart) {
  std::string name = "é";
  for (int i = 0; i < 99; ++i) name += "x";
  const std::vector<Diagnostic> found = diagnostics_of("Print " + name);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].message, "there is no variable or function “" + name.substr(0, 61) + "…”");
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
  std::vector<std::string> pieces = {std::string(1, '\0')};
  std::istringstream words(
      "Dim |a| As |Integer|\n|If | Then|End If|For |Each | In | To |Next\n|Try\n|"
      "Catch |Finally|End Try|Sub |Function |End Sub|(|)|,|.|=|\"x\"|&h|&|1|2.5|New |"
      "Nil| IsA |Select Case |Case |End Select|Return |Raise |ByRef |Optional |ReDim |"
      "Const |MemoryBlock|String|Args|Array|UBound|Quit|'|_\n| Not | And |-|^|Print |"
      "Exit |Continue |While |Wend|Loop\n|Do |\xff|\xe2\x80|\r|");
  for (std::string word; std::getline(words, word, '|');) pieces.push_back(word);
  std::mt19937 random(20);
  Runtime runtime{RuntimeOptions{}};
  const int64_t strings = live_strings();
  for (int round = 0; round < 3000; ++round) {
    std::string source;
    const size_t length = random() % 60;
    for (size_t i = 0; i < length; ++i) source += pieces[random() % pieces.size()];
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
      "  Catch e As RuntimeException\n    Raise e\n  Finally\n    a = a + 1\n  End Try\n"
      "  Return \"\"\nEnd Function\n"
      "Class A Inherits B\n  Private x As Integer = 5, list(2) As String\n  Const k = 1\n"
      "  Sub Constructor(n As Integer)\n    Super.Constructor(n, k)\n    Self.x = n\n  End Sub\n"
      "  Sub Size(Assigns n As Integer)\n    list(n) = Text\n  End Sub\nEnd Class\n"
      "Class B\n  Shared made As Integer\n  Sub Constructor(a As Integer, b As Integer)\n"
      "    Static n As Integer = a\n    made = n\n  End Sub\n"
      "  Function Text As String\n    Return String(B.made)\n  End Function\nEnd Class\n"
      "Dim o As New A(3)\no.Size = 2\n"
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
