// Scripts that include files: what is read, how often, and what places are called.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "scripts/script_runner.h"
#include "toolbox/scratch_folder.h"

namespace krz::test {
namespace {

class LanguageIncludes : public testing::Test {
 protected:
  LanguageIncludes() { std::filesystem::create_directory(folder_.path("sub")); }

  std::string write(const std::string& name, const std::string& text) {
    return folder_.write(name, text);
  }

  /// Runs a script of the folder, and takes the folder's name out of what it says.
  ScriptOutcome run(const std::string& source) {
    ScriptOutcome outcome = run_source(source, write("main.bas", source));
    const std::string prefix = folder_.path("");
    for (size_t at; (at = outcome.error.find(prefix)) != std::string::npos;)
      outcome.error.erase(at, prefix.size());
    return outcome;
  }

  const toolbox::ScratchFolder folder_;
};

TEST_F(LanguageIncludes, AreReadOnceRelativeToTheirFileAndWithoutEndAsCyclesToo) {
  write("sub/one.bas",
        "\xEF\xBB\xBF#!/usr/bin/krz\n#Include \"../two.bas\"\nPrint \"one\"\n"
        "Function Twice(n As Integer) As Integer\nReturn n * kTwo\nEnd Function");
  write("two.bas", "#Include \"main.bas\"\n#include \"two.bas\"\r\nPrint \"two\"\nConst kTwo = 2");
  const ScriptOutcome outcome = run(
      "Print \"main\"\n  #INCLUDE \"sub/one.bas\" ' words\n#Include \"two.bas\"\nPrint Twice(3)");
  EXPECT_EQ(outcome.error, "");
  EXPECT_EQ(outcome.output, "main\ntwo\none\n6\n");
}

TEST_F(LanguageIncludes, PlacesAreThoseOfTheirOwnFile) {
  write("sub/one.bas", "Sub Fail()\n  Dim m As MemoryBlock\n  Print m.Size\nEnd Sub");
  EXPECT_EQ(run("#Include \"sub/one.bas\"\n\nFail").error,
            "sub/one.bas:3:9: NilObjectException: m is Nil\n  Print m.Size\n        ^\n");
  EXPECT_EQ(run("#Include \"sub/one.bas\"\nDim m As MemoryBlock\n  Print m.Size").error,
            "main.bas:3:9: NilObjectException: m is Nil\n  Print m.Size\n        ^\n");

  write("sub/bad.bas", "\nDim é As Integer, y As String = z\n");
  EXPECT_EQ(run("Dim é As String\n#Include \"sub/bad.bas\"\nPrint w").error,
            "sub/bad.bas:2:5: error: “é” is declared already, in line 1 of main.bas\n"
            "Dim é As Integer, y As String = z\n    ^\n"
            "sub/bad.bas:2:33: error: there is no variable or function “z”\n"
            "Dim é As Integer, y As String = z\n                                ^\n"
            "main.bas:3:7: error: there is no variable or function “w”\nPrint w\n      ^\n");
}

TEST_F(LanguageIncludes, WhatCannotBeReadIsReportedAtItsLine) {
  ASSERT_EQ(mkfifo(folder_.path("pipe").c_str(), 0600), 0);
  struct Case {
    const char* line;
    const char* complaint;
  };
  for (const Case& one : {Case{"#Include \"none.bas\"", "none.bas”: No such file or directory"},
                          Case{"#Include \"pipe\"", "pipe”: it is no regular file"},
                          Case{"#Include \"/dev/zero\"", "“/dev/zero”: it is no regular file"},
                          Case{"#Include \"sub\"", "sub”: it is no regular file"},
                          Case{"#Include none", "#Include needs a path in quotes"}}) {
    SCOPED_TRACE(one.line);
    const std::string error = run(std::string("Print 1\n") + one.line + "\n").error;
    EXPECT_TRUE(error.starts_with("main.bas:2:1: error: ")) << error;
    EXPECT_NE(error.find(one.complaint), std::string::npos) << error;
  }
  // Anywhere but at the beginning of a line it is no inclusion.
  EXPECT_NE(run("Print 1 #Include \"none.bas\"").error.find("# has no meaning"), std::string::npos);
}

TEST_F(LanguageIncludes, DepthAndSizeAreBounded) {
  for (int i = 0; i < 60; ++i)
    write(std::to_string(i) + ".bas", "#Include \"" + std::to_string(i + 1) + ".bas\"\n");
  write("60.bas", "Print 60\n");
  EXPECT_NE(run("#Include \"0.bas\"").error.find("49.bas:1:1: error: files include each other"),
            std::string::npos);
  EXPECT_EQ(run("#Include \"30.bas\"").output, "60\n");

  write("large.bas", std::string(9 << 20, '\n'));
  write("larger.bas", std::string(9 << 20, '\n'));
  EXPECT_NE(
      run("#Include \"large.bas\"\n#Include \"larger.bas\"")
          .error.find("main.bas:2:1: error: cannot include “larger.bas”: the script would be"),
      std::string::npos);
}

}  // namespace
}  // namespace krz::test
