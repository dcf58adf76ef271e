// The toolbox under the module's tests is the real one. Some of its calls are written down on their
// way there, and fail or answer otherwise where a test says so; frameworks and drawing are the
// tests' own.
#pragma once

#include <QuickTime/QuickTime.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace fake_toolbox {

struct Toolbox {
  std::vector<std::string> calls;          // "SetTrackEnabled(7, 1)"
  std::map<std::string, int64_t> answers;  // by call name, in place of the toolbox's own
  std::string sample;                      // what media samples hold; empty: what is there
  std::string look;                        // how the last added text is to be drawn
  TCTextOptions display_options = {};      // the last that were set
  // Of the last time code that was made a frame number. Aligned, as references to them are taken.
  alignas(4) TimeCodeDef time_code_definition = {};
  alignas(4) TimeCodeRecord time_code_record = {};
  int locks = 0;                            // on handles
  std::map<std::string, void*> frameworks;  // their routines by name; empty: no framework is there
  int foundation_objects = 0;               // strings, URLs and bundles that are not released
};
inline Toolbox& toolbox() {
  static Toolbox the_toolbox;
  return the_toolbox;
}
inline void start() { toolbox() = Toolbox(); }

inline bool called(const std::string& beginning) {
  const auto& calls = toolbox().calls;
  return std::any_of(calls.begin(), calls.end(),
                     [&](const std::string& call) { return call.starts_with(beginning); });
}

inline std::string text(const void* reference) {
  return std::to_string(reinterpret_cast<uintptr_t>(reference));
}
inline std::string text(int64_t number) { return std::to_string(number); }

template <class... Arguments>
void write_down(const char* name, Arguments... arguments) {
  std::string call = std::string(name) + "(";
  [[maybe_unused]] const char* comma = "";  // calls without arguments
  ((call += comma + text(arguments), comma = ", "), ...);
  toolbox().calls.push_back(call + ")");
}

/// Of a call that goes nowhere: 0 when no answer is given.
template <class... Arguments>
int64_t answer(const char* name, Arguments... arguments) {
  write_down(name, arguments...);
  return toolbox().answers[name];
}

template <class Reference>
Reference reference(int64_t token) {
  return reinterpret_cast<Reference>(static_cast<uintptr_t>(token));
}

}  // namespace fake_toolbox
