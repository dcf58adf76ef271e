// Host objects: counted blocks that begin with their class and hold the instance data of every
// class of their chain.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "object/type.h"

/// An object. Instance data follows at the offsets that registration wrote into the class
/// definitions.
struct alignas(16) REALobjectStruct {
  int32_t locks;
  uint32_t flags;
  const krz::ClassInfo* class_info;
};

namespace krz {

/// A new instance with zero-filled data, its constructors run superclass first, locked once for the
/// caller. Null when the class is not defined or memory is short.
REALobject new_instance(const ClassInfo& class_info);

/// Runs destructors, subclass first, and frees the block. Called at the last unlock only.
void destroy_object(REALobject object);

inline void lock_object(REALobject object) {
  if (object) ++object->locks;
}
inline void unlock_object(REALobject object) {
  if (object && --object->locks == 0) destroy_object(object);
}

/// Live objects of the process, arrays and variants included, for leak checks.
int64_t live_objects();

/// Locks or unlocks what a slot of a reference type holds; nothing for other types.
void lock_slot(const Type& type, const Slot& slot);
void unlock_slot(const Type& type, const Slot& slot);

/// A class name's array object: elements of one type in up to eight dimensions, the last varying
/// fastest. Owns a lock on each reference in it.
struct ArrayObject : REALobjectStruct {
  Type element_type;
  std::vector<int32_t> upper_bounds;  // one a dimension; -1 is empty
  std::vector<Slot> elements;
  size_t counted = 0;  // bytes of the elements that the memory budget knows
};

/// A new array of `upper_bounds.size()` dimensions, elements zero or nil, locked once. Null when
/// there are no dimensions or more than eight, a bound is below -1, there would be more than 2^27
/// elements, or memory is short.
ArrayObject* new_array(const Type& element_type, const std::vector<int32_t>& upper_bounds);

/// Makes room for so many elements in all, with some to grow. False when memory does not hold them.
[[nodiscard]] bool reserve_elements(ArrayObject& array, size_t count);

/// The array that an object is, null when it is none.
ArrayObject* as_array(REALobject object);

/// A value that carries its type. Immutable; owns a lock on a reference in it. A null variant is
/// Nil.
struct VariantObject : REALobjectStruct {
  Type value_type;
  Slot value;
};

/// A new variant with one more lock on what `value` holds, locked once.
VariantObject* new_variant(const Type& type, const Slot& value);

/// The variant that an object is, null when it is none.
VariantObject* as_variant(REALobject object);

}  // namespace krz
