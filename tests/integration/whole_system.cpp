#include "integration/whole_system.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "integration/script_movies.h"
#include "object/exceptions.h"
#include "object/string.h"
#include "registry/tables.h"
#include "toolbox/scratch_folder.h"

namespace krz::test {
namespace {

// The movies of the runtime that was prepared last: what a script changes, no other sees.
std::optional<toolbox::ScratchFolder> g_folder;

REALstring path_of_test_movie(REALstring name) {
  const std::string wanted(string_bytes(name));
  const std::string path = g_folder->path(wanted + ".mov");
  if (!std::filesystem::exists(path)) {
    const toolbox::Status written = write_script_movie(wanted, path);
    if (!written.ok()) {
      raise_exception("RuntimeException", written.message());
      return nullptr;
    }
  }
  return make_string(path);
}

int32_t live_references() { return static_cast<int32_t>(ToolboxLiveReferences()); }

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(path_of_test_movie, "TestMovie(name as string) as string"),
    KRZ_FUNCTION(live_references, "LiveReferences() as integer"),
};

}  // namespace

void prepare(Runtime& runtime, const std::string& module_path) {
  g_folder.emplace();
  EXPECT_EQ(runtime.load_module(module_path), "");
  runtime.registry().register_functions(kFunctions);
}

}  // namespace krz::test
