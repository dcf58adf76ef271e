// The members of a registered class, as declaration texts.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "registry/class_info.h"

namespace cli {

struct DeclaredMember {
  std::string name;
  std::string declaration;  // exactly as registered
  bool is_assignable;       // a method that may be assigned to, or a property that may
};

/// Members of one kind, in table order; those of the class's extensions behind its own.
struct MemberKind {
  const char* title;     // "Shared methods"
  const char* json_key;  // "sharedMethods"
  std::vector<DeclaredMember> members;
};

/// Properties, methods, shared methods, constants. Inherited members are not among them.
std::array<MemberKind, 4> members_of(const krz::ClassInfo& class_info);

/// Empty for a class that inherits from no other.
std::string superclass_name(const krz::ClassInfo& class_info);

}  // namespace cli
