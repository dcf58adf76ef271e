// The editline library, loaded when a person opens a session: nothing else needs it.
#pragma once

#include <histedit.h>  // for types and constants; the functions are looked up when needed

namespace cli {

struct Libedit {
  decltype(&::el_init) init = nullptr;
  decltype(&::el_end) end = nullptr;
  decltype(&::el_set) set = nullptr;
  decltype(&::el_wset) set_wide = nullptr;
  decltype(&::el_get) get = nullptr;
  decltype(&::el_gets) gets = nullptr;
  decltype(&::el_source) source = nullptr;
  decltype(&::el_line) line = nullptr;
  decltype(&::el_insertstr) insert = nullptr;
  decltype(&::el_deletestr) remove = nullptr;
  decltype(&::el_resize) resize = nullptr;
  decltype(&::history_init) history_init = nullptr;
  decltype(&::history_end) history_end = nullptr;
  decltype(&::history) history = nullptr;
};

/// The functions of the library, null when it cannot be loaded.
const Libedit* libedit();

}  // namespace cli
