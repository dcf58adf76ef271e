// Functions between texts and numbers.
#include <charconv>
#include <cmath>
#include <string>

#include "library/number_format.h"
#include "library/parts.h"
#include "library/text_support.h"
#include "object/convert.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/text_codec.h"
#include "registry/tables.h"

namespace krz {

namespace {

REALstring integer_as_text(int32_t number) { return make_string(std::to_string(number)); }
REALstring int64_as_text(int64_t number) { return make_string(std::to_string(number)); }
REALstring double_as_text(double number) { return make_string(number_text(number)); }
REALstring boolean_as_text(bool value) { return make_string(value ? "True" : "False"); }

REALstring variant_as_text(REALobject variant) {
  Slot slot;
  slot.object = variant;
  return make_string(value_text({Kind::kVariant}, slot));
}

double value_of(REALstring text) { return leading_number(string_utf8(text)); }

// Negative numbers show their bits, 32 of them when that is enough.
REALstring in_base(int64_t number, int base) {
  const bool is_short = number < 0 && number >= INT32_MIN;
  const uint64_t bits = is_short ? static_cast<uint32_t>(number) : static_cast<uint64_t>(number);
  char digits[64];
  const auto end = std::to_chars(digits, std::end(digits), bits, base).ptr;
  return make_string(
      capital_letters({digits, static_cast<size_t>(end - digits)}, encoding::kAscii));
}

REALstring hexadecimal(int64_t number) { return in_base(number, 16); }
REALstring octal(int64_t number) { return in_base(number, 8); }
REALstring binary(int64_t number) { return in_base(number, 2); }

REALstring format(double number, REALstring pattern) {
  return make_string(formatted_number(number, string_utf8(pattern)));
}

REALstring character(int32_t code) {
  if (code < 0 || code > 0x10FFFF) {
    raise_exception("OutOfBoundsException", std::to_string(code) + " is no character");
    return nullptr;
  }
  std::string text;
  append_character(text, static_cast<char32_t>(code), encoding::kUtf8);
  return make_string(text);
}

int32_t code_of(REALstring text) {
  char32_t first = 0;
  TextReader reader(string_bytes(text), text ? text->encoding : encoding::kUtf8);
  reader.next(first);
  return static_cast<int32_t>(first);
}

REALstring byte_character(int32_t byte) {
  const char bytes[] = {static_cast<char>(byte)};
  return make_string({bytes, 1}, kEncodingUnknown);
}

int32_t byte_code_of(REALstring text) {
  const std::string_view bytes = string_bytes(text);
  return bytes.empty() ? 0 : static_cast<uint8_t>(bytes.front());
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(integer_as_text, "Str(number as integer) as string"),
    KRZ_FUNCTION(int64_as_text, "Str(number as int64) as string"),
    KRZ_FUNCTION(double_as_text, "Str(number as double) as string"),
    KRZ_FUNCTION(boolean_as_text, "Str(value as boolean) as string"),
    KRZ_FUNCTION(variant_as_text, "Str(value as variant) as string"),
    KRZ_FUNCTION(format, "Str(number as double, format as string) as string"),
    KRZ_FUNCTION(format, "Format(number as double, format as string) as string"),
    KRZ_FUNCTION(value_of, "Val(text as string) as double"),
    KRZ_FUNCTION(value_of, "CDbl(text as string) as double"),
    KRZ_FUNCTION(hexadecimal, "Hex(number as int64) as string"),
    KRZ_FUNCTION(octal, "Oct(number as int64) as string"),
    KRZ_FUNCTION(binary, "Bin(number as int64) as string"),
    KRZ_FUNCTION(character, "Chr(code as integer) as string"),
    KRZ_FUNCTION(code_of, "Asc(text as string) as integer"),
    KRZ_FUNCTION(byte_character, "ChrB(byte as integer) as string"),
    KRZ_FUNCTION(byte_code_of, "AscB(text as string) as integer"),
};

}  // namespace

void register_text_convert(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
