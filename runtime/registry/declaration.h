// Reads the declaration texts that modules register: methods, constants and type names.
#pragma once

#include <string>
#include <string_view>

#include "registry/class_info.h"

namespace krz {

/// Parses "Name(byref x as T, y as T = value, z() as T) as T" in any of its shorter forms.
/// Owns:  a string default in `signature` is locked; release_defaults() gives it back.
/// Fails: with what is wrong, in words; `signature` then owns nothing. Empty when all is well.
std::string parse_method(std::string_view declaration, Registry& registry, std::string& name,
                         Signature& signature);

/// Parses "name = value"; the value is an integer, a double, a quoted string or a boolean. Owns a
/// string in it as above.
std::string parse_constant(std::string_view declaration, ConstantInfo& constant);

/// Unlocks default values of optional parameters.
void release_defaults(Signature& signature);

}  // namespace krz
