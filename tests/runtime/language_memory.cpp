// Scripts that want more memory than they may have: an exception they can catch, and everything
// given back.
#include <gtest/gtest.h>

#include "scripts/script_runner.h"

namespace krz::test {
namespace {

constexpr size_t kSmallBudget = size_t{8} << 20;

ScriptOutcome run_with_budget(const std::string& source, size_t budget = kSmallBudget) {
  RuntimeOptions options;
  options.memory_budget = budget;
  return run_source(source, "test.bas", options);
}

TEST(LanguageMemory, WhateverGrowsRaisesAndTheScriptGoesOn) {
  const char* const growing[] = {
      "Dim s As String = \"x\"\nWhile True\ns = s + s\nWend",
      "Dim s As String = \"x\"\nWhile True\ns &= s & s & 1\nWend",
      "Dim list() As Integer\nWhile True\nlist.Append 1\nWend",
      "Dim list() As String\nDim i As Integer\nWhile True\nlist.Insert list.Count, Str(i)\nWend",
      "Dim list() As MemoryBlock\nWhile True\nlist.Append New MemoryBlock(1000)\nWend",
      "Dim list(10) As Double, n As Integer = 10\nWhile True\nn = n * 2\nReDim list(n)\nWend",
      "Dim grid(100000000) As Integer",
      "Dim b As New MemoryBlock(1)\nWhile True\nb.Size *= 2\nWend",
      "Dim b As New MemoryBlock(100000000)",
      "Dim d As New Dictionary, i As Integer\nWhile True\nd.Value(i) = i\ni += 1\nWend",
      "Dim list() As Variant\nWhile True\nlist.Append 1.5\nWend",
      "Dim s As String = \"abc\"\nWhile True\ns = Uppercase(s + s)\nWend",
      "Dim s As String = \"abc\"\nWhile True\ns = ReplaceAll(s, \"a\", \"aaa\")\nWend",
  };
  for (const char* const one : growing) {
    SCOPED_TRACE(one);
    const std::string body = one;
    const ScriptOutcome outcome = run_with_budget(
        "Sub Grow()\n" + body +
        "\nEnd Sub\nFor i As Integer = 1 To 2\nTry\nGrow\nCatch e As OutOfMemoryException\n"
        "Print Left(e.Message, 22)\nEnd Try\nNext\nDim b As New MemoryBlock(4000000)\n"
        "Print b.Size\n");
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.output, "there is no memory for\nthere is no memory for\n4000000\n");
    EXPECT_EQ(outcome.leaked_strings, 0);
    EXPECT_EQ(outcome.leaked_objects, 0);
  }
}

TEST(LanguageMemory, NobodyCatchingEndsTheScriptWithTheReport) {
  const ScriptOutcome outcome =
      run_with_budget("Dim s As String = \"x\"\nWhile True\n  s = s + s\nWend\n");
  EXPECT_EQ(outcome.exit_status, 1);
  EXPECT_EQ(outcome.error,
            "test.bas:3:9: OutOfMemoryException: there is no memory for a string\n"
            "  s = s + s\n        ^\n");
}

TEST(LanguageMemory, WhatIsLetGoOfCanBeHadAgain) {
  const ScriptOutcome outcome = run_with_budget(
      "For i As Integer = 1 To 200\nDim b As New MemoryBlock(3000000)\nDim list(200000) As "
      "Integer\n"
      "ReDim list(10)\nDim s As String = b.StringValue(0, 1000000)\nDim d As New Dictionary\n"
      "For k As Integer = 1 To 100\nd.Value(k) = s + \"x\"\nd.Remove(k)\nd.Value(0) = k\nNext\n"
      "Next\nPrint \"done\"\n");
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.output, "done\n");
}

TEST(LanguageMemory, TheMachineDecidesWithoutABudget) {
  const ScriptOutcome outcome = run_with_budget(
      "Dim s As String = \"x\"\nFor i As Integer = 1 To 27\ns = s + s\nNext\nPrint Len(s)\n", 0);
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.output, "134217728\n");
}

}  // namespace
}  // namespace krz::test
