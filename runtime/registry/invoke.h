// Calls from the language into declared C functions, through libffi with call interfaces prepared
// once.
//
// Ownership, for every call: arguments are borrowed; a result comes with one lock that is now the
// caller's; a byref string or object is replaced by the callee, which unlocks the old value and
// hands over the new one.
#pragma once

#include "registry/class_info.h"

namespace krz {

/// Calls `method` with arguments already converted to the declared types, all of them (defaults
/// filled in by the caller). A byref argument's slot holds in `object` the address of the
/// variable's slot. `result` is untouched for a Sub. A host exception raised by the callee is
/// pending afterwards (exceptions.h); the result is then zero.
void call_method(const MethodInfo& method, REALobject receiver, const Slot* arguments,
                 Slot* result);

/// Assigns to an assignable method: `object.Name(arguments...) = value`, where Name has the
/// declared parameters and the value its declared result type. REQUIRES: method.setter.
void call_setter(const MethodInfo& method, REALobject receiver, const Slot* arguments,
                 const Slot& value);

/// The same for a method without parameters.
inline void call_setter(const MethodInfo& method, REALobject receiver, const Slot& value) {
  call_setter(method, receiver, nullptr, value);
}

/// Reads a property; a reference comes with a lock of its own.
void get_property(const PropertyInfo& property, REALobject receiver, Slot* result);

/// Writes a property. For a direct field the value is locked and the old one unlocked. REQUIRES:
/// !property.read_only().
void set_property(const PropertyInfo& property, REALobject receiver, const Slot& value);

}  // namespace krz
