#include "value.h"

#include <span>
#include <utility>

#include "language/names.h"
#include "object/convert.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/invoke.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz {

/// What copies of a value share. A failure has an error and no type.
struct Value::Held {
  Held(const Type& held_type, const Slot& held_slot) : type(held_type), slot(held_slot) {}
  explicit Held(std::string why) : error(std::move(why)) {}
  ~Held() { unlock_slot(type, slot); }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

  Type type;
  Slot slot;  // owns a lock on a reference
  std::string error;
};

/// The ways between values and slots.
struct ValueAccess {
  static Value failure(std::string error) {
    return Value(std::make_shared<const Value::Held>(std::move(error)));
  }

  /// Takes over the slot's lock. What a variant carries comes out of it.
  static Value adopt(Type type, Slot slot) {
    if (type.kind == Kind::kVariant && slot.object) {
      const REALobject outside = slot.object;
      const VariantObject* const variant = as_variant(outside);
      if (!variant) return {};
      type = variant->value_type;
      slot = variant->value;
      lock_slot(type, slot);
      unlock_object(outside);
    }
    const bool nothing = type.kind == Kind::kVoid || type.kind == Kind::kNil ||
                         (type.kind > Kind::kString && !slot.object);
    return nothing ? Value() : Value(std::make_shared<const Value::Held>(type, slot));
  }

  static Type type(const Value& value) {
    return value.held_ ? value.held_->type : Type{Kind::kNil};
  }
  static Slot slot(const Value& value) { return value.held_ ? value.held_->slot : Slot(); }

  static REALobject object(const Value& value) {
    return type(value).kind == Kind::kObject ? value.held_->slot.object : nullptr;
  }

  /// The value as another type with a lock of its own. False when there is no such value.
  static bool convert(const Value& value, const Type& type, Slot* result) {
    return value.ok() && convert_value(ValueAccess::type(value), slot(value), type, result);
  }
};

namespace {

const Value* first_failure(std::span<const Value> values) {
  for (const Value& value : values) {
    if (!value.ok()) return &value;
  }
  return nullptr;
}

/// How far an argument is from a parameter; overloads are chosen by the sum.
int distance(const Value& argument, const Type& parameter) {
  const Type type = ValueAccess::type(argument);
  if (type.kind == parameter.kind) return 0;
  if (type.is_number() && parameter.is_number()) return type.kind < parameter.kind ? 1 : 2;
  return parameter.kind == Kind::kVariant ? 3 : 4;
}

bool fits(const Value& argument, const Type& parameter) {
  Slot slot;
  if (!ValueAccess::convert(argument, parameter, &slot)) return false;
  unlock_slot(parameter, slot);
  return true;
}

/// The overload that takes the arguments best; null when none takes them.
const MethodInfo* choose(std::span<const MethodInfo* const> methods,
                         std::span<const Value> arguments) {
  const MethodInfo* best = nullptr;
  int best_distance = 0;
  for (const MethodInfo* method : methods) {
    const auto& parameters = method->signature.parameters;
    bool possible = arguments.size() <= parameters.size() &&
                    arguments.size() >= method->signature.required_count();
    int sum = 0;
    for (size_t i = 0; possible && i < arguments.size(); ++i) {
      possible = fits(arguments[i], parameters[i].type);
      sum += distance(arguments[i], parameters[i].type);
    }
    if (possible && (!best || sum < best_distance)) {
      best = method;
      best_distance = sum;
    }
  }
  return best;
}

/// What the last call raised, as a failure; Nil when it raised nothing.
Value take_raised() {
  const REALobject exception = take_pending_exception();
  if (!exception) return {};
  std::string text = exception->class_info->name() + ": " + exception_message(exception);
  unlock_object(exception);
  return ValueAccess::failure(std::move(text));
}

/// Calls with arguments that choose() has found to fit.
Value invoke(const MethodInfo& method, REALobject receiver, std::span<Value> arguments) {
  const auto& parameters = method.signature.parameters;
  std::vector<Slot> values(parameters.size());
  std::vector<Slot> slots(parameters.size());
  for (size_t i = 0; i < parameters.size(); ++i) {
    if (i < arguments.size()) {
      ValueAccess::convert(arguments[i], parameters[i].type, &values[i]);
    } else {
      values[i] = parameters[i].default_value;
      lock_slot(parameters[i].type, values[i]);
    }
    slots[i] = values[i];
    if (parameters[i].by_ref) slots[i].object = reinterpret_cast<REALobject>(&values[i]);
  }
  Slot result;
  call_method(method, receiver, slots.data(), &result);
  for (size_t i = 0; i < parameters.size(); ++i) {
    if (parameters[i].by_ref && i < arguments.size()) {
      arguments[i] = ValueAccess::adopt(parameters[i].type, values[i]);
    } else {
      unlock_slot(parameters[i].type, values[i]);
    }
  }
  Value raised = take_raised();
  return raised.ok() ? ValueAccess::adopt(method.signature.result, result) : raised;
}

Value call_best(std::span<const MethodInfo* const> methods, REALobject receiver,
                std::string_view name, std::span<Value> arguments) {
  if (const Value* failed = first_failure(arguments)) return *failed;
  if (const MethodInfo* method = choose(methods, arguments)) {
    return invoke(*method, receiver, arguments);
  }
  std::string message = std::string(name) + " does not take these arguments; it is declared";
  for (const MethodInfo* method : methods) {
    message +=
        (method == methods.front() ? " \"" : ", \"") + std::string(method->declaration) + "\"";
  }
  return ValueAccess::failure(std::move(message));
}

Value no_member(const ClassInfo& class_info, std::string_view name) {
  const std::vector<std::string> names = class_info.member_names();
  const std::string_view nearest = nearest_name(name, {names.begin(), names.end()});
  return ValueAccess::failure(
      class_info.name() + " has no member " + std::string(name) +
      (nearest.empty() ? std::string() : "; did you mean " + std::string(nearest) + "?"));
}

/// The failure of asking something of a value that is no object.
Value no_object(const Value& value, std::string_view name) {
  if (!value.ok()) return value;
  return ValueAccess::failure(std::string(name) + " is asked of a value of type " +
                              value.type_name() + ", which is no object");
}

Value unknown(Registry& registry, std::string_view name) {
  const std::vector<std::string> names = registry.names();
  const std::string_view nearest = nearest_name(name, {names.begin(), names.end()});
  return ValueAccess::failure(
      "there is nothing named " + std::string(name) +
      (nearest.empty() ? std::string() : "; did you mean " + std::string(nearest) + "?"));
}

/// "Class.Member": a shared method or a constant.
Value call_shared(Registry& registry, std::string_view name, std::span<Value> arguments) {
  const size_t dot = name.find('.');
  const std::string_view member = name.substr(dot + 1);
  const ClassInfo* const class_info = registry.find_class(name.substr(0, dot));
  if (!class_info) return unknown(registry, name.substr(0, dot));
  if (const auto methods = class_info->find_shared_methods(member); !methods.empty()) {
    return call_best(methods, nullptr, name, arguments);
  }
  const ConstantInfo* const constant = class_info->find_constant(member);
  if (!constant) return no_member(*class_info, member);
  lock_slot(constant->type, constant->value);
  return ValueAccess::adopt(constant->type, constant->value);
}

Value call_named(Runtime& runtime, std::string_view name, std::span<Value> arguments) {
  Registry& registry = runtime.registry();
  if (name.find('.') != std::string_view::npos) return call_shared(registry, name, arguments);
  const auto functions = registry.find_functions(name);
  return functions.empty() ? unknown(registry, name)
                           : call_best(functions, nullptr, name, arguments);
}

const char* kind_name(Kind kind) {
  switch (kind) {
    case Kind::kVoid:
      return "";
    case Kind::kNil:
      return "Nil";
    case Kind::kBoolean:
      return "Boolean";
    case Kind::kInteger:
      return "Integer";
    case Kind::kInt64:
      return "Int64";
    case Kind::kSingle:
      return "Single";
    case Kind::kDouble:
      return "Double";
    case Kind::kColor:
      return "Color";
    case Kind::kString:
      return "String";
    case Kind::kVariant:
      return "Variant";
    case Kind::kObject:
    case Kind::kArray:
      return "Object";
  }
  return "";
}

Slot convert_or_zero(const Value& value, Kind kind) {
  Slot slot;
  ValueAccess::convert(value, {kind}, &slot);
  return slot;
}

const ArrayObject* list_of(const Value& value) {
  const Type type = ValueAccess::type(value);
  return type.kind == Kind::kArray && type.rank == 1 ? as_array(ValueAccess::slot(value).object)
                                                     : nullptr;
}

template <class Number>
Slot slot_of(Number Slot::*member, Number value) {
  Slot slot;
  slot.*member = value;
  return slot;
}

}  // namespace

Value::Value(bool value)
    : Value(ValueAccess::adopt({Kind::kBoolean}, slot_of<uint8_t>(&Slot::boolean, value))) {}
Value::Value(int32_t value)
    : Value(ValueAccess::adopt({Kind::kInteger}, slot_of(&Slot::integer, value))) {}
Value::Value(int64_t value)
    : Value(ValueAccess::adopt({Kind::kInt64}, slot_of(&Slot::int64, value))) {}
Value::Value(double value)
    : Value(ValueAccess::adopt({Kind::kDouble}, slot_of(&Slot::real, value))) {}
Value::Value(std::string_view utf8)
    : Value(ValueAccess::adopt({Kind::kString}, slot_of(&Slot::string, make_string(utf8)))) {}

bool Value::ok() const { return !held_ || held_->type.kind != Kind::kVoid; }

std::string Value::error() const { return held_ ? held_->error : std::string(); }

bool Value::is_nil() const { return !held_; }

std::string Value::type_name() const {
  const Type type = ValueAccess::type(*this);
  if (const REALobject object = ValueAccess::object(*this)) return object->class_info->name();
  if (type.kind != Kind::kArray) return kind_name(type.kind);
  return (type.class_info ? type.class_info->name() : kind_name(type.element)) + std::string("(") +
         std::string(type.rank - 1U, ',') + ")";
}

bool Value::boolean() const { return convert_or_zero(*this, Kind::kBoolean).boolean != 0; }
int32_t Value::integer() const { return convert_or_zero(*this, Kind::kInteger).integer; }
int64_t Value::int64() const { return convert_or_zero(*this, Kind::kInt64).int64; }
double Value::real() const { return convert_or_zero(*this, Kind::kDouble).real; }
std::string Value::text() const { return held_ ? value_text(held_->type, held_->slot) : ""; }

Value Value::call(std::string_view method, std::initializer_list<Value> arguments) const {
  std::vector<Value> values(arguments);
  return call(method, values);
}

Value Value::call(std::string_view method, std::vector<Value>& arguments) const {
  const REALobject object = ValueAccess::object(*this);
  if (!object) return no_object(*this, method);
  const auto methods = object->class_info->find_methods(method);
  if (methods.empty()) return no_member(*object->class_info, method);
  return call_best(methods, object, method, arguments);
}

Value Value::get(std::string_view property) const {
  const REALobject object = ValueAccess::object(*this);
  if (!object) return no_object(*this, property);
  const PropertyInfo* const found = object->class_info->find_property(property);
  if (!found) return call(property);
  Slot result;
  get_property(*found, object, &result);
  Value raised = take_raised();
  return raised.ok() ? ValueAccess::adopt(found->type, result) : raised;
}

Value Value::set(std::string_view property, const Value& value) const {
  const REALobject object = ValueAccess::object(*this);
  if (!object) return no_object(*this, property);
  if (!value.ok()) return value;
  const ClassInfo& class_info = *object->class_info;
  const PropertyInfo* const found = class_info.find_property(property);
  const MethodInfo* method = nullptr;
  const auto methods = class_info.find_methods(property);
  for (const MethodInfo* one : methods) {
    if (one->setter && one->signature.parameters.empty()) method = one;
  }
  if (!found && methods.empty()) return no_member(class_info, property);
  const std::string name = class_info.name() + "." + std::string(property);
  if (found ? found->read_only() : !method) return ValueAccess::failure(name + " is read only");
  const Type type = found ? found->type : method->signature.result;
  Slot slot;
  if (!ValueAccess::convert(value, type, &slot)) {
    return ValueAccess::failure(name + " does not take a value of type " + value.type_name());
  }
  if (found) {
    set_property(*found, object, slot);
  } else {
    call_setter(*method, object, slot);
  }
  unlock_slot(type, slot);
  return take_raised();
}

size_t Value::size() const {
  const ArrayObject* const list = list_of(*this);
  return list ? list->elements.size() : 0;
}

Value Value::at(size_t index) const {
  if (!ok()) return *this;
  const ArrayObject* const list = list_of(*this);
  if (!list) {
    return ValueAccess::failure("an element is asked of a value of type " + type_name() +
                                ", which is no array of one dimension");
  }
  if (index >= list->elements.size()) {
    return ValueAccess::failure("there is no element " + std::to_string(index) +
                                "; the array has " + std::to_string(list->elements.size()));
  }
  lock_slot(list->element_type, list->elements[index]);
  return ValueAccess::adopt(list->element_type, list->elements[index]);
}

Value call(Runtime& runtime, std::string_view name, std::initializer_list<Value> arguments) {
  std::vector<Value> values(arguments);
  return call_named(runtime, name, values);
}

Value call(Runtime& runtime, std::string_view name, std::vector<Value>& arguments) {
  return call_named(runtime, name, arguments);
}

Value create(Runtime& runtime, std::string_view class_name,
             std::initializer_list<Value> arguments) {
  const ClassInfo* const class_info = runtime.registry().find_class(class_name);
  if (!class_info) return unknown(runtime.registry(), class_name);
  const REALobject object = new_instance(*class_info);
  Value made = ValueAccess::adopt({Kind::kObject, Kind::kVoid, 0, class_info}, [&] {
    Slot slot;
    slot.object = object;
    return slot;
  }());
  if (Value raised = take_raised(); !raised.ok()) return raised;
  if (!object) return ValueAccess::failure("no memory for a " + class_info->name());
  const bool constructs = !class_info->find_methods("Constructor").empty();
  if (!constructs && arguments.size() == 0) return made;
  Value constructed = made.call("Constructor", arguments);
  return constructed.ok() ? made : constructed;
}

}  // namespace krz
