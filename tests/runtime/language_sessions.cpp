// Sessions: pieces of input that know each other, and survive each other's mistakes.
#include <fstream>

#include "host_test.h"
#include "language/script.h"
#include "language/session.h"

namespace krz {
namespace {

using Result = Session::Result;
using Completeness = Session::Completeness;

class SessionTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    // The registry keeps what it parses of declarations; that is no leak of a session.
    Session(*runtime_, "input").run("Dim d As New Dictionary : d.Value(1) = 2");
    begin();
  }
  void TearDown() override {
    session_.reset();
    HostTest::TearDown();
  }

  void begin() { session_ = std::make_unique<Session>(*runtime_, "input"); }

  /// What a piece prints, or what is wrong with it without the lines of the caret.
  std::string answer(std::string_view piece) {
    output_.clear();
    errors_.clear();
    result_ = session_->run(piece);
    if (!errors_.empty()) return output_ + errors_.substr(0, errors_.find('\n'));
    if (output_.ends_with('\n')) output_.pop_back();
    return output_;
  }

  std::unique_ptr<Session> session_;
  Result result_ = Result::kDone;
};

struct Exchange {
  const char* piece;
  const char* answer;
};

#define EXPECT_EXCHANGES(...)                 \
  for (const Exchange& one : {__VA_ARGS__}) { \
    SCOPED_TRACE(one.piece);                  \
    EXPECT_EQ(answer(one.piece), one.answer); \
  }

TEST_F(SessionTest, ExpressionsAloneShowTheirValues) {
  EXPECT_EXCHANGES(
      Exchange{"1 + 2", "3"}, Exchange{"7 / 2", "3.5"},
      Exchange{"\"a\" + \"\"\"b\"\"\"", "\"a\"\"b\"\"\""}, Exchange{"1 = 2", "False"},
      Exchange{"Nil", "Nil"}, Exchange{"&cFF0080", "&cFF0080"},
      Exchange{"Array(1, 2, 3)", "[1, 2, 3]"}, Exchange{"Chr(27) + Chr(10)", "\"␛␊\""},
      Exchange{"Dim none() As String", ""}, Exchange{"none", "[]"},
      Exchange{"Dim grid(1, 2) As Integer : grid(1, 0) = 5", ""},
      Exchange{"grid", "[[0, 0, 0], [5, 0, 0]]"}, Exchange{"Dim many(99) As Integer", ""},
      Exchange{"many", "[0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, … 80 more]"},
      Exchange{"Dim d As New Dictionary : d.Value(\"k\") = Array(1.5) : d.Value(2) = Nil", ""},
      Exchange{"d", "Dictionary(\"k\": [1.5], 2: Nil)"}, Exchange{"d.Count", "2"},
      Exchange{"Dim v As Variant = True", ""}, Exchange{"v", "True"},
      Exchange{
          "Class P\nProperty x As Integer = 4, name As String = \"n\", other As P\nEnd Class\n",
          ""},
      Exchange{"New P", "P(x: 4, name: \"n\", other: Nil)"}, Exchange{"' nothing\n\n", ""});
  // As many dimensions as there can be still make a line of bounded length.
  answer("Dim cube(9, 9, 9, 9, 9, 9) As Integer");
  EXPECT_LT(answer("cube").size(), 2000u);
}

TEST_F(SessionTest, WhatIsDeclaredIsKnownAfterwards) {
  EXPECT_EXCHANGES(
      Exchange{"Dim x As Integer = 5, name = \"clip\"", ""}, Exchange{"x = x * 2", ""},
      Exchange{"x", "10"}, Exchange{"name", "\"clip\""}, Exchange{"x - 1", "9"},
      Exchange{"x -1", "9"}, Exchange{"Const k = 3", ""}, Exchange{"k + x", "13"},
      Exchange{"Sub Show(n As Integer)\nPrint \"it is\", n, x\nEnd Sub", ""},
      Exchange{"Show -1", "it is -1 10"}, Exchange{"Show(2)", "it is 2 10"},
      Exchange{"Function Twice(ByRef n As Integer) As Integer\nn = n * 2\nReturn n\nEnd Function",
               ""},
      Exchange{"Twice(x)", "20"}, Exchange{"x", "20"},
      Exchange{"For i As Integer = 1 To 3\nx += i\nNext", ""}, Exchange{"x", "26"},
      Exchange{"i", "input:24:1: error: there is no variable or function “i”"},
      Exchange{"Class Base\nShared Property made As Integer = 7\nFunction Name() As String\nReturn "
               "\"base\"\nEnd "
               "Function\nEnd Class",
               ""},
      Exchange{"Class Derived Inherits Base\nFunction Name() As String\nReturn \"derived \" + "
               "Super.Name()\nEnd "
               "Function\nEnd Class",
               ""},
      Exchange{"Dim b As Base = New Derived", ""}, Exchange{"b.Name", "\"derived base\""},
      Exchange{"Base.made += 1", ""}, Exchange{"Base.made", "8"},
      Exchange{"Sub Count()\nStatic n As Integer = 10\nn += 1\nPrint n\nEnd Sub", ""},
      Exchange{"Count", "11"}, Exchange{"Count", "12"});
}

TEST_F(SessionTest, NamesMayBeDeclaredAgain) {
  EXPECT_EXCHANGES(
      Exchange{"Dim x As Integer = 1", ""}, Exchange{"Sub Show()\nPrint x\nEnd Sub", ""},
      // The same type: the same variable.
      Exchange{"Dim x As Integer = 2", ""}, Exchange{"Show", "2"}, Exchange{"Dim x As Integer", ""},
      Exchange{"Show", "0"},
      // Another type: another variable, and the Sub goes on with its own.
      Exchange{"Dim x As String = \"text\"", ""}, Exchange{"x", "\"text\""}, Exchange{"Show", "0"},
      // A Sub that is called alike takes the place of the old one everywhere.
      Exchange{"Sub Outer()\nShow\nEnd Sub", ""},
      Exchange{"Sub Show()\nPrint \"new\", x\nEnd Sub", ""}, Exchange{"Outer", "new text"},
      Exchange{"Sub Show(n As Integer)\nPrint n\nEnd Sub", ""}, Exchange{"Show 4", "4"},
      Exchange{"Outer", "new text"},
      Exchange{"Function F(n As Integer) As Integer\nReturn 0\nEnd Function", ""},
      Exchange{"Function F(n As Integer) As Integer\nIf n < 2 Then Return 1\nReturn n * F(n - "
               "1)\nEnd Function",
               ""},
      Exchange{"F(5)", "120"},
      Exchange{"Function F(n As Integer) As Integer\nReturn -n\nEnd Function", ""},
      Exchange{"F(5)", "-5"});
}

TEST_F(SessionTest, ClassesMayBeDeclaredAgainWhileOldInstancesLive) {
  EXPECT_EXCHANGES(Exchange{"Class C\nFunction Name() As String\nReturn \"old\"\nEnd Function\nSub "
                            "Destructor()\nPrint \"bye\", "
                            "Name()\nEnd Sub\nEnd Class",
                            ""},
                   Exchange{"Dim old As Object = New C", ""},
                   Exchange{"Class C\nProperty n As Integer\nFunction Name() As String\nReturn "
                            "\"new\"\nEnd Function\nEnd Class",
                            ""},
                   Exchange{"(New C).Name", "\"new\""}, Exchange{"old IsA C", "False"},
                   Exchange{"old", "C"}, Exchange{"old = Nil", "bye old"},
                   Exchange{"old = New C", ""}, Exchange{"C(old).n", "0"});
}

TEST_F(SessionTest, MistakesLeaveEverythingAsItWas) {
  EXPECT_EXCHANGES(
      Exchange{"Dim x As Integer = 1", ""},
      Exchange{"x = \"text\"",
               "input:2:5: error: the value for “x” must be an Integer, not a String; Integer(…) "
               "converts it"},
      Exchange{"Dim x As String : y = 1",
               "input:3:19: error: there is no variable or function “y”"},
      Exchange{"x", "1"},
      Exchange{"1 +", "input:5:4: error: a value is expected here, not the end of the line"},
      Exchange{"Class Bad\nProperty n As Nowhere\nEnd Class",
               "input:7:15: error: there is no type “Nowhere”"},
      Exchange{"New Bad", "input:9:5: error: there is no type “Bad”"},
      Exchange{"Sub Fail()\nDim a(2) As Integer\nPrint a(x + 2)\nEnd Sub", ""},
      Exchange{"Fail", "input:12:7: OutOfBoundsException: the index 3 is outside 0 To 2"},
      Exchange{"#Include \"nowhere.bas\"",
               "input:15:1: error: cannot include “nowhere.bas”: No such file or directory"},
      // Declared, although what should have given it a value failed.
      Exchange{"Dim half As Integer = 1 \\ (x - 1)",
               "input:16:25: DivisionByZeroException: the divisor is 0"},
      Exchange{"half", "0"}, Exchange{"x", "1"});
  EXPECT_EQ(result_, Result::kDone);
}

TEST_F(SessionTest, EndsWithQuitAndStopsWhenInterrupted) {
  EXPECT_EQ(answer("Quit 7"), "");
  EXPECT_EQ(result_, Result::kQuit);
  EXPECT_EQ(session_->exit_status(), 7);
  begin();
  // An interruption from before a piece is none of its.
  Script::interrupt();
  EXPECT_EQ(answer("For i As Integer = 1 To 2\nPrint i\nNext"), "1\n2");
  EXPECT_EQ(result_, Result::kDone);
}

TEST_F(SessionTest, InstancesDieWithTheSession) {
  answer(
      "Class Node\nProperty other As Node\nSub Destructor()\nPrint \"gone\"\nEnd Sub\nEnd Class");
  answer(
      "Dim a As New Node : a.other = a : Dim list() As String = Array(\"x\") : Dim t = \"held\"");
  answer("Dim d As New Dictionary : d.Value(1) = New Node");
  answer("New Node");
  EXPECT_EQ(output_, "Node(other: Nil)\ngone");
  output_.clear();
  session_.reset();
  EXPECT_EQ(output_, "gone\ngone\n");
}

TEST_F(SessionTest, KnowsWhenAPieceIsUnfinished) {
  constexpr auto kWhole = Completeness::kWhole;
  constexpr auto kUnfinished = Completeness::kUnfinished;
  constexpr auto kDamaged = Completeness::kDamaged;
  const std::pair<const char*, Completeness> cases[] = {
      {"", kWhole},
      {"x = 1\n", kWhole},
      {"If x Then Print 1\n", kWhole},
      {"If x Then\n", kUnfinished},
      {"If x Then\nPrint 1\nElse\n", kUnfinished},
      {"If x Then\nEnd If\n", kWhole},
      {"For i = 1 To 3\nWhile True\nWend\n", kUnfinished},
      {"Do\n", kUnfinished},
      {"Do\nLoop Until x\n", kWhole},
      {"Try\nCatch e\n", kUnfinished},
      {"Select Case x\nCase 1\n", kUnfinished},
      {"Class C\nProperty n As Integer\nSub S()\n", kUnfinished},
      {"Class C\nEnd Class\n", kWhole},
      {"Print 1, _\n", kUnfinished},
      {"Print 1, _\n2\n", kWhole},
      {"Function F() As Integer\nDim x As\n", kDamaged},
      {"End If\n", kWhole},
      {"x = = 2\n", kWhole},
  };
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Session::completeness(text), expected);
  }
}

TEST_F(SessionTest, CompletesNamesAndMembers) {
  answer(
      "Class Shape\nProperty width As Integer\nFunction Widest() As Shape\nReturn Self\nEnd "
      "Function\nEnd Class");
  answer("Dim shapely As New Shape, words() As String");
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"sha", {"Shape", "shapely", "Shared"}},
      {"Print shapely.wid", {"Widest", "width"}},
      {"Print shapely.Widest().widt", {"width"}},
      {"words.Ind", {"IndexOf"}},
      {"words(0).x", {}},
      {"UBound(words.La", {"LastIndex"}},
      {"Print \"sha", {}},
      {"' sha", {}},
      {"nothing.", {}},
      {"If x Then\nWhi", {"While"}},
      {"", {}},
  };
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(session_->complete(text).names, expected);
  }
  EXPECT_EQ(session_->complete("Print shapely.wid").word, 14u);
}

/// The transcripts of the manual: what is typed behind prompts, and what appears.
TEST_F(SessionTest, AnswersAsTheManualSays) {
  std::ifstream file(KRZ_SOURCE_DIR "/docs/language.md");
  bool inside = false;
  std::string piece;
  std::string expected;
  int pieces = 0;
  const auto finish = [&] {
    if (piece.empty()) return;
    SCOPED_TRACE(piece);
    output_.clear();
    errors_.clear();
    session_->run(piece);
    EXPECT_EQ(output_ + errors_, expected);
    piece.clear();
    expected.clear();
    ++pieces;
  };
  for (std::string line; std::getline(file, line);) {
    if (!inside) {
      inside = line == "```repl";
    } else if (line == "```") {
      finish();
      inside = false;
    } else if (line.starts_with("krz> ")) {
      finish();
      piece = line.substr(5) + "\n";
    } else if (line.starts_with("...> ")) {
      piece += line.substr(5) + "\n";
    } else {
      expected += line + "\n";
    }
  }
  EXPECT_GT(pieces, 5);
}

}  // namespace
}  // namespace krz
