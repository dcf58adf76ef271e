// The types a script can write, and how messages call them.
#pragma once

#include <string>
#include <string_view>

#include "object/type.h"

namespace krz {

/// The kind that a type word of the language names ("Integer", "String"); kVoid when it names none.
/// "Object" is kObject.
Kind kind_named(std::string_view name);

/// "Integer", "QTTrackKRZ", "Integer()".
std::string type_text(const Type& type);

/// "an Integer", "a String": for sentences.
std::string a_type(const Type& type);

inline Type simple_type(Kind kind) { return Type{kind, Kind::kVoid, 0, nullptr}; }
inline bool is_integral(const Type& type) {
  return type.kind == Kind::kInteger || type.kind == Kind::kInt64;
}

/// The register class of a value: how it is copied and released.
enum class Storage : uint8_t { kNumber, kString, kObject };

inline Storage storage_of(Kind kind) {
  if (kind == Kind::kString) return Storage::kString;
  return kind > Kind::kString || kind == Kind::kNil ? Storage::kObject : Storage::kNumber;
}

}  // namespace krz
