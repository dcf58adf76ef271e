// The class JSONItem: documents whose members keep the order in which they were added. Values are
// copied in and out, so an item taken from another, or put into one, is its own document.
#define JSON_NO_IO 1
#include <nlohmann/json.hpp>

#include "library/parts.h"
#include "object/convert.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

using Json = nlohmann::ordered_json;

// Copying and writing go as deep as the document does.
constexpr int32_t kMaxDepth = 500;

struct ItemData {
  Json* json;
  int32_t depth;  // levels of objects and arrays, at most
};

REALclassDefinition g_class;

ItemData& data_of(REALobject item) { return data_in<ItemData>(item, g_class); }
Json& json_of(REALobject item) { return *data_of(item).json; }

void initialise(REALobject item) { data_of(item) = {new Json(Json::object()), 1}; }
void destroy(REALobject item) { delete data_of(item).json; }

bool is_item(REALobject object) {
  return object && object->class_info && object->class_info->definition() == &g_class;
}

REALobject new_item(Json json, int32_t depth) {
  const ClassInfo* const class_info = Runtime::current().registry().find_class(g_class.name);
  const REALobject item = class_info ? new_instance(*class_info) : nullptr;
  if (!item) return nullptr;
  json_of(item) = std::move(json);
  data_of(item).depth = depth;
  return item;
}

// The deepest nesting of brackets outside of strings.
int32_t nesting(std::string_view text) {
  int32_t depth = 0;
  int32_t deepest = 0;
  bool quoted = false;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (quoted && c == '\\') {
      ++i;
    } else if (c == '"') {
      quoted = !quoted;
    } else if (!quoted && (c == '[' || c == '{')) {
      deepest = std::max(deepest, ++depth);
    } else if (!quoted && (c == ']' || c == '}')) {
      --depth;
    }
    if (deepest > kMaxDepth) break;
  }
  return deepest;
}

void raise_too_deep() {
  raise_exception("JSONException",
                  "a document is nested more than " + std::to_string(kMaxDepth) + " levels deep");
}

void load(REALobject item, REALstring text) {
  const std::string bytes = string_utf8(text);
  const int32_t depth = nesting(bytes);
  if (depth > kMaxDepth) return raise_too_deep();
  try {
    json_of(item) = Json::parse(bytes);
    data_of(item).depth = depth;
  } catch (const Json::parse_error& error) {
    raise_exception("JSONException", "the text is no JSON at byte " + std::to_string(error.byte));
  } catch (const Json::exception&) {
    raise_exception("JSONException", "the text holds a number that cannot be kept");
  }
}

// A value of the language as JSON; false when it has no such form. `depth` grows by the levels
// below the value.
bool to_json(const Type& type, const Slot& value, Json& json, int32_t& depth) {
  switch (type.kind) {
    case Kind::kBoolean:
      json = value.boolean != 0;
      return true;
    case Kind::kInteger:
      json = value.integer;
      return true;
    case Kind::kInt64:
      json = value.int64;
      return true;
    // The decimal form that people see, not the binary neighbour of it.
    case Kind::kSingle:
      json = leading_number(number_text(value.single));
      return true;
    case Kind::kDouble:
      json = value.real;
      return true;
    case Kind::kString:
    case Kind::kColor:
      json = value_text(type, value);
      return true;
    case Kind::kVariant: {
      const VariantObject* const variant = as_variant(value.object);
      if (variant) return to_json(variant->value_type, variant->value, json, depth);
      break;
    }
    case Kind::kArray: {
      const ArrayObject* const array = as_array(value.object);
      if (!array) break;
      if (array->upper_bounds.size() != 1 || ++depth > kMaxDepth) return false;
      int32_t deepest = depth;
      json = Json::array();
      for (const Slot& element : array->elements) {
        int32_t reached = depth;
        Json element_json;
        if (!to_json(array->element_type, element, element_json, reached)) return false;
        json.push_back(std::move(element_json));
        deepest = std::max(deepest, reached);
      }
      depth = deepest;
      return true;
    }
    case Kind::kObject:
      if (!value.object) break;
      if (!is_item(value.object)) return false;
      json = json_of(value.object);
      depth += data_of(value.object).depth;
      return true;
    default:
      break;
  }
  json = nullptr;
  return true;
}

// The JSON of a value that is to become a member of `item`; false, with the exception raised, when
// it cannot.
bool member_json(REALobject item, REALobject variant, Json& json) {
  Slot slot;
  slot.object = variant;
  int32_t depth = 1;
  if (!to_json({Kind::kVariant}, slot, json, depth)) {
    raise_exception("TypeMismatchException", "a value of this type has no JSON form");
    return false;
  }
  if (depth > kMaxDepth) {
    raise_too_deep();
    return false;
  }
  data_of(item).depth = std::max(data_of(item).depth, depth);
  return true;
}

REALobject to_variant(const Json& json, int32_t depth) {
  Slot slot;
  switch (json.type()) {
    case Json::value_t::boolean:
      slot.boolean = json.get<bool>();
      return new_variant({Kind::kBoolean}, slot);
    case Json::value_t::number_integer:
    case Json::value_t::number_unsigned: {
      if (json.is_number_unsigned() && json.get<uint64_t>() > uint64_t{INT64_MAX}) {
        slot.real = json.get<double>();
        return new_variant({Kind::kDouble}, slot);
      }
      slot.int64 = json.get<int64_t>();
      if (slot.int64 != static_cast<int32_t>(slot.int64)) return new_variant({Kind::kInt64}, slot);
      const auto number = static_cast<int32_t>(slot.int64);
      slot = {};
      slot.integer = number;
      return new_variant({Kind::kInteger}, slot);
    }
    case Json::value_t::number_float:
      slot.real = json.get<double>();
      return new_variant({Kind::kDouble}, slot);
    case Json::value_t::string: {
      slot.string = make_string(json.get_ref<const std::string&>());
      const REALobject variant = new_variant({Kind::kString}, slot);
      unlock_string(slot.string);
      return variant;
    }
    case Json::value_t::object:
    case Json::value_t::array: {
      slot.object = new_item(json, depth);
      if (!slot.object) return nullptr;
      const REALobject variant =
          new_variant({Kind::kObject, Kind::kVoid, 0, slot.object->class_info}, slot);
      unlock_object(slot.object);
      return variant;
    }
    default:
      return nullptr;
  }
}

const Json* find_member(REALobject item, REALstring name) {
  const Json& json = json_of(item);
  const auto found = json.is_object() ? json.find(string_utf8(name)) : json.end();
  return found != json.end() ? &*found : nullptr;
}

Json* find_element(REALobject item, int32_t index) {
  Json& json = json_of(item);
  if (index >= 0 && json.is_structured() && static_cast<size_t>(index) < json.size()) {
    return &*std::next(json.begin(), index);
  }
  raise_exception("OutOfBoundsException", "index " + std::to_string(index) +
                                              " is not inside an item of " +
                                              std::to_string(json.size()) + " values");
  return nullptr;
}

REALobject get_value(REALobject item, REALstring name) {
  const Json* const member = find_member(item, name);
  if (member) return to_variant(*member, data_of(item).depth);
  raise_exception("KeyNotFoundException", "there is no value named \"" + string_utf8(name) + "\"");
  return nullptr;
}

void set_value(REALobject item, REALstring name, REALobject value) {
  Json member;
  if (json_of(item).is_array() && !json_of(item).empty()) {
    return raise_exception("TypeMismatchException", "a JSON array has no named values");
  }
  if (!member_json(item, value, member)) return;
  if (!json_of(item).is_object()) json_of(item) = Json::object();
  json_of(item)[string_utf8(name)] = std::move(member);
}

REALobject get_element(REALobject item, int32_t index) {
  const Json* const element = find_element(item, index);
  return element ? to_variant(*element, data_of(item).depth) : nullptr;
}

void set_element(REALobject item, int32_t index, REALobject value) {
  Json* const element = find_element(item, index);
  Json replacement;
  if (element && member_json(item, value, replacement)) *element = std::move(replacement);
}

void append(REALobject item, REALobject value) {
  Json element;
  if (!json_of(item).is_array() && !json_of(item).empty()) {
    return raise_exception("TypeMismatchException", "a JSON object has only named values");
  }
  if (!member_json(item, value, element)) return;
  if (!json_of(item).is_array()) json_of(item) = Json::array();
  json_of(item).push_back(std::move(element));
}

int32_t count(REALobject item) { return static_cast<int32_t>(json_of(item).size()); }
bool is_array(REALobject item) { return json_of(item).is_array(); }
bool has_name(REALobject item, REALstring name) { return find_member(item, name) != nullptr; }

REALstring name_at(REALobject item, int32_t index) {
  if (!find_element(item, index) || !json_of(item).is_object()) return nullptr;
  return make_string(std::next(json_of(item).begin(), index).key());
}

void remove(REALobject item, REALstring name) {
  if (json_of(item).is_object()) json_of(item).erase(string_utf8(name));
}

void remove_at(REALobject item, int32_t index) {
  if (find_element(item, index)) json_of(item).erase(std::next(json_of(item).begin(), index));
}

REALobject child_of(REALobject item, const Json* json) {
  return json && json->is_structured() ? new_item(*json, data_of(item).depth) : nullptr;
}
REALobject child(REALobject item, REALstring name) {
  return child_of(item, find_member(item, name));
}
REALobject child_at(REALobject item, int32_t index) {
  return child_of(item, find_element(item, index));
}

REALstring to_text(REALobject item, bool pretty) {
  constexpr int kIndentation = 2;
  return make_string(
      json_of(item).dump(pretty ? kIndentation : -1, ' ', false, Json::error_handler_t::replace));
}

MethodEntry g_methods[] = {
    KRZ_METHOD(load, "Constructor(text as string)"),
    KRZ_METHOD(load, "Load(text as string)"),
    KRZ_ASSIGNABLE(get_value, set_value, "Value(name as string) as variant"),
    KRZ_ASSIGNABLE(get_element, set_element, "Value(index as integer) as variant"),
    KRZ_ASSIGNABLE(get_element, set_element, "ValueAt(index as integer) as variant"),
    KRZ_METHOD(append, "Append(value as variant)"),
    KRZ_METHOD(count, "Count as integer"),
    KRZ_METHOD(is_array, "IsArray as boolean"),
    KRZ_METHOD(has_name, "HasName(name as string) as boolean"),
    KRZ_METHOD(has_name, "HasKey(name as string) as boolean"),
    KRZ_METHOD(name_at, "NameAt(index as integer) as string"),
    KRZ_METHOD(remove, "Remove(name as string)"),
    KRZ_METHOD(remove_at, "RemoveAt(index as integer)"),
    KRZ_METHOD(child, "Child(name as string) as JSONItem"),
    KRZ_METHOD(child_at, "ChildAt(index as integer) as JSONItem"),
    KRZ_METHOD(to_text, "ToString(pretty as boolean = false) as string"),
};

}  // namespace

void register_json(Registry& registry) {
  g_class = class_of<ItemData>("JSONItem");
  g_class.constructor = reinterpret_cast<REALfunction>(&initialise);
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
