#include "registry/invoke.h"

#include <algorithm>
#include <cstring>

#include "object/exceptions.h"
#include "object/object.h"
#include "registry/call_plan.h"

namespace krz {

namespace {

constexpr size_t kMaxArguments =
    66;  // a receiver, the most parameters a declaration may have, a value

ffi_type* ffi_type_of(const Type& type) {
  switch (type.kind) {
    case Kind::kVoid:
      return &ffi_type_void;
    case Kind::kBoolean:
      return &ffi_type_uint8;
    case Kind::kInteger:
      return &ffi_type_sint32;
    case Kind::kInt64:
      return &ffi_type_sint64;
    case Kind::kSingle:
      return &ffi_type_float;
    case Kind::kDouble:
      return &ffi_type_double;
    case Kind::kColor:
      return &ffi_type_uint32;
    default:
      return &ffi_type_pointer;
  }
}

// On these machines the first arguments that are no floating-point numbers travel in registers of
// their own, each as one word whatever its type, and a callee does not see words that it did not
// ask for.
constexpr size_t kMaxWords = 6;
#if defined(__x86_64__) || defined(__aarch64__)
constexpr bool kPassesWords = true;
#else
constexpr bool kPassesWords = false;
#endif

bool is_word(const Type& type) { return type.kind != Kind::kSingle && type.kind != Kind::kDouble; }

const CallPlan& plan_of(const MethodInfo& method) {
  if (method.plan) return *method.plan;
  auto* plan = new CallPlan;
  method.plan = plan;
  const auto& parameters = method.signature.parameters;
  const bool words =
      kPassesWords && std::all_of(parameters.begin(), parameters.end(), [](const Parameter& one) {
        return one.by_ref || is_word(one.type);
      });
  const size_t arguments = parameters.size() + (method.shared ? 0 : 1);
  plan->calls_words = words && arguments <= kMaxWords;
  plan->sets_words = words && is_word(method.signature.result) && arguments < kMaxWords;
  if (plan->calls_words && (plan->sets_words || !method.setter)) return *plan;

  auto& types = plan->argument_types;
  if (!method.shared) types.push_back(&ffi_type_pointer);
  for (const Parameter& parameter : method.signature.parameters) {
    types.push_back(parameter.by_ref ? &ffi_type_pointer : ffi_type_of(parameter.type));
  }
  const auto count = static_cast<unsigned>(types.size());
  ffi_type* const result = ffi_type_of(method.signature.result);
  types.push_back(result);
  ffi_prep_cif(&plan->call, FFI_DEFAULT_ABI, count, result, types.data());
  if (method.setter) {
    ffi_prep_cif(&plan->set, FFI_DEFAULT_ABI, count + 1, &ffi_type_void, types.data());
  }
  return *plan;
}

// A result as the language keeps it: nothing beside the value's own bytes, and a boolean is 0 or 1.
Slot cut(Kind kind, uint64_t bits) {
  Slot slot;
  switch (kind) {
    case Kind::kBoolean:
      slot.boolean = (bits & 0xFF) != 0;
      break;
    case Kind::kInteger:
    case Kind::kSingle:
    case Kind::kColor:
      slot.color = static_cast<uint32_t>(bits);
      break;
    default:
      slot.bits = bits;
  }
  return slot;
}

// Hands a result on, or drops it when the callee raised.
void deliver(const Type& type, const Slot& value, Slot* result) {
  if (!exception_pending()) {
    *result = value;
    return;
  }
  unlock_slot(type, value);
  *result = {};
}

template <class Value, class... Arguments>
Value call(REALfunction function, Arguments... arguments) {
  return reinterpret_cast<Value (*)(Arguments...)>(function)(arguments...);
}

// Getters and methods without parameters are most of what scripts call, and need no prepared
// interface.
template <class... Arguments>
Slot call_simple(REALfunction function, Kind result, Arguments... arguments) {
  Slot slot;
  switch (result) {
    case Kind::kVoid:
      call<void>(function, arguments...);
      break;
    case Kind::kBoolean:
      slot.boolean = call<uint8_t>(function, arguments...) != 0;
      break;
    case Kind::kInteger:
      slot.integer = call<int32_t>(function, arguments...);
      break;
    case Kind::kInt64:
      slot.int64 = call<int64_t>(function, arguments...);
      break;
    case Kind::kSingle:
      slot.single = call<float>(function, arguments...);
      break;
    case Kind::kDouble:
      slot.real = call<double>(function, arguments...);
      break;
    case Kind::kColor:
      slot.color = call<uint32_t>(function, arguments...);
      break;
    default:
      slot.object = call<REALobject>(function, arguments...);
  }
  return slot;
}

// Fills the words of the receiver and the arguments; returns their number.
size_t collect_words(const MethodInfo& method, REALobject receiver, const Slot* arguments,
                     uint64_t* words) {
  size_t count = 0;
  if (!method.shared) words[count++] = reinterpret_cast<uintptr_t>(receiver);
  const auto& parameters = method.signature.parameters;
  for (size_t i = 0; i < parameters.size(); ++i) {
    const Kind kind = parameters[i].by_ref ? Kind::kObject : parameters[i].type.kind;
    words[count++] = cut(kind, arguments[i].bits).bits;
  }
  return count;
}

Slot call_words(REALfunction function, Kind result, const uint64_t* words, size_t count) {
  switch (count) {
    case 1:
      return call_simple(function, result, words[0]);
    case 2:
      return call_simple(function, result, words[0], words[1]);
    case 3:
      return call_simple(function, result, words[0], words[1], words[2]);
    default:
      return call_simple(function, result, words[0], words[1], words[2], words[3], words[4],
                         words[5]);
  }
}

// Fills the addresses of the receiver and the arguments; returns their number.
size_t collect(const MethodInfo& method, const REALobject& receiver, const Slot* arguments,
               void** addresses) {
  size_t count = 0;
  if (!method.shared) addresses[count++] = const_cast<REALobject*>(&receiver);
  for (size_t i = 0; i < method.signature.parameters.size(); ++i) {
    addresses[count++] = const_cast<Slot*>(&arguments[i]);
  }
  return count;
}

void* field(const PropertyInfo& property, REALobject receiver) {
  return reinterpret_cast<char*>(receiver) + property.owner->data_offset() + property.entry->param;
}

}  // namespace

void call_method(const MethodInfo& method, REALobject receiver, const Slot* arguments,
                 Slot* result) {
  const Type& type = method.signature.result;
  method.was_called = true;
  Slot value;
  if (method.signature.parameters.empty()) {
    value = method.shared ? call_simple(method.function, type.kind)
                          : call_simple(method.function, type.kind, receiver);
  } else if (const CallPlan& plan = plan_of(method); plan.calls_words) {
    uint64_t words[kMaxWords] = {};
    const size_t count = collect_words(method, receiver, arguments, words);
    value = call_words(method.function, type.kind, words, count);
  } else {
    void* addresses[kMaxArguments];
    collect(method, receiver, arguments, addresses);
    ffi_arg returned = 0;
    ffi_call(const_cast<ffi_cif*>(&plan.call), method.function, &returned, addresses);
    value = cut(type.kind, returned);
  }
  if (type.kind != Kind::kVoid) deliver(type, value, result);
}

void call_setter(const MethodInfo& method, REALobject receiver, const Slot* arguments,
                 const Slot& value) {
  method.was_assigned = true;
  const CallPlan& plan = plan_of(method);
  if (plan.sets_words) {
    uint64_t words[kMaxWords] = {};
    const size_t count = collect_words(method, receiver, arguments, words);
    words[count] = cut(method.signature.result.kind, value.bits).bits;
    call_words(method.setter, Kind::kVoid, words, count + 1);
    return;
  }
  void* addresses[kMaxArguments];
  const size_t count = collect(method, receiver, arguments, addresses);
  addresses[count] = const_cast<Slot*>(&value);
  ffi_arg returned = 0;
  ffi_call(const_cast<ffi_cif*>(&plan.set), method.setter, &returned, addresses);
}

void get_property(const PropertyInfo& property, REALobject receiver, Slot* result) {
  property.was_read = true;
  if (property.direct()) {
    uint64_t bits = 0;
    std::memcpy(&bits, field(property, receiver), value_width(property.type.kind));
    *result = cut(property.type.kind, bits);
    lock_slot(property.type, *result);
    return;
  }
  const Slot value =
      call_simple(property.entry->getter, property.type.kind, receiver, property.entry->param);
  deliver(property.type, value, result);
}

void set_property(const PropertyInfo& property, REALobject receiver, const Slot& value) {
  const REALfunction setter = property.entry->setter;
  const intptr_t param = property.entry->param;
  if (property.direct()) {
    void* const place = field(property, receiver);
    Slot old;
    std::memcpy(&old, place, value_width(property.type.kind));
    lock_slot(property.type, value);
    std::memcpy(place, &value, value_width(property.type.kind));
    unlock_slot(property.type, old);
    return;
  }
  switch (property.type.kind) {
    case Kind::kBoolean:
      return call<void>(setter, receiver, param, value.boolean);
    case Kind::kInteger:
      return call<void>(setter, receiver, param, value.integer);
    case Kind::kInt64:
      return call<void>(setter, receiver, param, value.int64);
    case Kind::kSingle:
      return call<void>(setter, receiver, param, value.single);
    case Kind::kDouble:
      return call<void>(setter, receiver, param, value.real);
    case Kind::kColor:
      return call<void>(setter, receiver, param, value.color);
    default:
      call<void>(setter, receiver, param, value.object);
  }
}

}  // namespace krz
