#include "library/pcre2.h"

#include "library/late_library.h"
#include "object/exceptions.h"

namespace krz {

namespace {

bool load(Pcre2& functions) {
  LateLibrary library("libpcre2-8.so.0");
  library.look_up(functions.compile, "pcre2_compile_8");
  library.look_up(functions.code_free, "pcre2_code_free_8");
  library.look_up(functions.compile_context_create, "pcre2_compile_context_create_8");
  library.look_up(functions.compile_context_free, "pcre2_compile_context_free_8");
  library.look_up(functions.set_max_pattern_length, "pcre2_set_max_pattern_length_8");
  library.look_up(functions.match_context_create, "pcre2_match_context_create_8");
  library.look_up(functions.match_context_free, "pcre2_match_context_free_8");
  library.look_up(functions.set_heap_limit, "pcre2_set_heap_limit_8");
  library.look_up(functions.set_callout, "pcre2_set_callout_8");
  library.look_up(functions.match_data_create, "pcre2_match_data_create_from_pattern_8");
  library.look_up(functions.match_data_free, "pcre2_match_data_free_8");
  library.look_up(functions.match, "pcre2_match_8");
  library.look_up(functions.ovector, "pcre2_get_ovector_pointer_8");
  library.look_up(functions.ovector_count, "pcre2_get_ovector_count_8");
  library.look_up(functions.error_message, "pcre2_get_error_message_8");
  return library.complete();
}

}  // namespace

const Pcre2* pcre2() {
  static Pcre2 functions;
  static const bool kLoaded = load(functions);
  if (kLoaded) return &functions;
  raise_exception("UnsupportedFormatException",
                  "regular expressions need the PCRE2 library (libpcre2-8.so.0), which cannot be "
                  "loaded; install it (Debian: libpcre2-8-0)");
  return nullptr;
}

}  // namespace krz
