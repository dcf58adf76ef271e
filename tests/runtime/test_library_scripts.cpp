// Runs the scripts of tests/scripts/library and the examples of the library's manual, each in an
// empty folder of its own.
#include <gtest/gtest.h>

#include "registry/names.h"
#include "scripts/script_runner.h"
#include "toolbox/scratch_folder.h"

namespace krz::test {
namespace {

/// The current folder while it lives; deleted with all that scripts leave in it.
class CurrentFolder {
 public:
  CurrentFolder() { std::filesystem::current_path(folder_.path("")); }
  ~CurrentFolder() { std::filesystem::current_path(before_); }

 private:
  const toolbox::ScratchFolder folder_;
  const std::filesystem::path before_ = std::filesystem::current_path();
};

class LibraryScript : public testing::TestWithParam<std::string> {};

TEST_P(LibraryScript, DoesWhatItsCommentsSay) {
  const CurrentFolder folder;
  EXPECT_EQ(check_script(GetParam(), {}, [](Runtime&) {}), "");
}

std::string test_name(const testing::TestParamInfo<std::string>& info) {
  return std::filesystem::path(info.param).stem().string();
}

INSTANTIATE_TEST_SUITE_P(Scripts, LibraryScript,
                         testing::ValuesIn(scripts_below(KRZ_SOURCE_DIR "/tests/scripts/library")),
                         test_name);

TEST(LibraryPictures, AreTheSameInAHostWithTheOlderPixelBuffers) {
  const CurrentFolder folder;
  RuntimeOptions options;
  options.picture_kind = kPicturePixelBuffer;
  EXPECT_EQ(
      check_script(KRZ_SOURCE_DIR "/tests/scripts/library/picture.bas", options, [](Runtime&) {}),
      "");
}

TEST(LibraryManual, ItsExamplesDoWhatTheySay) {
  int examples = 0;
  visit_examples(KRZ_SOURCE_DIR "/docs/library.md", [&](const std::string& example) {
    SCOPED_TRACE(example);
    const CurrentFolder folder;
    EXPECT_EQ(check_source(example, "manual.bas", {}, [](Runtime&) {}), "");
    ++examples;
  });
  EXPECT_GT(examples, 10);
}

TEST(LibraryManual, NamesEveryClassAndFunctionAndMember) {
  const std::string manual = read_file(KRZ_SOURCE_DIR "/docs/library.md");
  const auto is_named = [&manual](const std::string& name) {
    for (size_t at = manual.find(name); at != std::string::npos; at = manual.find(name, at + 1)) {
      const bool begins = at == 0 || !is_name_character(manual[at - 1]);
      if (begins && !is_name_character(manual[at + name.size()])) return true;
    }
    return false;
  };
  Runtime runtime({});
  for (const std::string& name : runtime.registry().names()) EXPECT_TRUE(is_named(name)) << name;
  for (const ClassInfo* info : runtime.registry().classes()) {
    for (const std::string& member : info->member_names()) {
      EXPECT_TRUE(member == "Constructor" || is_named(member)) << info->name() << "." << member;
    }
  }
}

}  // namespace
}  // namespace krz::test
