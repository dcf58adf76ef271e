#include "repl/libedit.h"

#include <dlfcn.h>

#include <type_traits>

namespace cli {

namespace {

bool load(Libedit& functions) {
  void* library = ::dlopen("libedit.so.2", RTLD_NOW | RTLD_LOCAL);  // stays loaded
  if (!library) library = ::dlopen("libedit.so.0", RTLD_NOW | RTLD_LOCAL);
  if (!library) return false;
  bool complete = true;
  const auto look_up = [library, &complete](auto& function, const char* name) {
    function =
        reinterpret_cast<std::remove_reference_t<decltype(function)>>(::dlsym(library, name));
    complete = complete && function;
  };
  look_up(functions.init, "el_init");
  look_up(functions.end, "el_end");
  look_up(functions.set, "el_set");
  look_up(functions.set_wide, "el_wset");
  look_up(functions.get, "el_get");
  look_up(functions.gets, "el_gets");
  look_up(functions.source, "el_source");
  look_up(functions.line, "el_line");
  look_up(functions.insert, "el_insertstr");
  look_up(functions.remove, "el_deletestr");
  look_up(functions.resize, "el_resize");
  look_up(functions.history_init, "history_init");
  look_up(functions.history_end, "history_end");
  look_up(functions.history, "history");
  return complete;
}

}  // namespace

const Libedit* libedit() {
  static Libedit functions;
  static const bool kLoaded = load(functions);
  return kLoaded ? &functions : nullptr;
}

}  // namespace cli
