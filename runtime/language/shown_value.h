// Values as a session shows them: more than Print gives, in one line.
#pragma once

#include <string>

#include "language/names.h"
#include "object/type.h"

namespace krz {

/// A string in quotes, an array or Dictionary with its first elements, an object with its class and
/// the properties that are plain values. Getters of registered classes are called; an exception may
/// be pending afterwards. `names` is the table of the script's classes.
std::string shown_value(const Type& type, const Slot& value, const NameTable& names);

}  // namespace krz
