// The static types of the host language and the one machine word that a value of any of them fits
// in.
#pragma once

#include <krz/abi.h>

#include <cstddef>
#include <cstdint>

namespace krz {

class ClassInfo;

/// What a value is. Strings, objects, arrays and variants are references; the rest are plain
/// numbers.
enum class Kind : uint8_t {
  kVoid,     // no value: a Sub
  kNil,      // the type of the literal Nil alone
  kBoolean,  // one byte
  kInteger,  // signed 32 bits, wrapping
  kInt64,
  kSingle,
  kDouble,
  kColor,  // 0x00RRGGBB
  kString,
  kObject,
  kArray,
  kVariant,
};

/// A static type. Two types are the same when all fields are.
struct Type {
  Kind kind = Kind::kVoid;
  Kind element = Kind::kVoid;  // arrays: what the elements are
  uint8_t rank = 0;            // arrays: number of dimensions, from 1
  const ClassInfo* class_info =
      nullptr;  // objects and arrays of objects: the class; null for the root class "Object"

  bool operator==(const Type&) const = default;
  bool is_reference() const { return kind >= Kind::kString || kind == Kind::kNil; }
  bool is_number() const { return kind >= Kind::kInteger && kind <= Kind::kDouble; }

  /// The type of one element. REQUIRES: kind is kArray.
  Type element_type() const { return {element, Kind::kVoid, 0, class_info}; }
};

/// A value of any type. Every member begins at the first byte, so that a slot's address is a
/// `byref` of its type. Which member holds is known from the static type; nothing in the slot
/// tells.
union Slot {
  uint64_t bits = 0;
  uint8_t boolean;
  int32_t integer;
  int64_t int64;
  float single;
  double real;
  uint32_t color;
  REALstring string;
  REALobject object;  // objects, arrays and variants; null is Nil
};
static_assert(sizeof(Slot) == 8);

/// Bytes of a value in a direct field, from a slot's first byte on.
constexpr size_t value_width(Kind kind) {
  switch (kind) {
    case Kind::kVoid:
      return 0;
    case Kind::kBoolean:
      return 1;
    case Kind::kInteger:
    case Kind::kSingle:
    case Kind::kColor:
      return 4;
    case Kind::kInt64:
    case Kind::kDouble:
      return 8;
    default:
      return sizeof(void*);
  }
}

}  // namespace krz
