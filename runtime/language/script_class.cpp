// Where the properties of a script's class lie.
#include "language/script_class.h"

namespace krz {

bool ScriptClass::lay_out(const ClassInfo* superclass, size_t fields) {
  constexpr size_t kMostSlots = 60000;
  constexpr size_t kMostFields = 10000;
  script_superclass = as_script_class(superclass);
  const bool begins = script_superclass == nullptr;
  const size_t links = begins ? sizeof(InstanceLinks) / sizeof(Slot) : 0;
  const bool fits = fields <= kMostFields;
  own_definition_.version = kPluginInterfaceVersion;
  own_definition_.data_size = static_cast<int32_t>((links + (fits ? fields : 0)) * sizeof(Slot));
  define(superclass, own_definition_);
  own_definition_.name = name().c_str();
  links_offset_ = begins ? data_offset() : script_superclass->links_offset_;
  first_slot_ = static_cast<size_t>(data_offset()) / sizeof(Slot) + links;
  return fits && first_slot_ + fields < kMostSlots;
}

}  // namespace krz
