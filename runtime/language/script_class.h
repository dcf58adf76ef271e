// A class that a script declares: what the checker finds out about it, and what its instances need
// when they run and die.
//
// An instance is laid out like that of any registered class. The part of the first class of the
// script in its chain begins with the links of the list of living instances; each property is one
// slot behind them, or behind the superclass's part.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "object/object.h"
#include "registry/class_info.h"

namespace krz {

struct ClassDecl;

/// At the start of the part of an instance that belongs to classes of the script.
struct InstanceLinks {
  REALobject previous = nullptr;
  REALobject next = nullptr;
  uint64_t destroyed = 0;  // its Destructor has run, or is running
};

/// Runs the Destructors of an instance and lets go of its properties (machine_instances.cpp).
bool finalize_script_instance(REALobject object);

class ScriptClass final : public ClassInfo {
 public:
  ScriptClass(Registry& registry, std::string name, ClassDecl* source)
      : ClassInfo(registry, std::move(name)), declaration(source) {
    finalizer_ = &finalize_script_instance;
  }
  ~ScriptClass() = default;

  /// Settles where the properties lie. False when an instance would be too large. `superclass` may
  /// be null; it is complete.
  bool lay_out(const ClassInfo* superclass, size_t fields);

  /// The slot of the n-th property of its own, counted from the start of the instance.
  uint16_t slot_of(size_t field) const { return static_cast<uint16_t>(first_slot_ + field); }

  InstanceLinks& links(REALobject object) const {
    return *reinterpret_cast<InstanceLinks*>(reinterpret_cast<char*>(object) + links_offset_);
  }

  ClassDecl* declaration;  // of use only while the script is compiled
  const ScriptClass* script_superclass = nullptr;
  std::vector<uint16_t> methods;       // routines, by method number
  std::vector<uint16_t> string_slots;  // properties that hold references, inherited ones too
  std::vector<uint16_t> object_slots;
  uint16_t initialiser = 0;  // routines; 0 is none
  uint16_t destructor = 0;

 private:
  REALclassDefinition own_definition_;
  int32_t links_offset_ = 0;
  size_t first_slot_ = 0;
};

using ScriptClassList = std::vector<std::unique_ptr<ScriptClass>>;

/// The script class that a class is, null when it is a registered one.
inline ScriptClass* as_script_class(const ClassInfo* info) {
  if (info == nullptr || info->finalizer() == nullptr) return nullptr;
  return static_cast<ScriptClass*>(const_cast<ClassInfo*>(info));
}

inline Slot& field_of(REALobject object, uint16_t slot) {
  return reinterpret_cast<Slot*>(object)[slot];
}

}  // namespace krz
