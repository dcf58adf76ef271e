// Values of every type in one line of bounded length.
#include "language/shown_value.h"

#include <algorithm>

#include "language/ast.h"
#include "language/script_class.h"
#include "language/source.h"
#include "language/types.h"
#include "object/convert.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/invoke.h"

namespace krz {
namespace {

constexpr size_t kMostElements = 20;        // of one dimension or Dictionary
constexpr size_t kMostElementsInAll = 200;  // with those of what is inside
constexpr size_t kMostProperties = 60;
constexpr size_t kLongestString = 2000;  // in characters
constexpr size_t kLongestPart = 60;      // of a string inside something else
constexpr int kDeepest = 3;

bool is_plain(const Type& type) {
  return type.kind == Kind::kBoolean || type.is_number() || type.kind == Kind::kColor ||
         type.kind == Kind::kString;
}

/// In quotes, as the language writes it. Control characters appear as pictures of them, so that no
/// text takes hold of a terminal.
std::string quoted(std::string_view text, size_t limit) {
  std::string result = "\"";
  for (const char c : shown_text(text, limit)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F) {
      result += "\xE2\x90";
      result += static_cast<char>(byte == 0x7F ? 0xA1 : 0x80 + byte);
    } else {
      result += c;
      if (c == '"') result += c;
    }
  }
  return result + '"';
}

class Showing {
 public:
  explicit Showing(const NameTable& names) : names_(names) {}

  std::string value(const Type& type, const Slot& slot, int depth) {
    switch (type.kind) {
      case Kind::kString:
        return quoted(string_utf8(slot.string), depth == 0 ? kLongestString : kLongestPart);
      case Kind::kNil:
        return "Nil";
      case Kind::kObject:
      case Kind::kArray:
      case Kind::kVariant:
        return slot.object != nullptr ? object(slot.object, depth) : "Nil";
      default:
        return value_text(type, slot);
    }
  }

 private:
  std::string object(REALobject object, int depth) {
    if (const VariantObject* variant = as_variant(object))
      return value(variant->value_type, variant->value, depth);
    if (const ArrayObject* array = as_array(object)) {
      if (array->elements.empty()) return "[]";
      if (depth >= kDeepest) return "[…]";
      size_t next = 0;
      return elements(*array, 0, next, array->elements.size(), depth);
    }
    if (object->class_info == nullptr) return "Object";
    const std::string& name = object->class_info->name();
    if (depth >= (name == "Dictionary" ? kDeepest : 1)) return name;
    if (name == "Dictionary") return dictionary(object, depth);
    std::string parts = properties(object);
    return parts.empty() ? name : name + "(" + parts + ")";
  }

  /// The elements of one dimension, `span` of them in all below it; `next` is the first.
  std::string elements(const ArrayObject& array, size_t dimension, size_t& next, size_t span,
                       int depth) {
    const auto count = static_cast<size_t>(array.upper_bounds[dimension]) + 1;
    const bool last = dimension + 1 == array.upper_bounds.size();
    const size_t end = next + span;
    std::string result = "[";
    for (size_t i = 0; i < count; ++i) {
      if (i > 0) result += ", ";
      if (i == kMostElements || elements_left_ == 0) {
        result += "… " + std::to_string(count - i) + " more";
        break;
      }
      if (last) {
        --elements_left_;
        result += value(array.element_type, array.elements[next++], depth + 1);
      } else {
        result += elements(array, dimension + 1, next, span / count, depth);
      }
    }
    next = end;
    return result + "]";
  }

  /// Keys and values, asked for as a script would.
  std::string dictionary(REALobject object, int depth) {
    const auto list = [object](std::string_view method) -> ArrayObject* {
      const auto found = object->class_info->find_methods(method);
      if (found.empty() || !found[0]->signature.parameters.empty()) return nullptr;
      Slot result;
      call_method(*found[0], object, nullptr, &result);
      return as_array(result.object);
    };
    ArrayObject* const keys = list("Keys");
    ArrayObject* const values = list("Values");
    std::string result = "Dictionary(";
    if (keys != nullptr && values != nullptr) {
      const size_t count = std::min(keys->elements.size(), values->elements.size());
      for (size_t i = 0; i < count; ++i) {
        if (i > 0) result += ", ";
        if (i == kMostElements || elements_left_ == 0) {
          result += "… " + std::to_string(count - i) + " more";
          break;
        }
        --elements_left_;
        result += value(keys->element_type, keys->elements[i], depth + 1) + ": " +
                  value(values->element_type, values->elements[i], depth + 1);
      }
    }
    unlock_object(keys);
    unlock_object(values);
    return result + ")";
  }

  /// "Name: value" of what can be read without arguments and is no object.
  std::string properties(REALobject object) {
    std::string result;
    size_t count = 0;
    const auto add = [&](std::string_view name, const Type& type, const Slot& slot) {
      if (count == kMostProperties) result += ", …";
      if (++count > kMostProperties) return;
      if (!result.empty()) result += ", ";
      result += std::string(name) + ": " + value(type, slot, 1);
    };
    const ClassInfo* info = object->class_info;
    for (; as_script_class(info) != nullptr; info = info->superclass()) {
      const ClassDecl& declaration = *as_script_class(info)->declaration;
      for (const ClassField* field = declaration.fields; field != nullptr; field = field->next) {
        const Variable* variable = field->declaration->variable;
        if (!field->shared && variable != nullptr)
          add(names_.text(variable->name), variable->type, field_of(object, variable->reg));
      }
    }
    if (info == nullptr) return result;
    for (const std::string& name : info->member_names()) {
      Slot slot;
      if (const PropertyInfo* property = info->find_property(name)) {
        if (!is_plain(property->type)) continue;
        get_property(*property, object, &slot);
        add_read(add, name, property->type, slot);
        continue;
      }
      const auto methods = info->find_methods(name);
      if (methods.size() != 1) continue;
      const Signature& signature = methods[0]->signature;
      if (!signature.reads_like_property || !is_plain(signature.result)) continue;
      call_method(*methods[0], object, nullptr, &slot);
      add_read(add, name, signature.result, slot);
    }
    return result;
  }

  /// A value that a getter has handed over. What cannot be read now is left out.
  template <class Add>
  static void add_read(const Add& add, std::string_view name, const Type& type, const Slot& slot) {
    const REALobject exception = take_pending_exception();
    if (exception == nullptr) add(name, type, slot);
    unlock_object(exception);
    unlock_slot(type, slot);
  }

  const NameTable& names_;
  size_t elements_left_ = kMostElementsInAll;
};

}  // namespace

std::string shown_value(const Type& type, const Slot& value, const NameTable& names) {
  return Showing(names).value(type, value, 0);
}

}  // namespace krz
