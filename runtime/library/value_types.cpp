// Functions about the types of values: what a Variant holds, and colors out of their parts.
#include <algorithm>

#include "library/parts.h"
#include "object/object.h"
#include "registry/tables.h"

namespace krz {

namespace {

constexpr int32_t kArrayOf = 4096;  // added to the number of the elements' type

int32_t type_number(Kind kind) {
  switch (kind) {
    case Kind::kInteger:
      return 2;
    case Kind::kInt64:
      return 3;
    case Kind::kSingle:
      return 4;
    case Kind::kDouble:
      return 5;
    case Kind::kString:
      return 8;
    case Kind::kObject:
      return 9;
    case Kind::kBoolean:
      return 11;
    case Kind::kVariant:
      return 12;
    case Kind::kColor:
      return 16;
    default:
      return 0;
  }
}

int32_t type_of_variant(REALobject value) {
  const VariantObject* variant = as_variant(value);
  if (variant == nullptr) return 0;
  const Type& type = variant->value_type;
  return type.kind == Kind::kArray ? kArrayOf + type_number(type.element) : type_number(type.kind);
}

/// Parts outside 0 to 255 become the nearest inside.
uint32_t color_of_parts(int32_t red, int32_t green, int32_t blue) {
  const auto part = [](int32_t value) {
    return static_cast<uint32_t>(std::clamp<int32_t>(value, 0, 255));
  };
  return part(red) << 16 | part(green) << 8 | part(blue);
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(type_of_variant, "VarType(value as variant) as integer"),
    KRZ_FUNCTION(color_of_parts, "RGB(red as integer, green as integer, blue as integer) as color"),
};

}  // namespace

void register_value_types(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
