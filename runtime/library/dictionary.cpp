// The class Dictionary: values found by keys of any type, in the order in which the keys came.
#include <cmath>
#include <list>
#include <string>
#include <unordered_map>
#include <utility>

#include "language/text.h"
#include "library/parts.h"
#include "object/convert.h"
#include "object/exceptions.h"
#include "object/memory_budget.h"
#include "object/object.h"
#include "object/string.h"
#include "object/text_codec.h"
#include "registry/names.h"
#include "registry/tables.h"

namespace krz {

namespace {

// What tells a key from others: equal numbers of different types are one key, as `=` has it.
// Borrows its text.
struct Key {
  enum class Form : uint8_t { kNil, kBoolean, kWhole, kReal, kColor, kText, kObject };
  Form form = Form::kNil;
  uint64_t bits = 0;
  REALstring text = nullptr;
};

Key number_key(double number) {
  constexpr double kEnd = 0x1p63;
  if (number >= -kEnd && number < kEnd && number == std::trunc(number)) {
    return {Key::Form::kWhole, static_cast<uint64_t>(static_cast<int64_t>(number))};
  }
  Slot slot;
  slot.real = number;
  return {Key::Form::kReal, slot.bits};
}

Key key_of(REALobject variant_object) {
  const VariantObject* const variant = as_variant(variant_object);
  if (!variant) return {};
  const Slot& value = variant->value;
  switch (variant->value_type.kind) {
    case Kind::kBoolean:
      return {Key::Form::kBoolean, value.boolean};
    case Kind::kInteger:
      return {Key::Form::kWhole, static_cast<uint64_t>(int64_t{value.integer})};
    case Kind::kInt64:
      return {Key::Form::kWhole, static_cast<uint64_t>(value.int64)};
    case Kind::kSingle:
      return number_key(static_cast<double>(value.single));
    case Kind::kDouble:
      return number_key(value.real);
    case Kind::kColor:
      return {Key::Form::kColor, value.color};
    case Kind::kString:
      return {Key::Form::kText, 0, value.string};
    default:
      if (!value.object) return {};
      return {Key::Form::kObject, reinterpret_cast<uintptr_t>(value.object)};
  }
}

// Characters beyond ASCII count as one and the same, because which of them are equal is for the
// comparison to say.
size_t text_hash(REALstring text) {
  constexpr size_t kPrime = 0x100000001b3u;
  size_t hash = 0xcbf29ce484222325u;
  TextReader reader(string_bytes(text), text ? text->encoding : encoding::kUtf8);
  for (char32_t c = 0; reader.next(c);) {
    const char letter = c < 0x80 ? ascii_lower(static_cast<char>(c)) : '\x80';
    hash = (hash ^ static_cast<unsigned char>(letter)) * kPrime;
  }
  return hash;
}

struct KeyHash {
  size_t operator()(const Key& key) const {
    if (key.form == Key::Form::kText) return text_hash(key.text);
    return std::hash<uint64_t>()(key.bits * 31 + static_cast<uint64_t>(key.form));
  }
};
struct KeyEqual {
  bool operator()(const Key& a, const Key& b) const {
    if (a.form != b.form) return false;
    return a.form == Key::Form::kText ? compare_strings(a.text, b.text) == 0 : a.bits == b.bits;
  }
};

// Both are variants, locked.
struct Entry {
  REALobject key;
  REALobject value;
};

struct Entries {
  std::list<Entry> in_order;
  std::unordered_map<Key, std::list<Entry>::iterator, KeyHash, KeyEqual> by_key;
};

// What an entry costs in the list and the table.
constexpr size_t kEntrySize = 112;

struct DictionaryData {
  Entries* entries;
};

REALclassDefinition g_class;

Entries& entries_of(REALobject dictionary) {
  return *data_in<DictionaryData>(dictionary, g_class).entries;
}

void initialise(REALobject dictionary) {
  data_in<DictionaryData>(dictionary, g_class).entries = new Entries;
}

void clear(REALobject dictionary) {
  // Taken out first: what dies here may hold the dictionary.
  std::list<Entry> dying;
  entries_of(dictionary).by_key.clear();
  memory_budget::give_back(entries_of(dictionary).in_order.size() * kEntrySize);
  dying.swap(entries_of(dictionary).in_order);
  for (const Entry& entry : dying) {
    unlock_object(entry.key);
    unlock_object(entry.value);
  }
}

void destroy(REALobject dictionary) {
  clear(dictionary);
  delete &entries_of(dictionary);
}

const Entry* find_entry(REALobject dictionary, REALobject key) {
  const Entries& entries = entries_of(dictionary);
  const auto found = entries.by_key.find(key_of(key));
  return found != entries.by_key.end() ? &*found->second : nullptr;
}

void raise_missing(REALobject key) {
  Slot slot;
  slot.object = key;
  raise_exception("KeyNotFoundException",
                  "there is no value for the key \"" + value_text({Kind::kVariant}, slot) +
                      "\"; ask HasKey before, or use Lookup with a value to take instead");
}

REALobject get_value(REALobject dictionary, REALobject key) {
  const Entry* const entry = find_entry(dictionary, key);
  if (!entry) {
    raise_missing(key);
    return nullptr;
  }
  lock_object(entry->value);
  return entry->value;
}

void set_value(REALobject dictionary, REALobject key, REALobject value) {
  Entries& entries = entries_of(dictionary);
  if (const auto found = entries.by_key.find(key_of(key)); found != entries.by_key.end()) {
    lock_object(value);
    unlock_object(std::exchange(found->second->value, value));
    return;
  }
  if (!memory_budget::take(kEntrySize))
    return raise_exception("OutOfMemoryException", "there is no memory for another entry");
  lock_object(value);
  lock_object(key);
  entries.in_order.push_back({key, value});
  entries.by_key.emplace(key_of(key), std::prev(entries.in_order.end()));
}

bool has_key(REALobject dictionary, REALobject key) { return find_entry(dictionary, key); }

REALobject look_up(REALobject dictionary, REALobject key, REALobject fallback) {
  const Entry* const entry = find_entry(dictionary, key);
  const REALobject value = entry ? entry->value : fallback;
  lock_object(value);
  return value;
}

void remove(REALobject dictionary, REALobject key) {
  Entries& entries = entries_of(dictionary);
  const auto found = entries.by_key.find(key_of(key));
  if (found == entries.by_key.end()) return raise_missing(key);
  const Entry entry = *found->second;
  entries.in_order.erase(found->second);
  entries.by_key.erase(found);
  memory_budget::give_back(kEntrySize);
  unlock_object(entry.key);
  unlock_object(entry.value);
}

int32_t count(REALobject dictionary) {
  return static_cast<int32_t>(entries_of(dictionary).in_order.size());
}

REALobject listed(REALobject dictionary, REALobject Entry::*part) {
  const Entries& entries = entries_of(dictionary);
  ArrayObject* const array = new_array({Kind::kVariant}, {count(dictionary) - 1});
  if (!array) {
    raise_exception("OutOfMemoryException", "there is no memory for an array of " +
                                                std::to_string(count(dictionary)) + " values");
    return nullptr;
  }
  auto element = array->elements.begin();
  for (const Entry& entry : entries.in_order) {
    lock_object(entry.*part);
    (element++)->object = entry.*part;
  }
  return array;
}

REALobject keys(REALobject dictionary) { return listed(dictionary, &Entry::key); }
REALobject values(REALobject dictionary) { return listed(dictionary, &Entry::value); }

MethodEntry g_methods[] = {
    KRZ_ASSIGNABLE(get_value, set_value, "Value(key as variant) as variant"),
    KRZ_METHOD(has_key, "HasKey(key as variant) as boolean"),
    KRZ_METHOD(look_up, "Lookup(key as variant, default as variant) as variant"),
    KRZ_METHOD(remove, "Remove(key as variant)"),
    KRZ_METHOD(clear, "Clear()"),
    KRZ_METHOD(count, "Count as integer"),
    KRZ_METHOD(keys, "Keys as variant()"),
    KRZ_METHOD(values, "Values as variant()"),
};

}  // namespace

void register_dictionary(Registry& registry) {
  g_class = class_of<DictionaryData>("Dictionary");
  g_class.constructor = reinterpret_cast<REALfunction>(&initialise);
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
