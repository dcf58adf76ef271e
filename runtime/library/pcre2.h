// The PCRE2 library, loaded when the first regular expression is used: most scripts have none and
// should not pay for it.
#pragma once

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>  // for types and constants; the functions are looked up when needed

namespace krz {

struct Pcre2 {
  decltype(&::pcre2_compile_8) compile = nullptr;
  decltype(&::pcre2_code_free_8) code_free = nullptr;
  decltype(&::pcre2_compile_context_create_8) compile_context_create = nullptr;
  decltype(&::pcre2_compile_context_free_8) compile_context_free = nullptr;
  decltype(&::pcre2_set_max_pattern_length_8) set_max_pattern_length = nullptr;
  decltype(&::pcre2_match_context_create_8) match_context_create = nullptr;
  decltype(&::pcre2_match_context_free_8) match_context_free = nullptr;
  decltype(&::pcre2_set_heap_limit_8) set_heap_limit = nullptr;
  decltype(&::pcre2_set_callout_8) set_callout = nullptr;
  decltype(&::pcre2_match_data_create_from_pattern_8) match_data_create = nullptr;
  decltype(&::pcre2_match_data_free_8) match_data_free = nullptr;
  decltype(&::pcre2_match_8) match = nullptr;
  decltype(&::pcre2_get_ovector_pointer_8) ovector = nullptr;
  decltype(&::pcre2_get_ovector_count_8) ovector_count = nullptr;
  decltype(&::pcre2_get_error_message_8) error_message = nullptr;
};

/// The functions of the library; null, with an UnsupportedFormatException raised that says what to
/// install, when it cannot be loaded.
const Pcre2* pcre2();

}  // namespace krz
