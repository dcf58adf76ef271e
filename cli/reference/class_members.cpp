#include "reference/class_members.h"

#include <span>

#include "registry/names.h"

namespace cli {

namespace {

template <class Entry>
std::span<const Entry> table(const Entry* entries, int32_t count) {
  return {entries, static_cast<size_t>(count > 0 ? count : 0)};
}

void add(MemberKind& kind, std::string declaration, bool is_assignable) {
  std::string name(krz::declared_name(declaration));
  kind.members.push_back({std::move(name), std::move(declaration), is_assignable});
}

void add_members(const REALclassDefinition& definition, std::array<MemberKind, 4>& kinds) {
  for (const PropertyEntry& entry : table(definition.properties, definition.property_count)) {
    add(kinds[0], std::string(entry.name) + " as " + entry.type, entry.setter != nullptr);
  }
  for (const MethodEntry& entry : table(definition.methods, definition.method_count)) {
    add(kinds[1], entry.declaration, entry.setter != nullptr);
  }
  for (const MethodEntry& entry :
       table(definition.shared_methods, definition.shared_method_count)) {
    add(kinds[2], entry.declaration, entry.setter != nullptr);
  }
  for (const ConstantEntry& entry : table(definition.constants, definition.constant_count)) {
    add(kinds[3], entry.declaration, false);
  }
}

}  // namespace

std::array<MemberKind, 4> members_of(const krz::ClassInfo& class_info) {
  std::array<MemberKind, 4> kinds{{{"Properties", "properties", {}},
                                   {"Methods", "methods", {}},
                                   {"Shared methods", "sharedMethods", {}},
                                   {"Constants", "constants", {}}}};
  add_members(*class_info.definition(), kinds);
  for (const REALclassDefinition* extension : class_info.extensions()) {
    add_members(*extension, kinds);
  }
  return kinds;
}

std::string superclass_name(const krz::ClassInfo& class_info) {
  return class_info.superclass() ? class_info.superclass()->name() : "";
}

}  // namespace cli
