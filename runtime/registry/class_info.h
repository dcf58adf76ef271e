// What the runtime knows about a class: its place in the tree, where its instance data lies, and
// its members, parsed from their declarations the first time somebody asks for one of that name.
#pragma once

#include <krz/abi.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"
#include "object/type.h"

namespace krz {

class Registry;

struct Parameter {
  std::string name;
  Type type;
  bool by_ref = false;
  bool optional = false;
  Slot default_value;  // optional parameters; a string here is locked by the registry
};

struct Signature {
  std::vector<Parameter> parameters;
  Type result;                       // kVoid for a Sub
  bool reads_like_property = false;  // declared without a parameter list
  size_t required_count() const;     // parameters that are not optional
};

/// A method of a class, a shared method, or a global function. Lives as long as its registry.
struct MethodInfo {
  std::string name;
  std::string_view declaration;  // exactly as registered
  Signature signature;
  REALfunction function = nullptr;
  REALfunction setter = nullptr;     // set: assignable
  const ClassInfo* owner = nullptr;  // null for a global function
  bool shared = false;               // called without a receiver
  mutable const struct CallPlan* plan =
      nullptr;                      // prepared by the first call (registry/invoke.cpp)
  mutable bool was_called = false;  // so that tests can tell which members scripts have reached
  mutable bool was_assigned = false;
};

struct PropertyInfo {
  std::string name;
  Type type;
  const PropertyEntry* entry = nullptr;
  const ClassInfo* owner = nullptr;
  mutable bool was_read = false;  // as MethodInfo::was_called
  bool direct() const { return entry->getter == kDirectField; }
  bool read_only() const { return entry->setter == nullptr; }
};

struct ConstantInfo {
  std::string name;
  Type type;
  Slot value;  // a string here is locked by the registry
};

/// What happens to an instance of a script's class before the destructors of registered classes
/// run. True when the instance lives on: somebody has locked it meanwhile, or will unlock it later.
using InstanceFinalizer = bool (*)(REALobject);

/// A class of the language. One object per name for the life of the registry: a name may be
/// mentioned in a declaration before its class is registered, and `is_defined` turns true then.
class KRZ_API ClassInfo {
 public:
  const std::string& name() const { return name_; }
  bool is_defined() const { return definition_ != nullptr; }
  const ClassInfo* superclass() const {
    return superclass_;
  }  // null for a class right below "Object"
  const REALclassDefinition* definition() const { return definition_; }
  const std::vector<REALclassDefinition*>& extensions() const { return extensions_; }
  int32_t data_offset() const { return data_offset_; }  // of this class's own data in an instance
  int32_t instance_size() const { return instance_size_; }  // bytes of a whole instance
  bool is_a(
      const ClassInfo* other) const;  // the same class or a subclass; true for null ("Object")

  /// Set for the classes of scripts alone, which no registry knows by name.
  InstanceFinalizer finalizer() const { return finalizer_; }

  /// Members by name, without regard to case, this class first and then up the chain. Overloads of
  /// one name come together, those of a class extension included. Empty or null when there is none.
  std::span<const MethodInfo* const> find_methods(std::string_view name) const;
  std::span<const MethodInfo* const> find_shared_methods(std::string_view name) const;
  const PropertyInfo* find_property(std::string_view name) const;
  const ConstantInfo* find_constant(std::string_view name) const;

  /// Names of all members, for listings and for "did you mean".
  std::vector<std::string> member_names() const;

 protected:
  ClassInfo(Registry& registry, std::string name);
  ~ClassInfo();

  /// Defines the class: its instance data lies behind that of `superclass`, which may be null.
  void define(const ClassInfo* superclass, REALclassDefinition& definition);

  InstanceFinalizer finalizer_ = nullptr;

 private:
  friend class Registry;

  struct Members;  // the parsed members, made on first use
  Members& members() const;
  template <class Visit>
  void visit_definitions(Visit visit) const;  // its own definition, then those of its extensions
  std::span<const MethodInfo* const> find_methods_of(std::string_view name, bool shared) const;

  Registry& registry_;
  std::string name_;
  const ClassInfo* superclass_ = nullptr;
  REALclassDefinition* definition_ = nullptr;
  std::vector<REALclassDefinition*> extensions_;
  int32_t data_offset_ = 0;
  int32_t instance_size_ = 0;
  mutable std::unique_ptr<Members> members_;
};

}  // namespace krz
