// What running scripts leaves behind: exit statuses, reports, counts of strings and objects, and
// interruptions.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "scripts/script_runner.h"

namespace krz::test {
namespace {

// Every script here ends in the middle of something that holds strings and objects.
TEST(LanguageMachine, NothingStaysAliveAfterALeaveInTheMiddle) {
  const char* const sources[] = {
      "Dim z As MemoryBlock\nPrint \"a\" & \"b\" & z.Size",
      "Dim z As MemoryBlock\nDim list() As String = Array(\"a\" & 1, \"b\" & z.Size)",
      "Function F() As String\nDim m As New MemoryBlock(4)\nDim s As String = \"x\" & "
      "m.Byte(99)\nRaise New "
      "RuntimeException\nEnd Function\nPrint \"a\" & 1 & F()",
      "For Each s As String In Array(\"a\" & 1, \"b\")\nFor Each t As String In Array(s, "
      "s)\nQuit(3)\nNext\nNext",
      "Sub Deep(m As MemoryBlock, s As String)\nDeep(New MemoryBlock(1), s & \"x\")\nEnd "
      "Sub\nDeep(Nil, \"\")",
      "Try\nDim m As New MemoryBlock(1)\nRaise New RuntimeException\nFinally\nDim n As New "
      "MemoryBlock(1)\nPrint 1 \\ "
      "(n.Size - 1)\nEnd Try",
      "Select Case \"a\" & 1\nCase \"a\" & 1\nDim e As New RuntimeException\nRaise e\nEnd Select",
      "Sub S(ByRef a As String, ByRef b As MemoryBlock)\na = \"x\" & a\nb = New "
      "MemoryBlock(2)\nRaise New "
      "RuntimeException\nEnd Sub\nDim list(1) As String\nlist(0) = \"k\" & 1\nDim m As New "
      "MemoryBlock(1)\nS list(0), m",
      "Dim v As Variant = New MemoryBlock(1)\nDim n As Integer = v",
      "Try\nRaise New RuntimeException\nCatch e As RuntimeException\nRaise New "
      "NilObjectException\nEnd Try",
  };
  for (const char* source : sources) {
    SCOPED_TRACE(source);
    const ScriptOutcome outcome = run_source(source);
    EXPECT_NE(outcome.exit_status, 0);
    EXPECT_EQ(outcome.leaked_strings, 0);
    EXPECT_EQ(outcome.leaked_objects, 0);
  }
}

std::vector<int64_t> g_alive;

void probe() { g_alive.push_back(live_objects()); }

// A finer look than at the end: an object dies when its last variable does, in loops and at the end
// of blocks.
TEST(LanguageMachine, ObjectsDieWithTheirLastVariable) {
  static const FunctionEntry kProbe[] = {{&probe, "Probe()"}};
  Runtime runtime{RuntimeOptions{}};
  runtime.registry().register_functions(kProbe);
  std::vector<Diagnostic> diagnostics;
  const auto script = Script::compile(
      runtime,
      "Dim kept As MemoryBlock\n"
      "If True Then\n  Dim m As New MemoryBlock(1)\n  Probe\nEnd If\n"
      "Probe\n"
      "For i As Integer = 1 To 2\n  Dim m As New MemoryBlock(1)\n  kept = m\nNext\n"
      "Probe\n"
      "kept = Nil\nProbe\n"
      "Dim n As Integer = MemoryBlock(New MemoryBlock(1)).Size\nProbe\n"
      "Do\n  Dim m As New MemoryBlock(1)\n  If n = 1 Then Exit\nLoop\nProbe\n"
      "Try\n  Dim m As New MemoryBlock(1)\n  n = m.Byte(5)\nCatch\n  Probe\nEnd Try\n",
      "test.bas", diagnostics);
  ASSERT_TRUE(diagnostics.empty()) << diagnostics[0].text();
  const int64_t before = live_objects();
  g_alive.clear();
  EXPECT_EQ(script->run(), 0);
  for (int64_t& count : g_alive) count -= before;
  EXPECT_EQ(g_alive, (std::vector<int64_t>{1, 0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(live_objects(), before);
}

TEST(LanguageMachine, AnUncaughtExceptionNamesWhereItWasFirstRaised) {
  const ScriptOutcome outcome =
      run_source("Dim m As MemoryBlock\nTry\n  m.Size = 3\nFinally\n  Print \"tidy\"\nEnd Try\n");
  EXPECT_EQ(outcome.output, "tidy\n");
  EXPECT_EQ(outcome.exit_status, 1);
  EXPECT_EQ(outcome.error,
            "test.bas:3:3: NilObjectException: m is Nil\n"
            "  m.Size = 3\n"
            "  ^\n");
}

TEST(LanguageMachine, AScriptRunsTwiceFromAFreshStart) {
  std::string output;
  RuntimeOptions options;
  options.standard_output = [&](std::string_view text) { output += text; };
  Runtime runtime(options);
  std::vector<Diagnostic> diagnostics;
  const auto script = Script::compile(
      runtime, "Dim n As Integer, s As String\nn = n + 1\ns = s & \"x\"\nPrint n, s", "test.bas",
      diagnostics);
  ASSERT_TRUE(diagnostics.empty());
  EXPECT_EQ(script->run(), 0);
  EXPECT_EQ(script->run(), 0);
  runtime.flush_output();
  EXPECT_EQ(output, "1 x\n1 x\n");
}

TEST(LanguageMachine, AnInterruptStopsEveryKindOfLoop) {
  for (const char* source :
       {"Do\nLoop", "While True\nWend", "For i As Integer = 1 To 2000000000 Step 1\ni = 1\nNext",
        "For i As Integer = 1 To 2000000000\ni = 1\nNext"}) {
    SCOPED_TRACE(source);
    std::signal(SIGALRM, [](int) { Script::interrupt(); });
    alarm(1);
    const ScriptOutcome outcome = run_source(source);
    EXPECT_EQ(outcome.exit_status, 130);
  }
}

}  // namespace
}  // namespace krz::test
