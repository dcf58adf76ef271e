// A library of the system that is loaded when something first needs it, so that nothing else pays
// for it.
#pragma once

#include <dlfcn.h>

#include <type_traits>

namespace krz {

/// The functions of a library, found by name. It stays loaded.
class LateLibrary {
 public:
  /// Takes the first of the names that can be loaded, such as "libpng16.so.16".
  template <class... Names>
  explicit LateLibrary(Names... names) {
    ((library_ = library_ ? library_ : ::dlopen(names, RTLD_NOW | RTLD_LOCAL)), ...);
    complete_ = library_ != nullptr;
  }

  /// Sets a pointer to the function of that name; null when there is none.
  template <class Function>
  void look_up(Function*& function, const char* name) {
    function = library_ ? reinterpret_cast<Function*>(::dlsym(library_, name)) : nullptr;
    complete_ = complete_ && function;
  }

  /// Whether the library was loaded and everything asked for was found.
  bool complete() const { return complete_; }

 private:
  void* library_ = nullptr;
  bool complete_ = false;
};

}  // namespace krz
