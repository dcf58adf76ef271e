// What bytecode does with what it does not know; what it does with programs, the scripts of
// language_scripts.cpp show.
#include <gtest/gtest.h>

#include "scripts/script_runner.h"

namespace krz::test {
namespace {

constexpr char kSource[] =
    "Class Pair\n  One As Integer\nEnd Class\n"
    "Dim b As New MemoryBlock(3)\nDim p As New Pair\np.One = b.Size\nPrint p.One, Trim(\" x \")\n";

std::string compiled(Runtime& runtime) {
  std::vector<Diagnostic> diagnostics;
  return Script::compile(runtime, kSource, "test.bas", diagnostics)->bytecode();
}

TEST(Bytecode, OfAnotherKindIsNotLoaded) {
  Runtime runtime{RuntimeOptions{}};
  const std::string bytes = compiled(runtime);
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(Script::load(runtime, bytes.substr(0, length), kSource, "test.bas"), nullptr);
  }
  EXPECT_EQ(Script::load(runtime, "x" + bytes, kSource, "test.bas"), nullptr);
  std::string other_version = bytes;
  other_version[2 * sizeof(uint32_t)] = '9';  // the first digit, behind a mark and a length
  EXPECT_EQ(Script::load(runtime, other_version, kSource, "test.bas"), nullptr);
  std::string other_class = bytes;
  other_class.replace(other_class.find("MemoryBlock"), 11, "MemoryClock");
  EXPECT_EQ(Script::load(runtime, other_class, kSource, "test.bas"), nullptr);
}

TEST(Bytecode, AMethodThatIsNotThereIsMissedWhenItIsCalled) {
  std::string output;
  std::string error;
  RuntimeOptions options;
  options.standard_output = [&](std::string_view text) { output += text; };
  options.standard_error = [&](std::string_view text) { error += text; };
  Runtime runtime(options);
  std::string bytes = compiled(runtime);
  const std::string declaration = "Trim(text as string) as string";
  bytes.replace(bytes.find(declaration), 4, "Trum");
  const auto script = Script::load(runtime, bytes, kSource, "test.bas");
  ASSERT_NE(script, nullptr);
  EXPECT_EQ(script->run(), 1);
  EXPECT_EQ(error.substr(0, error.find('\n')),
            "test.bas:7:14: RuntimeException: the runtime has no member Trum(text as string) as "
            "string; this program was compiled for another module, install krz again");
}

}  // namespace
}  // namespace krz::test
