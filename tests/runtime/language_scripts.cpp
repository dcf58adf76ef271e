// Each script below tests/scripts/language is a test of its own.
#include <gtest/gtest.h>

#include <algorithm>

#include "scripts/script_runner.h"

namespace krz::test {
namespace {

class LanguageScript : public testing::TestWithParam<std::string> {};

TEST_P(LanguageScript, DoesWhatItsCommentsSay) {
  EXPECT_EQ(check_script(GetParam(), {}, [](Runtime&) {}), "");
}

TEST_P(LanguageScript, DoesTheSameFromItsBytecode) {
  EXPECT_EQ(check_script(
                GetParam(), {}, [](Runtime&) {}, RunFrom::kBytecode),
            "");
}

std::string test_name(const testing::TestParamInfo<std::string>& info) {
  std::string name = std::filesystem::path(info.param).stem().string();
  std::replace_if(
      name.begin(), name.end(),
      [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Scripts, LanguageScript,
                         testing::ValuesIn(scripts_below(KRZ_SOURCE_DIR "/tests/scripts/language")),
                         test_name);

// The manual's examples say what they print in the same comments.
TEST(LanguageManual, ItsExamplesDoWhatTheySay) {
  const std::string manual = read_file(KRZ_SOURCE_DIR "/docs/language.md");
  const std::string opening = "```basic\n";
  int examples = 0;
  for (size_t begin = manual.find(opening); begin != std::string::npos;
       begin = manual.find(opening, begin)) {
    begin += opening.size();
    const std::string example = manual.substr(begin, manual.find("```", begin) - begin);
    SCOPED_TRACE(example);
    EXPECT_EQ(check_source(example, "manual.bas", {}, [](Runtime&) {}), "");
    ++examples;
  }
  EXPECT_GT(examples, 5);
}

}  // namespace
}  // namespace krz::test
