#include "object/convert.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "object/object.h"
#include "object/string.h"
#include "registry/class_info.h"
#include "registry/names.h"

namespace krz {

namespace {

template <class Number>
std::string shortest_text(Number number) {
  char digits[64];
  const Number size = std::abs(number);
  // Digits alone are what people expect of everyday sizes, also where an exponent would be shorter.
  const bool everyday = number == 0 || (size >= Number(1e-5) && size < Number(1e15));
  const auto end = everyday
                       ? std::to_chars(digits, std::end(digits), number, std::chars_format::fixed)
                       : std::to_chars(digits, std::end(digits), number);
  return std::string(digits, end.ptr);
}

template <class Number>
std::string integer_text(Number number) {
  char digits[24];
  return std::string(digits, std::to_chars(digits, std::end(digits), number).ptr);
}

std::string color_text(uint32_t color) {
  std::string text = "&c000000";
  char digits[8];
  const auto end = std::to_chars(digits, std::end(digits), color & 0xFFFFFF, 16).ptr;
  const auto count = static_cast<size_t>(end - digits);
  for (size_t i = 0; i < count; ++i) {
    const char c = digits[i];
    text[8 - count + i] = c >= 'a' ? static_cast<char>(c - 32) : c;
  }
  return text;
}

// Toward zero; a number that does not fit becomes the nearest that does, and what is no number
// becomes 0.
int64_t whole_number(double number) {
  if (std::isnan(number)) return 0;
  if (number >= 0x1p63) return std::numeric_limits<int64_t>::max();
  if (number < -0x1p63) return std::numeric_limits<int64_t>::min();
  return static_cast<int64_t>(number);
}

// A number in both of its forms, of which `is_whole` says the exact one.
struct AnyNumber {
  bool is_whole = true;
  int64_t whole = 0;
  double real = 0;
};

AnyNumber whole(int64_t number) { return {true, number, static_cast<double>(number)}; }
AnyNumber real(double number) { return {false, whole_number(number), number}; }

bool number_of(const Type& type, const Slot& value, AnyNumber& number) {
  switch (type.kind) {
    case Kind::kNil:
      number = {};
      return true;
    case Kind::kBoolean:
      number = whole(value.boolean != 0);
      return true;
    case Kind::kInteger:
      number = whole(value.integer);
      return true;
    case Kind::kInt64:
      number = whole(value.int64);
      return true;
    case Kind::kColor:
      number = whole(value.color);
      return true;
    case Kind::kSingle:
      number = real(static_cast<double>(value.single));
      return true;
    case Kind::kDouble:
      number = real(value.real);
      return true;
    case Kind::kString: {
      const std::string text = string_utf8(value.string);
      int64_t exact = 0;
      const auto end = text.data() + text.size();
      const auto read = std::from_chars(text.data(), end, exact);
      const bool all = read.ec == std::errc() && read.ptr == end;
      number = all ? whole(exact) : real(leading_number(text));
      return true;
    }
    default:
      return false;
  }
}

bool to_boolean(const Type& from, const Slot& value, Slot& result) {
  if (from.kind == Kind::kString) {
    const std::string text = string_utf8(value.string);
    result.boolean = same_name(text, "true") || leading_number(text) != 0;
    return true;
  }
  AnyNumber number;
  if (!number_of(from, value, number)) return false;
  result.boolean = number.is_whole ? number.whole != 0 : number.real != 0;
  return true;
}

bool to_number(const Type& from, const Slot& value, Kind kind, Slot& result) {
  AnyNumber number;
  if (!number_of(from, value, number)) return false;
  switch (kind) {
    case Kind::kInteger:
      result.integer = static_cast<int32_t>(number.whole);
      break;
    case Kind::kInt64:
      result.int64 = number.whole;
      break;
    case Kind::kColor:
      result.color = static_cast<uint32_t>(number.whole) & 0xFFFFFF;
      break;
    case Kind::kSingle:
      result.single = static_cast<float>(number.real);
      break;
    default:
      result.real = number.real;
  }
  return true;
}

bool to_string(const Type& from, const Slot& value, Slot& result) {
  if (from.kind == Kind::kObject || from.kind == Kind::kArray) return false;
  if (from.kind == Kind::kString) {
    result.string = value.string;
    lock_string(result.string);
  } else {
    result.string = make_string(value_text(from, value));
  }
  return true;
}

// Objects and arrays keep being what they are.
bool to_reference(const Type& from, const Slot& value, const Type& to, Slot& result) {
  if (from.kind == Kind::kNil || (from.is_reference() && !value.object)) return true;
  const bool fits = to.kind == Kind::kArray
                        ? from == to
                        : from.kind == Kind::kObject && value.object->class_info &&
                              value.object->class_info->is_a(to.class_info);
  if (!fits) return false;
  result.object = value.object;
  lock_object(result.object);
  return true;
}

}  // namespace

std::string number_text(double number) { return shortest_text(number); }
std::string number_text(float number) { return shortest_text(number); }

double leading_number(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return 0;
  text.remove_prefix(first);
  if (text.size() > 2 && text.front() == '&') {
    const char letter = ascii_lower(text[1]);
    const int base = letter == 'h' ? 16 : letter == 'o' ? 8 : letter == 'b' ? 2 : 0;
    uint64_t number = 0;
    if (base == 0) return 0;
    std::from_chars(text.data() + 2, text.data() + text.size(), number, base);
    return static_cast<double>(number);
  }
  if (text.front() == '+') text.remove_prefix(1);
  const size_t digits = text.find_first_not_of('-');
  // Names of what is no number are no numbers here.
  const bool is_number = digits != std::string_view::npos && digits <= 1 &&
                         (text[digits] == '.' || (text[digits] >= '0' && text[digits] <= '9'));
  double number = 0;
  if (is_number) std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::string value_text(const Type& type, const Slot& value) {
  switch (type.kind) {
    case Kind::kBoolean:
      return value.boolean ? "True" : "False";
    case Kind::kInteger:
      return integer_text(value.integer);
    case Kind::kInt64:
      return integer_text(value.int64);
    case Kind::kSingle:
      return number_text(value.single);
    case Kind::kDouble:
      return number_text(value.real);
    case Kind::kColor:
      return color_text(value.color);
    case Kind::kString:
      return string_utf8(value.string);
    case Kind::kVariant:
      if (const VariantObject* variant = as_variant(value.object)) {
        return value_text(variant->value_type, variant->value);
      }
      return {};
    default:
      return {};
  }
}

bool convert_value(const Type& from, const Slot& value, const Type& to, Slot* result) {
  if (from.kind == Kind::kVariant && to.kind != Kind::kVariant) {
    const VariantObject* const variant = as_variant(value.object);
    if (!variant) return convert_value({Kind::kNil}, {}, to, result);
    return convert_value(variant->value_type, variant->value, to, result);
  }
  Slot converted;
  bool done = false;
  switch (to.kind) {
    case Kind::kVariant:
      done = from.kind != Kind::kVoid;
      if (from.kind == Kind::kVariant) {
        converted.object = value.object;
        lock_object(converted.object);
      } else if (from.kind != Kind::kNil && !(from.kind >= Kind::kObject && !value.object)) {
        converted.object = new_variant(from, value);
      }
      break;
    case Kind::kBoolean:
      done = to_boolean(from, value, converted);
      break;
    case Kind::kInteger:
    case Kind::kInt64:
    case Kind::kColor:
    case Kind::kSingle:
    case Kind::kDouble:
      done = to_number(from, value, to.kind, converted);
      break;
    case Kind::kString:
      done = to_string(from, value, converted);
      break;
    case Kind::kObject:
    case Kind::kArray:
      done = to_reference(from, value, to, converted);
      break;
    case Kind::kNil:
    case Kind::kVoid:
      break;
  }
  if (done) *result = converted;
  return done;
}

}  // namespace krz
