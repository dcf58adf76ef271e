// A script that asks everything of real movies, one test a file.
#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "integration/whole_system.h"
#include "scripts/script_runner.h"

namespace krz::test {
namespace {

const std::filesystem::path kCorpus = KRZ_SOURCE_DIR "/../shared/corpus";

/// A row of the corpus's index.
struct RealMovie {
  std::string file;
  std::string tracks;  // media types in movie order: "vide+soun"; "-" when there are none
};

void PrintTo(const RealMovie& movie, std::ostream* out) { *out << movie.file; }

/// What is odd about the files themselves: matrices in whole numbers, and tracks without IDs.
const std::map<std::string, std::string> kRemarked = {
    {"jcodec-itunes.mov", "track 1 has no usual matrix\ntrack 2 has no usual matrix\n"},
    {"tika-testmp4-quicktimemetadata.mov",
     "track 1 has no ID to find it by\ntrack 1 has no usual matrix\n"
     "track 2 has no ID to find it by\ntrack 2 has no usual matrix\n"
     "track 3 has no ID to find it by\ntrack 3 has no usual matrix\n"
     "track 4 has no ID to find it by\ntrack 4 has no usual matrix\n"},
};

/// Empty when the corpus is absent.
std::vector<RealMovie> real_movies() {
  std::vector<RealMovie> result;
  std::ifstream index(kCorpus / "INDEX.tsv");
  std::string line;
  std::getline(index, line);  // the titles of the columns
  while (std::getline(index, line)) {
    std::istringstream columns(line);
    std::string ignored;
    RealMovie movie;
    std::getline(columns, movie.file, '\t');
    for (std::string* column : {&ignored, &ignored, &movie.tracks}) {
      std::getline(columns, *column, '\t');
    }
    result.push_back(movie);
  }
  return result;
}

class RealMovies : public testing::TestWithParam<RealMovie> {};

TEST_P(RealMovies, AnswerEverythingAScriptAsks) {
  const ToolboxCounts before;
  RuntimeOptions options;
  options.arguments = {(kCorpus / GetParam().file).string()};
  const std::string source = read_file(KRZ_SOURCE_DIR "/tests/scripts/corpus/walk.bas");
  ASSERT_NE(source, "");
  const ScriptOutcome outcome =
      run_source(source, "walk.bas", options, [](Runtime& runtime) { prepare(runtime); });

  // Two files hold no movie at all.
  const std::string& file = GetParam().file;
  if (file == "droid-skeleton-preview.mov" || file == "exiv2-crafted-fgw8.mov") {
    EXPECT_NE(outcome.error.find("IOException"), std::string::npos) << outcome.error;
    EXPECT_EQ(outcome.output, "");
  } else {
    EXPECT_EQ(outcome.error, "");
    const auto remarks = kRemarked.find(file);
    EXPECT_EQ(outcome.output,
              GetParam().tracks + "\n" + (remarks == kRemarked.end() ? "" : remarks->second));
  }
  EXPECT_EQ(outcome.leaked_strings, 0);
  EXPECT_EQ(outcome.leaked_objects, 0);
  EXPECT_EQ(ToolboxCounts(), before);
}

std::string test_name(const testing::TestParamInfo<RealMovie>& info) {
  return test_name_of(info.param.file);
}

INSTANTIATE_TEST_SUITE_P(Corpus, RealMovies, testing::ValuesIn(real_movies()), test_name);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RealMovies);

TEST(Corpus, IsThere) {
  if (real_movies().empty()) GTEST_SKIP() << "the folder of real movies is not there";
}

}  // namespace
}  // namespace krz::test
