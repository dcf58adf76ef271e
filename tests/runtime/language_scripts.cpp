// Each script below tests/scripts/language is a test of its own.
#include <gtest/gtest.h>

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
  return test_name_of(std::filesystem::path(info.param).stem().string());
}

INSTANTIATE_TEST_SUITE_P(Scripts, LanguageScript,
                         testing::ValuesIn(scripts_below(KRZ_SOURCE_DIR "/tests/scripts/language")),
                         test_name);

// The manual's examples say what they print in the same comments.
TEST(LanguageManual, ItsExamplesDoWhatTheySay) {
  int examples = 0;
  visit_examples(KRZ_SOURCE_DIR "/docs/language.md", [&](const std::string& example) {
    SCOPED_TRACE(example);
    EXPECT_EQ(check_source(example, "manual.bas", {}, [](Runtime&) {}), "");
    ++examples;
  });
  EXPECT_GT(examples, 5);
}

}  // namespace
}  // namespace krz::test
