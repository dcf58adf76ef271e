// Calls library functions and methods by name, as scripts do: the overload whose parameters take
// the arguments is chosen.
#pragma once

#include "host_test.h"

namespace krz {

/// A value with its type, owned.
class TestValue {
 public:
  TestValue() = default;
  TestValue(const char* text) : type_{Kind::kString} { slot_.string = make_string(text); }
  TestValue(std::string_view bytes, uint32_t text_encoding) : type_{Kind::kString} {
    slot_.string = make_string(bytes, text_encoding);
  }
  TestValue(int number) : type_{Kind::kInteger} { slot_.integer = number; }
  TestValue(int64_t number) : type_{Kind::kInt64} { slot_.int64 = number; }
  TestValue(double number) : type_{Kind::kDouble} { slot_.real = number; }
  TestValue(bool value) : type_{Kind::kBoolean} { slot_.boolean = value; }
  TestValue(REALobject object)
      : type_{Kind::kObject, Kind::kVoid, 0, object ? object->class_info : nullptr} {
    slot_.object = object;
    lock_object(object);
  }
  TestValue(Type type, Slot slot) : type_(type), slot_(slot) {}  // takes the lock over
  TestValue(const TestValue& other) : type_(other.type_), slot_(other.slot_) {
    lock_slot(type_, slot_);
  }
  TestValue& operator=(const TestValue&) = delete;
  ~TestValue() { unlock_slot(type_, slot_); }

  const Type& type() const { return type_; }
  const Slot& slot() const { return slot_; }

  /// As scripts print it; strings in UTF-8, an array as "[a|b]".
  std::string text() const {
    const ArrayObject* const array = type_.kind == Kind::kArray ? as_array(slot_.object) : nullptr;
    if (!array) return value_text(type_, slot_);
    std::string text = "[";
    for (const Slot& element : array->elements) {
      if (text.size() > 1) text += "|";
      text += value_text(array->element_type, element);
    }
    return text + "]";
  }

 private:
  Type type_;
  Slot slot_;
};

class LibraryTest : public HostTest {
 protected:
  using Value = TestValue;

  Value call(const char* function, const std::vector<Value>& arguments) {
    return call_best(registry().find_functions(function), nullptr, function, arguments);
  }
  Value call(REALobject object, const char* method, const std::vector<Value>& arguments) {
    return call_best(object->class_info->find_methods(method), object, method, arguments);
  }
  void assign(REALobject object, const char* method, const std::vector<Value>& arguments,
              const Value& value) {
    const MethodInfo* const best = choose(object->class_info->find_methods(method), arguments);
    ASSERT_TRUE(best && best->setter) << method;
    std::vector<Slot> slots = converted(*best, arguments);
    Slot assigned;
    ASSERT_TRUE(convert_value(value.type(), value.slot(), best->signature.result, &assigned));
    call_setter(*best, object, slots.data(), assigned);
    unlock_slot(best->signature.result, assigned);
    release(*best, slots);
  }

 private:
  static int distance(const MethodInfo& method, const std::vector<Value>& arguments) {
    const auto& parameters = method.signature.parameters;
    if (arguments.size() < method.signature.required_count()) return -1;
    if (arguments.size() > parameters.size()) return -1;
    int sum = 0;
    for (size_t i = 0; i < arguments.size(); ++i) {
      const Kind wanted = parameters[i].type.kind;
      const Kind given = arguments[i].type().kind;
      if (wanted == given) continue;
      const bool both_numbers = parameters[i].type.is_number() && arguments[i].type().is_number();
      if (!both_numbers && wanted != Kind::kVariant) return -1;
      const bool narrows = both_numbers && wanted < given;
      sum += wanted == Kind::kVariant ? 10 : narrows ? 5 : 1;
    }
    return sum;
  }
  static const MethodInfo* choose(std::span<const MethodInfo* const> methods,
                                  const std::vector<Value>& arguments) {
    const MethodInfo* best = nullptr;
    int least = 1000;
    for (const MethodInfo* method : methods) {
      const int sum = distance(*method, arguments);
      if (sum >= 0 && sum < least) {
        best = method;
        least = sum;
      }
    }
    return best;
  }
  static std::vector<Slot> converted(const MethodInfo& method,
                                     const std::vector<Value>& arguments) {
    std::vector<Slot> slots;
    for (size_t i = 0; i < method.signature.parameters.size(); ++i) {
      const Parameter& parameter = method.signature.parameters[i];
      Slot slot = parameter.default_value;
      if (i < arguments.size()) {
        convert_value(arguments[i].type(), arguments[i].slot(), parameter.type, &slot);
      } else {
        lock_slot(parameter.type, slot);
      }
      slots.push_back(slot);
    }
    return slots;
  }
  static void release(const MethodInfo& method, const std::vector<Slot>& slots) {
    for (size_t i = 0; i < slots.size(); ++i) {
      unlock_slot(method.signature.parameters[i].type, slots[i]);
    }
  }
  static Value call_best(std::span<const MethodInfo* const> methods, REALobject object,
                         const char* name, const std::vector<Value>& arguments) {
    const MethodInfo* const best = choose(methods, arguments);
    if (!best) {
      ADD_FAILURE() << "nothing called " << name << " takes these arguments";
      return {};
    }
    const std::vector<Slot> slots = converted(*best, arguments);
    Slot result;
    call_method(*best, object, slots.data(), &result);
    release(*best, slots);
    return {best->signature.result, result};
  }
};

}  // namespace krz
