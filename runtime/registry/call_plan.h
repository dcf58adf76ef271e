// What is prepared once for a declared function, so that calling it costs little.
#pragma once

#include <ffi.h>

#include <vector>

namespace krz {

struct CallPlan {
  bool calls_words = false;  // arguments travel in registers for integers: no need of libffi
  bool sets_words = false;
  ffi_cif call;  // (receiver unless shared, parameters...) -> result
  ffi_cif set;   // (receiver unless shared, parameters..., value) -> nothing
  std::vector<ffi_type*> argument_types;  // of `set`; `call` uses all but the last
};

}  // namespace krz
