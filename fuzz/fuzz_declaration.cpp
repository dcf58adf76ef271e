// Any text as a declaration that a module registers: read as a method and as a constant; what is
// refused says why and owns nothing, and what is read has the shape that callers rely on.
#include <cstdlib>

#include "object/string.h"
#include "registry/declaration.h"
#include "registry/names.h"
#include "registry/registry.h"

namespace krz {
namespace {

constexpr size_t kMostParameters = 64;
constexpr int kMostRank = 8;

void require(bool condition) {
  if (!condition) std::abort();
}

void check_type(const Type& type) {
  require(type.kind != Kind::kArray || (type.rank > 0 && type.rank <= kMostRank));
}

void read_method(std::string_view text) {
  Registry registry;  // it keeps every class name that it hears of
  std::string name;
  Signature signature;
  const std::string error = parse_method(text, registry, name, signature);
  if (error.empty()) {
    require(declared_name(name) == name && !name.empty());
    require(signature.parameters.size() <= kMostParameters);
    require(signature.required_count() <= signature.parameters.size());
    require(!signature.reads_like_property || signature.parameters.empty());
    check_type(signature.result);
    for (const Parameter& parameter : signature.parameters) {
      require(!parameter.name.empty() && parameter.type.kind != Kind::kVoid);
      require(!parameter.by_ref || !parameter.optional);
      check_type(parameter.type);
    }
    release_defaults(signature);
  }
}

void read_constant(std::string_view text) {
  ConstantInfo constant;
  const std::string error = parse_constant(text, constant);
  if (!error.empty()) return;
  require(!constant.name.empty());
  require(constant.type.kind != Kind::kVoid);
  if (constant.type.kind == Kind::kString) unlock_string(constant.value.string);
}

}  // namespace
}  // namespace krz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  const int64_t strings = krz::live_strings();
  krz::read_method(text);
  krz::read_constant(text);
  krz::require(krz::live_strings() == strings);
  return 0;
}
