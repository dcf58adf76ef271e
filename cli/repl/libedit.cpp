#include "repl/libedit.h"

#include "library/late_library.h"

namespace cli {

namespace {

bool load(Libedit& functions) {
  krz::LateLibrary library("libedit.so.2", "libedit.so.0");
  library.look_up(functions.init, "el_init");
  library.look_up(functions.end, "el_end");
  library.look_up(functions.set, "el_set");
  library.look_up(functions.set_wide, "el_wset");
  library.look_up(functions.get, "el_get");
  library.look_up(functions.gets, "el_gets");
  library.look_up(functions.source, "el_source");
  library.look_up(functions.line, "el_line");
  library.look_up(functions.insert, "el_insertstr");
  library.look_up(functions.remove, "el_deletestr");
  library.look_up(functions.resize, "el_resize");
  library.look_up(functions.history_init, "history_init");
  library.look_up(functions.history_end, "history_end");
  library.look_up(functions.history, "history");
  return library.complete();
}

}  // namespace

const Libedit* libedit() {
  static Libedit functions;
  static const bool kLoaded = load(functions);
  return kLoaded ? &functions : nullptr;
}

}  // namespace cli
