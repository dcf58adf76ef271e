// Host services around objects, arrays, properties, methods and exceptions.
#include "entries/entry_table.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "registry/declaration.h"
#include "registry/invoke.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz {

namespace {

const ClassInfo* class_reference(const char* name) {
  return name ? Runtime::current().registry().find_class(name) : nullptr;
}

REALobject new_instance_of(const char* name) {
  const ClassInfo* const class_info = class_reference(name);
  return class_info ? new_instance(*class_info) : nullptr;
}

void lock(REALobject object) { lock_object(object); }
void unlock(REALobject object) { unlock_object(object); }

int32_t upper_bound(REALobjectArrayStruct* object) {
  const ArrayObject* const array = as_array(reinterpret_cast<REALobject>(object));
  return array ? array->upper_bounds.front() : -1;
}

REALobject object_element(REALobjectArrayStruct* object, int32_t index) {
  const ArrayObject* const array = as_array(reinterpret_cast<REALobject>(object));
  if (!array || array->element_type.kind != Kind::kObject) return nullptr;
  if (index < 0 || static_cast<size_t>(index) >= array->elements.size()) return nullptr;
  const REALobject element = array->elements[static_cast<size_t>(index)].object;
  lock_object(element);
  return element;
}

void raise(REALobject exception) { raise_exception(exception); }

const PropertyInfo* property_of_kind(REALobject object, const char* name, Kind kind) {
  if (!object || !object->class_info || !name) return nullptr;
  const PropertyInfo* const property = object->class_info->find_property(name);
  return property && property->type.kind == kind ? property : nullptr;
}

bool integer_property(REALobject object, const char* name, int32_t* value) {
  const PropertyInfo* const property = property_of_kind(object, name, Kind::kInteger);
  if (!property || !value) return false;
  Slot slot;
  get_property(*property, object, &slot);
  *value = slot.integer;
  return true;
}

bool boolean_property(REALobject object, const char* name, uint8_t* value) {
  const PropertyInfo* const property = property_of_kind(object, name, Kind::kBoolean);
  if (!property || !value) return false;
  Slot slot;
  get_property(*property, object, &slot);
  *value = slot.boolean;
  return true;
}

bool set_string_property(REALobject object, const char* name, REALstring value) {
  const PropertyInfo* const property = property_of_kind(object, name, Kind::kString);
  if (!property || property->read_only()) return false;
  Slot slot;
  slot.string = value;
  set_property(*property, object, slot);
  return true;
}

// The function among `methods` whose parameters and result are those of a declaration. Parameter
// names do not matter.
REALfunction find_declared(std::span<const MethodInfo* const> methods, const Signature& wanted) {
  for (const MethodInfo* method : methods) {
    const Signature& have = method->signature;
    bool same = have.parameters.size() == wanted.parameters.size() && have.result == wanted.result;
    for (size_t i = 0; same && i < wanted.parameters.size(); ++i) {
      same = have.parameters[i].type == wanted.parameters[i].type &&
             have.parameters[i].by_ref == wanted.parameters[i].by_ref;
    }
    if (same) return method->function;
  }
  return nullptr;
}

REALfunction load_method(const ClassInfo* class_info, const char* declaration) {
  if (!declaration) return nullptr;
  Registry& registry = Runtime::current().registry();
  std::string name;
  Signature wanted;
  if (!parse_method(declaration, registry, name, wanted).empty()) return nullptr;
  const auto methods = class_info ? class_info->find_methods(name) : registry.find_functions(name);
  const REALfunction found = find_declared(methods, wanted);
  release_defaults(wanted);
  return found;
}

REALfunction load_object_method(REALobject object, const char* declaration) {
  return object && object->class_info ? load_method(object->class_info, declaration) : nullptr;
}

REALfunction load_global_method(void*, const char* declaration) {
  return load_method(nullptr, declaration);
}

const HostEntry kEntries[] = {
    KRZ_ENTRY("PluginNewInstance", new_instance_of),
    KRZ_ENTRY("pluginObjectType", class_reference),
    KRZ_ENTRY("REALLockObject", lock),
    KRZ_ENTRY("REALUnlockObject", unlock),
    KRZ_ENTRY("RuntimeUBound", upper_bound),
    KRZ_ENTRY("RuntimeDirectReadObjectArray", object_element),
    KRZ_ENTRY("RuntimeRaiseException", raise),
    KRZ_ENTRY("REALGetPropValueInt", integer_property),
    KRZ_ENTRY("REALGetPropValueBool", boolean_property),
    KRZ_ENTRY("REALSetPropValueString", set_string_property),
    KRZ_ENTRY("REALLoadObjectMethod", load_object_method),
    KRZ_ENTRY("REALLoadGlobalMethod", load_global_method),
};

}  // namespace

std::span<const HostEntry> object_entries() { return kEntries; }

}  // namespace krz
