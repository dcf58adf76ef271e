// Runs a script and compares what it does with what its comments say.
//
//   ' expect: text        the next line that the script prints
//   ' expect-error: text  the first line on standard error; places are "name.bas:line:column"
//   ' expect-exit: n      the exit status; 0 without it, 1 with an expected error
//   ' args: a b           what the script sees as Args
//
// A line printed beyond the expectations fails, and so does a string or object left alive.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "language/script.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz::test {

struct ScriptExpectations {
  std::vector<std::string> lines;
  std::string error;
  int exit_status = 0;
  std::vector<std::string> arguments;
};

struct ScriptOutcome {
  std::string output;
  std::string error;
  int exit_status = 0;
  int64_t leaked_strings = 0;
  int64_t leaked_objects = 0;
};

inline std::vector<std::string> split_lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

inline ScriptExpectations expectations_of(const std::string& source) {
  ScriptExpectations result;
  bool exit_given = false;
  for (const std::string& line : split_lines(source)) {
    const auto value = [&line](const std::string& mark, std::string& text) {
      const size_t place = line.find(mark);
      if (place == std::string::npos) return false;
      text = line.substr(place + mark.size());
      if (text.starts_with(' ')) text.erase(0, 1);
      return true;
    };
    std::string text;
    if (value("' expect:", text)) {
      result.lines.push_back(text);
    } else if (value("' expect-error:", text)) {
      result.error = text;
    } else if (value("' expect-exit:", text)) {
      result.exit_status = std::stoi(text);
      exit_given = true;
    } else if (value("' args:", text)) {
      std::istringstream words(text);
      for (std::string word; words >> word;) result.arguments.push_back(word);
    }
  }
  if (!result.error.empty() && !exit_given) result.exit_status = 1;
  return result;
}

enum class RunFrom { kSource, kBytecode };

/// Compiles and runs a source in a runtime of its own. Diagnostics count as standard error, with
/// exit status 1. `prepare` may load modules.
template <class Prepare>
ScriptOutcome run_source(const std::string& source, const std::string& file, RuntimeOptions options,
                         Prepare prepare, RunFrom from = RunFrom::kSource) {
  ScriptOutcome outcome;
  options.standard_output = [&outcome](std::string_view text) { outcome.output += text; };
  options.standard_error = [&outcome](std::string_view text) { outcome.error += text; };
  Runtime runtime(options);
  prepare(runtime);
  // A first compilation lets the registry parse what it keeps for later ones.
  std::vector<Diagnostic> diagnostics;
  auto script = Script::compile(runtime, source, file, diagnostics);
  const std::string bytecode =
      from == RunFrom::kBytecode && script != nullptr ? script->bytecode() : "";
  script = nullptr;
  const int64_t strings = live_strings();
  const int64_t objects = live_objects();
  {
    script = bytecode.empty() ? Script::compile(runtime, source, file, diagnostics)
                              : Script::load(runtime, bytecode, source, file);
    for (const Diagnostic& one : diagnostics) runtime.write_error(one.text());
    outcome.exit_status = script != nullptr ? script->run() : 1;
    script = nullptr;
  }
  runtime.flush_output();
  outcome.leaked_strings = live_strings() - strings;
  outcome.leaked_objects = live_objects() - objects;
  return outcome;
}

inline ScriptOutcome run_source(const std::string& source, const std::string& file = "test.bas",
                                RuntimeOptions options = {}) {
  return run_source(source, file, std::move(options), [](Runtime&) {});
}

/// Every .bas file below a folder, in order of their names.
inline std::vector<std::string> scripts_below(const std::filesystem::path& folder) {
  std::vector<std::string> result;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".bas") result.push_back(entry.path().string());
  }
  std::sort(result.begin(), result.end());
  return result;
}

/// A text as the name of a test may be.
inline std::string test_name_of(std::string text) {
  std::replace_if(
      text.begin(), text.end(),
      [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
  return text;
}

/// What is wrong with the script's behaviour; empty when nothing is.
template <class Prepare>
std::string check_source(const std::string& source, const std::string& file, RuntimeOptions options,
                         Prepare prepare, RunFrom from = RunFrom::kSource) {
  const ScriptExpectations expected = expectations_of(source);
  options.arguments.insert(options.arguments.end(), expected.arguments.begin(),
                           expected.arguments.end());
  const ScriptOutcome outcome = run_source(source, file, std::move(options), prepare, from);

  std::string wrong;
  const std::vector<std::string> printed = split_lines(outcome.output);
  for (size_t i = 0; i < std::max(printed.size(), expected.lines.size()); ++i) {
    const std::string is = i < printed.size() ? "\"" + printed[i] + "\"" : "nothing";
    const std::string should =
        i < expected.lines.size() ? "\"" + expected.lines[i] + "\"" : "nothing";
    if (is != should)
      wrong += "line " + std::to_string(i + 1) + " of the output: expected " + should + ", got " +
               is + "\n";
  }
  const std::vector<std::string> errors = split_lines(outcome.error);
  const std::string first_error = errors.empty() ? "" : errors[0];
  if (first_error != expected.error)
    wrong += "standard error: expected \"" + expected.error + "\", got \"" + first_error + "\"\n";
  if (outcome.exit_status != expected.exit_status)
    wrong += "exit status: expected " + std::to_string(expected.exit_status) + ", got " +
             std::to_string(outcome.exit_status) + "\n";
  if (outcome.leaked_strings != 0)
    wrong += std::to_string(outcome.leaked_strings) + " strings stay alive\n";
  if (outcome.leaked_objects != 0)
    wrong += std::to_string(outcome.leaked_objects) + " objects stay alive\n";
  return wrong;
}

inline std::string read_file(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

/// Hands every example of a manual to a visitor.
template <class Visit>
void visit_examples(const std::string& path, Visit visit) {
  const std::string manual = read_file(path);
  const std::string opening = "```basic\n";
  for (size_t begin = manual.find(opening); begin != std::string::npos;
       begin = manual.find(opening, begin)) {
    begin += opening.size();
    visit(manual.substr(begin, manual.find("```", begin) - begin));
  }
}

template <class Prepare>
std::string check_script(const std::string& path, RuntimeOptions options, Prepare prepare,
                         RunFrom from = RunFrom::kSource) {
  const std::string source = read_file(path);
  if (source.empty()) return "cannot read " + path;
  return check_source(source, std::filesystem::path(path).filename().string(), std::move(options),
                      prepare, from);
}

}  // namespace krz::test
