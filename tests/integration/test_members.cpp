// Every member that the module registers is there, and is used by a script of tests/scripts that is
// really run.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "integration/whole_system.h"
#include "language/script.h"
#include "registry/class_info.h"
#include "scripts/script_runner.h"

namespace krz::test {
namespace {

const std::filesystem::path kScripts = KRZ_SOURCE_DIR "/tests/scripts";

struct MemberCounts {
  const char* class_name;
  int32_t properties;
  int32_t methods;
  int32_t shared_methods;
  int32_t constants;
};

constexpr MemberCounts kExpected[] = {
    {"QTUserDataKRZ", 3, 12, 0, 0},
    {"QTChapterDataKRZ", 27, 0, 0, 21},
    {"QTTimeCodeCreationParametersKRZ", 21, 1, 0, 0},
    {"QTSampleDescriptionKRZ", 1, 0, 0, 0},
    {"QTVideoSampleDescriptionKRZ", 11, 0, 0, 0},
    {"QTSoundSampleDescriptionKRZ", 5, 0, 0, 0},
    {"QTSpriteSampleDescriptionKRZ", 1, 0, 0, 0},
    {"QTMusicSampleDescriptionKRZ", 0, 0, 0, 0},
    {"QTThreeDeeSampleDescriptionKRZ", 2, 0, 0, 0},
    {"QTFlashSampleDescriptionKRZ", 1, 0, 0, 0},
    {"QTTextSampleDescriptionKRZ", 21, 0, 0, 0},
    {"QTTrackKRZ", 3, 72, 0, 0},
    {"QTChapterTrackKRZ", 0, 5, 0, 0},
    {"QTTimeCodeKRZ", 15, 1, 0, 0},
    {"QTMetaDataKRZ", 2, 15, 33, 61},
    {"QTMetaDataItemKRZ", 1, 11, 0, 0},
    {"Movie", 0, 28, 0, 0},  // of the module's extension alone
};

/// What the module says of a class: its definition, or what it adds to one of the host's.
const REALclassDefinition& definition_of(const ClassInfo& one) {
  return one.extensions().empty() ? *one.definition() : *one.extensions().front();
}

std::string name_in(std::string_view declaration) {
  const size_t end = declaration.find_first_of("( ");
  return std::string(declaration.substr(0, end));
}

std::string small(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

template <class Visit>
void visit_classes(Runtime& runtime, Visit visit) {
  for (const MemberCounts& expected : kExpected) {
    const ClassInfo* const one = runtime.registry().find_class(expected.class_name);
    if (one != nullptr) visit(*one, definition_of(*one));
  }
}

/// Calls visit(method, "Class.declaration", setter) for every method that the module registers.
template <class Visit>
void visit_methods(Runtime& runtime, Visit visit) {
  visit_classes(runtime, [&](const ClassInfo& one, const REALclassDefinition& definition) {
    const auto visit_table = [&](const MethodEntry* entries, int32_t count, bool is_shared) {
      for (int32_t i = 0; i < count; ++i) {
        const std::string_view declaration = entries[i].declaration;
        const std::string name = name_in(declaration);
        const auto methods = is_shared ? one.find_shared_methods(name) : one.find_methods(name);
        for (const MethodInfo* method : methods) {
          if (method->declaration == declaration) {
            visit(*method, one.name() + "." + std::string(declaration));
          }
        }
      }
    };
    visit_table(definition.methods, definition.method_count, false);
    visit_table(definition.shared_methods, definition.shared_method_count, true);
  });
}

/// The scripts that use the module: each with its text in small letters.
struct ModuleScript {
  std::string path;
  std::string text;
};

std::vector<ModuleScript> module_scripts() {
  std::vector<ModuleScript> found;
  for (const std::string& path : scripts_below(kScripts)) {
    const std::string folder = std::filesystem::relative(path, kScripts).begin()->string();
    if (folder == "language" || folder == "library" || folder == "corpus") continue;
    found.push_back({path, small(read_file(path))});
  }
  return found;
}

/// Runs a script and adds what it called and what it assigned to.
struct Reached {
  std::set<std::string> called;
  std::set<std::string> read;
  std::set<std::string> assigned;
};

void run_and_collect(const ModuleScript& script, Reached& reached) {
  RuntimeOptions options;
  options.standard_output = options.standard_error = [](std::string_view) {};
  options.arguments = expectations_of(read_file(script.path)).arguments;
  Runtime runtime(options);
  prepare(runtime);
  std::vector<Diagnostic> diagnostics;
  const auto compiled =
      Script::compile(runtime, read_file(script.path),
                      std::filesystem::path(script.path).filename().string(), diagnostics);
  ASSERT_TRUE(compiled) << script.path;
  compiled->run();
  visit_methods(runtime, [&](const MethodInfo& method, const std::string& declaration) {
    if (method.was_called) reached.called.insert(declaration);
    if (method.was_assigned) reached.assigned.insert(declaration);
  });
  visit_classes(runtime, [&](const ClassInfo& one, const REALclassDefinition& definition) {
    for (int32_t i = 0; i < definition.property_count; ++i) {
      const char* const name = definition.properties[i].name;
      const PropertyInfo* const property = one.find_property(name);
      if (property && property->was_read) reached.read.insert(one.name() + "." + name);
    }
  });
}

/// Whether a script names a constant, which leaves no trace when it is compiled: a point, the name,
/// and nothing that makes it longer.
bool mentions(const std::vector<ModuleScript>& scripts, const std::string& name) {
  const auto is_part = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
  };
  return std::any_of(scripts.begin(), scripts.end(), [&](const ModuleScript& script) {
    for (size_t at = script.text.find("." + name); at != std::string::npos;
         at = script.text.find("." + name, at + 1)) {
      const size_t end = at + 1 + name.size();
      if (end >= script.text.size() || !is_part(script.text[end])) return true;
    }
    return false;
  });
}

std::string listed(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += "\n  " + name;
  return text;
}

TEST(Members, AreAsManyAsEveryClassHas) {
  Runtime runtime({});
  ASSERT_EQ(runtime.load_module(kModulePath), "");
  for (const MemberCounts& expected : kExpected) {
    const ClassInfo* const one = runtime.registry().find_class(expected.class_name);
    ASSERT_TRUE(one) << expected.class_name;
    const REALclassDefinition& definition = definition_of(*one);
    EXPECT_EQ(definition.property_count, expected.properties) << expected.class_name;
    EXPECT_EQ(definition.method_count, expected.methods) << expected.class_name;
    EXPECT_EQ(definition.shared_method_count, expected.shared_methods) << expected.class_name;
    EXPECT_EQ(definition.constant_count, expected.constants) << expected.class_name;
  }
}

TEST(Members, AreEachUsedByAScript) {
  const std::vector<ModuleScript> scripts = module_scripts();
  Reached reached;
  for (const ModuleScript& script : scripts) run_and_collect(script, reached);

  Runtime runtime({});
  ASSERT_EQ(runtime.load_module(kModulePath), "");
  std::vector<std::string> uncalled;
  std::vector<std::string> unassigned;
  visit_methods(runtime, [&](const MethodInfo& method, const std::string& declaration) {
    if (!reached.called.contains(declaration)) uncalled.push_back(declaration);
    if (method.setter != nullptr && !reached.assigned.contains(declaration)) {
      unassigned.push_back(declaration);
    }
  });
  std::vector<std::string> unread;
  visit_classes(runtime, [&](const ClassInfo& one, const REALclassDefinition& definition) {
    for (int32_t i = 0; i < definition.property_count; ++i) {
      const std::string name = one.name() + "." + definition.properties[i].name;
      if (!reached.read.contains(name)) unread.push_back(name);
    }
    for (int32_t i = 0; i < definition.constant_count; ++i) {
      const std::string name = name_in(definition.constants[i].declaration);
      if (!mentions(scripts, small(name))) unread.push_back(one.name() + "." + name);
    }
  });
  EXPECT_TRUE(uncalled.empty()) << "no script calls:" << listed(uncalled);
  EXPECT_TRUE(unassigned.empty()) << "no script assigns to:" << listed(unassigned);
  EXPECT_TRUE(unread.empty()) << "no script reads:" << listed(unread);
}

}  // namespace
}  // namespace krz::test
