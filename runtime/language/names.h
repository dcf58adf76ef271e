// Names of a script: compared without regard to case, kept once, and known by number afterwards.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "export.h"

namespace krz {

using NameId = uint32_t;
inline constexpr NameId kNoName = ~NameId{0};

constexpr char fold_ascii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool equal_names(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (fold_ascii(a[i]) != fold_ascii(b[i])) return false;
  }
  return true;
}

constexpr uint32_t hash_name(std::string_view name) {
  uint32_t hash = 2166136261u;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(fold_ascii(c))) * 16777619u;
  return hash;
}

class NameTable {
 public:
  NameTable();

  /// The number of that name. `text` must outlive the table; the spelling seen first is the one
  /// that is kept. REQUIRES: hash == hash_name(text).
  NameId intern(std::string_view text, uint32_t hash);
  NameId intern(std::string_view text) { return intern(text, hash_name(text)); }

  std::string_view text(NameId id) const { return entries_[id].text; }
  size_t size() const { return entries_.size(); }

 private:
  struct Entry {
    std::string_view text;
    uint32_t hash;
  };
  void grow();

  std::vector<Entry> entries_;
  std::vector<uint32_t> buckets_;  // entry number + 1, 0 is free; a power of two
};

/// Of `candidates`, the one closest to a mistyped `name`; empty when none is close.
KRZ_API std::string_view nearest_name(std::string_view name,
                                      const std::vector<std::string_view>& candidates);

}  // namespace krz
