// Each script that uses the module's classes is a test of its own.
#include <gtest/gtest.h>

#include "integration/whole_system.h"
#include "scripts/script_runner.h"

namespace krz::test {
namespace {

const std::filesystem::path kScripts = KRZ_SOURCE_DIR "/tests/scripts";

class ModuleScript : public testing::TestWithParam<std::string> {};

/// What a script's comments say that calls keep for themselves: "' handles-kept: 4".
uint32_t kept(const std::string& path, const std::string& what) {
  const std::string mark = "' " + what + "-kept: ";
  const std::string source = read_file(path);
  const size_t place = source.find(mark);
  return place == std::string::npos
             ? 0
             : static_cast<uint32_t>(std::atoi(source.c_str() + place + mark.size()));
}

TEST_P(ModuleScript, DoesWhatItsCommentsSay) {
  const std::string path = (kScripts / GetParam()).string();
  ToolboxCounts before;
  before.handles += kept(path, "handles");
  before.references += kept(path, "references");
  EXPECT_EQ(check_script(path, {}, [](Runtime& runtime) { prepare(runtime); }), "");
  EXPECT_EQ(ToolboxCounts(), before) << "the toolbox keeps something of the script's";
}

/// Paths from the folder of scripts: "track/headers.bas".
std::vector<std::string> module_scripts() {
  std::vector<std::string> result;
  for (const char* folder :
       {"media", "metadata", "movie", "picture", "text", "timecode", "track"}) {
    for (const std::string& path : scripts_below(kScripts / folder)) {
      result.push_back(std::filesystem::relative(path, kScripts).string());
    }
  }
  return result;
}

std::string test_name(const testing::TestParamInfo<std::string>& info) {
  return test_name_of(info.param.substr(0, info.param.rfind('.')));
}

INSTANTIATE_TEST_SUITE_P(Scripts, ModuleScript, testing::ValuesIn(module_scripts()), test_name);

}  // namespace
}  // namespace krz::test
