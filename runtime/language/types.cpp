// Type words and their spelling.
#include "language/types.h"

#include "language/names.h"
#include "registry/class_info.h"

namespace krz {
namespace {

struct TypeWord {
  std::string_view word;
  Kind kind;
};

// The first word of a kind is how messages spell it.
constexpr TypeWord kTypeWords[] = {
    {"Integer", Kind::kInteger}, {"String", Kind::kString},   {"Boolean", Kind::kBoolean},
    {"Double", Kind::kDouble},   {"Int64", Kind::kInt64},     {"Single", Kind::kSingle},
    {"Color", Kind::kColor},     {"Variant", Kind::kVariant}, {"Object", Kind::kObject},
    {"Int32", Kind::kInteger},   {"Nil", Kind::kNil},
};

std::string_view kind_text(Kind kind) {
  for (const TypeWord& word : kTypeWords) {
    if (word.kind == kind) return word.word;
  }
  return "no value";
}

}  // namespace

Kind kind_named(std::string_view name) {
  if (name.size() < 5 || name.size() > 7) return Kind::kVoid;
  for (const TypeWord& word : kTypeWords) {
    if (word.kind != Kind::kNil && equal_names(word.word, name)) return word.kind;
  }
  return Kind::kVoid;
}

std::string type_text(const Type& type) {
  if (type.kind == Kind::kArray) {
    std::string text = type_text(type.element_type()) + "(";
    for (int i = 1; i < type.rank; ++i) text += ',';
    return text + ")";
  }
  if (type.kind == Kind::kObject && type.class_info != nullptr) return type.class_info->name();
  return std::string(kind_text(type.kind));
}

std::string a_type(const Type& type) {
  std::string text = type_text(type);
  if (type.kind == Kind::kArray) return "an array " + text;
  if (type.kind == Kind::kVoid || type.kind == Kind::kNil) return text;
  constexpr std::string_view kVowels = "aeio";
  const bool vowel = kVowels.find(fold_ascii(text[0])) != std::string_view::npos;
  return (vowel ? "an " : "a ") + text;
}

}  // namespace krz
