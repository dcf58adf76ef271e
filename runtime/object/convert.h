// Values as text, text as values, and values of one type as values of another: what variants and
// conversion functions share.
#pragma once

#include <string>
#include <string_view>

#include "object/type.h"

namespace krz {

/// The shortest decimal form that reads back as the same number; "inf" and "nan" for what is no
/// number.
std::string number_text(double number);
std::string number_text(float number);

/// The number that a text begins with, after blanks: decimal, or "&h", "&o", "&b" and digits of
/// that base. 0 when there is none.
double leading_number(std::string_view text);

/// A value as people read it, UTF-8: "True", "12", "0.5", a colour as "&cRRGGBB", a string's text;
/// empty for nil and objects.
std::string value_text(const Type& type, const Slot& value);

/// Makes a value of type `to` from one of type `from`; either may be Variant. Numbers are rounded
/// toward zero and wrap as the language does, text is read as Val reads it, nil becomes zero, "" or
/// nil. On success `result` owns a lock on a reference in it. Fails: false when there is no such
/// value (an object as a number, an object of another class); `result` is then untouched.
bool convert_value(const Type& from, const Slot& value, const Type& to, Slot* result);

}  // namespace krz
