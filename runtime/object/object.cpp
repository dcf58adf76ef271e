#include "object/object.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "object/memory_budget.h"
#include "object/string.h"
#include "registry/class_info.h"

namespace krz {

namespace {

int64_t g_live_objects = 0;

// What follows the head, told by `flags`.
enum ObjectForm : uint32_t { kInstanceForm = 0, kArrayForm = 1, kVariantForm = 2 };

constexpr int64_t kMaxArrayElements = int64_t{1} << 27;
constexpr size_t kMaxDimensions = 8;

// Long chains of objects that hold each other die in a loop, not in a recursion as deep as the
// chain.
constexpr int kMaxDestructionDepth = 100;
int g_destruction_depth = 0;

std::vector<REALobject>& waiting_for_destruction() {
  static std::vector<REALobject> waiting;
  return waiting;
}

void construct(const ClassInfo& class_info, REALobject object) {
  if (const ClassInfo* superclass = class_info.superclass()) construct(*superclass, object);
  if (const REALfunction constructor = class_info.definition()->constructor) {
    reinterpret_cast<void (*)(REALobject)>(constructor)(object);
  }
}

void destroy_instance(REALobject object) {
  if (object->class_info && object->class_info->finalizer() &&
      object->class_info->finalizer()(object)) {
    ++g_live_objects;
    return;
  }
  for (const ClassInfo* c = object->class_info; c; c = c->superclass()) {
    if (const REALfunction destructor = c->definition()->destructor) {
      reinterpret_cast<void (*)(REALobject)>(destructor)(object);
    }
  }
  memory_budget::free_block(object);
}

void destroy_now(REALobject object) {
  --g_live_objects;
  // A destructor may lock and unlock its object; that must not bring it here again.
  object->locks = 1;
  switch (object->flags) {
    case kArrayForm: {
      auto* array = static_cast<ArrayObject*>(object);
      if (array->element_type.is_reference()) {
        for (const Slot& element : array->elements) unlock_slot(array->element_type, element);
      }
      memory_budget::give_back(array->counted + sizeof *array);
      delete array;
      break;
    }
    case kVariantForm: {
      auto* variant = static_cast<VariantObject*>(object);
      unlock_slot(variant->value_type, variant->value);
      memory_budget::give_back(sizeof *variant);
      delete variant;
      break;
    }
    default:
      destroy_instance(object);
  }
}

template <class T>
T* new_counted(uint32_t form) {
  if (!memory_budget::take(sizeof(T))) return nullptr;
  T* object = new (std::nothrow) T{};
  if (!object) {
    memory_budget::give_back(sizeof(T));
    memory_budget::note_refusal();
    return nullptr;
  }
  object->locks = 1;
  object->flags = form;
  ++g_live_objects;
  return object;
}

}  // namespace

REALobject new_instance(const ClassInfo& class_info) {
  if (!class_info.is_defined()) return nullptr;
  auto* object = static_cast<REALobject>(
      memory_budget::take_block(std::calloc(1, static_cast<size_t>(class_info.instance_size()))));
  if (!object) return nullptr;
  ++g_live_objects;
  object->locks = 1;
  object->flags = kInstanceForm;
  object->class_info = &class_info;
  construct(class_info, object);
  return object;
}

void destroy_object(REALobject object) {
  if (g_destruction_depth >= kMaxDestructionDepth) {
    waiting_for_destruction().push_back(object);
    return;
  }
  ++g_destruction_depth;
  destroy_now(object);
  if (g_destruction_depth == 1) {
    auto& waiting = waiting_for_destruction();
    while (!waiting.empty()) {
      const REALobject next = waiting.back();
      waiting.pop_back();
      destroy_now(next);
    }
  }
  --g_destruction_depth;
}

int64_t live_objects() { return g_live_objects; }

void lock_slot(const Type& type, const Slot& slot) {
  if (type.kind == Kind::kString) {
    lock_string(slot.string);
  } else if (type.is_reference()) {
    lock_object(slot.object);
  }
}

void unlock_slot(const Type& type, const Slot& slot) {
  if (type.kind == Kind::kString) {
    unlock_string(slot.string);
  } else if (type.is_reference()) {
    unlock_object(slot.object);
  }
}

ArrayObject* new_array(const Type& element_type, const std::vector<int32_t>& upper_bounds) {
  if (upper_bounds.empty() || upper_bounds.size() > kMaxDimensions) return nullptr;
  int64_t count = 1;
  for (const int32_t bound : upper_bounds) {
    if (bound < -1) return nullptr;
    count *= int64_t{bound} + 1;
    if (count > kMaxArrayElements) return nullptr;
  }
  auto* array = new_counted<ArrayObject>(kArrayForm);
  if (!array) return nullptr;
  const size_t bytes = static_cast<size_t>(count) * sizeof(Slot);
  bool made = memory_budget::take(bytes);
  if (made) array->counted = bytes;
  try {
    array->element_type = element_type;
    array->upper_bounds = upper_bounds;
    if (made) array->elements.resize(static_cast<size_t>(count));
  } catch (const std::bad_alloc&) {
    memory_budget::note_refusal();
    made = false;
  }
  if (made) return array;
  unlock_object(array);
  return nullptr;
}

bool reserve_elements(ArrayObject& array, size_t count) {
  const size_t wanted = count * sizeof(Slot);
  if (wanted <= array.counted && count <= array.elements.capacity()) return true;
  const size_t room = std::max({count, array.elements.size() * 2, size_t{4}});
  const size_t bytes = room * sizeof(Slot);
  // The elements lie in both places while they move.
  if (!memory_budget::take(bytes)) return false;
  try {
    array.elements.reserve(room);
  } catch (const std::bad_alloc&) {
    memory_budget::give_back(bytes);
    memory_budget::note_refusal();
    return false;
  }
  memory_budget::give_back(array.counted);
  array.counted = bytes;
  return true;
}

ArrayObject* as_array(REALobject object) {
  return object && object->flags == kArrayForm ? static_cast<ArrayObject*>(object) : nullptr;
}

VariantObject* new_variant(const Type& type, const Slot& value) {
  auto* variant = new_counted<VariantObject>(kVariantForm);
  if (!variant) return nullptr;
  variant->value_type = type;
  variant->value = value;
  lock_slot(type, value);
  return variant;
}

VariantObject* as_variant(REALobject object) {
  return object && object->flags == kVariantForm ? static_cast<VariantObject*>(object) : nullptr;
}

}  // namespace krz
