// Names of the language: letters match without regard to case.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace krz {

constexpr char ascii_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

constexpr bool is_name_character(char c) {
  return (c >= '0' && c <= '9') || c == '_' || (ascii_lower(c) >= 'a' && ascii_lower(c) <= 'z');
}

constexpr bool same_name(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (ascii_lower(a[i]) != ascii_lower(b[i])) return false;
  }
  return true;
}

inline std::string lower_name(std::string_view name) {
  std::string lower(name);
  for (char& c : lower) c = ascii_lower(c);
  return lower;
}

/// The name that a declaration begins with; empty when it begins with none.
constexpr std::string_view declared_name(std::string_view declaration) {
  size_t begin = 0;
  while (begin < declaration.size() && declaration[begin] == ' ') ++begin;
  size_t end = begin;
  while (end < declaration.size() && is_name_character(declaration[end])) ++end;
  return declaration.substr(begin, end - begin);
}

/// Whether that is the name which a declaration begins with. Of most declarations it reads one
/// letter.
constexpr bool declares(const char* declaration, std::string_view name) {
  while (*declaration == ' ') ++declaration;
  for (const char c : name) {
    if (ascii_lower(*declaration++) != ascii_lower(c)) return false;
  }
  return !name.empty() && !is_name_character(*declaration);
}

/// For hashed containers whose keys are names.
struct NameHash {
  using is_transparent = void;
  size_t operator()(std::string_view name) const {
    size_t hash = 0xcbf29ce484222325u;
    for (const char c : name)
      hash = (hash ^ static_cast<unsigned char>(ascii_lower(c))) * 0x100000001b3u;
    return hash;
  }
};
struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return same_name(a, b); }
};

}  // namespace krz
