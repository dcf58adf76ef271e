// How a scripted toolbox call records its arguments and finds its answer.
#pragma once

#include "plugin/fake_toolbox.h"

namespace fake_toolbox {

inline std::string text(const void* reference) {
  return std::to_string(reinterpret_cast<uintptr_t>(reference));
}
inline std::string text(int64_t number) { return std::to_string(number); }

template <class... Arguments>
int64_t answer(const char* name, Arguments... arguments) {
  std::string call = std::string(name) + "(";
  [[maybe_unused]] const char* comma = "";  // calls without arguments
  ((call += comma + text(arguments), comma = ", "), ...);
  toolbox().calls.push_back(call + ")");
  return toolbox().answers[name];
}

template <class Reference>
Reference reference(int64_t token) {
  return reinterpret_cast<Reference>(static_cast<uintptr_t>(token));
}

}  // namespace fake_toolbox
