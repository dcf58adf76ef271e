// Functions that count, cut and trim texts. Places and lengths are in characters, from 1, save
// where the name ends in B.
#include <algorithm>

#include "library/parts.h"
#include "library/text_support.h"
#include "object/text_codec.h"
#include "registry/tables.h"

namespace krz {

namespace {

constexpr std::string_view kBlanks{" \t\r\n\v\f\0", 7};

size_t at_least_zero(int32_t number) { return number > 0 ? static_cast<size_t>(number) : 0; }

int32_t length(REALstring text) { return static_cast<int32_t>(Text(text).count()); }

int32_t byte_length(REALstring text) { return text ? text->length : 0; }

REALstring left(REALstring string, int32_t count) {
  const Text text(string);
  return text.slice(0, text.byte_of(at_least_zero(count)));
}

REALstring right(REALstring string, int32_t count) {
  const Text text(string);
  const size_t all = text.count();
  return text.slice(text.byte_of(all - std::min(all, at_least_zero(count))), std::string::npos);
}

REALstring middle(REALstring string, int32_t start, int32_t count) {
  const Text text(string);
  // Characters before the first are nothing, but count.
  const int64_t end = std::max<int64_t>(1, int64_t{start} + std::max(count, 0));
  const size_t first = text.byte_of(at_least_zero(std::max(start, 1) - 1));
  const size_t last = text.byte_of(static_cast<size_t>(end - 1));
  return text.slice(first, last > first ? last - first : 0);
}

REALstring middle_to_end(REALstring string, int32_t start) {
  const Text text(string);
  return text.slice(text.byte_of(at_least_zero(std::max(start, 1) - 1)), std::string::npos);
}

REALstring bytes_slice(REALstring string, size_t first, size_t count) {
  const std::string_view bytes = string_bytes(string);
  return make_string(bytes.substr(std::min(first, bytes.size()), count),
                     string ? string->encoding : encoding::kUtf8);
}

REALstring left_bytes(REALstring string, int32_t count) {
  return bytes_slice(string, 0, at_least_zero(count));
}

REALstring right_bytes(REALstring string, int32_t count) {
  const size_t all = string_bytes(string).size();
  return bytes_slice(string, all - std::min(all, at_least_zero(count)), std::string::npos);
}

REALstring middle_bytes(REALstring string, int32_t start, int32_t count) {
  return bytes_slice(string, at_least_zero(std::max(start, 1) - 1), at_least_zero(count));
}

enum class Ends { kLeft, kRight, kBoth };

REALstring trimmed(REALstring string, Ends ends) {
  const Text text(string);
  const std::string_view bytes = text.bytes();
  size_t first = 0;
  size_t last = bytes.size();
  if (ends != Ends::kRight) first = std::min(bytes.find_first_not_of(kBlanks), bytes.size());
  if (ends != Ends::kLeft) last = std::max(first, bytes.find_last_not_of(kBlanks) + 1);
  if (first == 0 && last == bytes.size()) {
    lock_string(string);
    return string;
  }
  return text.slice(first, last - first);
}

REALstring trim(REALstring string) { return trimmed(string, Ends::kBoth); }
REALstring trim_left(REALstring string) { return trimmed(string, Ends::kLeft); }
REALstring trim_right(REALstring string) { return trimmed(string, Ends::kRight); }

constexpr size_t kWidestColumn = 10000;

/// Blanks that a text lacks to fill a column, in its encoding.
std::string blanks_beside(const Text& text, int32_t width) {
  const size_t wanted = std::min(at_least_zero(width), kWidestColumn);
  const size_t present = text.count();
  if (present >= wanted) return {};
  if (extends_ascii(text.encoding())) return std::string(wanted - present, ' ');
  std::string blanks;
  for (size_t i = present; i < wanted; ++i) append_character(blanks, U' ', text.encoding());
  return blanks;
}

REALstring pad_left(REALstring string, int32_t width) {
  const Text text(string);
  return make_string(blanks_beside(text, width) + std::string(text.bytes()), text.encoding());
}

REALstring pad_right(REALstring string, int32_t width) {
  const Text text(string);
  return make_string(std::string(text.bytes()) + blanks_beside(text, width), text.encoding());
}

REALstring capitals(REALstring string) {
  const Text text(string);
  return make_string(capital_letters(text.bytes(), text.encoding()), text.encoding());
}

REALstring small(REALstring string) {
  const Text text(string);
  return make_string(small_letters(text.bytes(), text.encoding()), text.encoding());
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(length, "Len(text as string) as integer"),
    KRZ_FUNCTION(byte_length, "LenB(s as string) as integer"),
    KRZ_FUNCTION(left, "Left(text as string, count as integer) as string"),
    KRZ_FUNCTION(right, "Right(text as string, count as integer) as string"),
    KRZ_FUNCTION(middle, "Mid(text as string, start as integer, count as integer) as string"),
    KRZ_FUNCTION(middle_to_end, "Mid(text as string, start as integer) as string"),
    KRZ_FUNCTION(left_bytes, "LeftB(text as string, count as integer) as string"),
    KRZ_FUNCTION(right_bytes, "RightB(text as string, count as integer) as string"),
    KRZ_FUNCTION(middle_bytes,
                 "MidB(text as string, start as integer, count as integer = 2147483647) as string"),
    KRZ_FUNCTION(trim, "Trim(text as string) as string"),
    KRZ_FUNCTION(trim_left, "LTrim(text as string) as string"),
    KRZ_FUNCTION(trim_right, "RTrim(text as string) as string"),
    KRZ_FUNCTION(pad_left, "PadLeft(text as string, width as integer) as string"),
    KRZ_FUNCTION(pad_right, "PadRight(text as string, width as integer) as string"),
    KRZ_FUNCTION(capitals, "Uppercase(text as string) as string"),
    KRZ_FUNCTION(small, "Lowercase(text as string) as string"),
};

}  // namespace

void register_text_parts(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
