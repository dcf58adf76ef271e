#include "metadata/common_keys.h"

#include <string_view>

#include "metadata/child_atoms.h"

namespace toolbox {

namespace {

constexpr std::string_view kPrefix = "com.apple.quicktime.";
constexpr std::string_view kTitle = "com.apple.quicktime.title";

/// The code of three letters behind the sign of copyright.
consteval FourCC sign(const char (&text)[4]) {
  FourCC code = 0xA9;
  for (int i = 0; i < 3; ++i) code = (code << 8) | static_cast<uint8_t>(text[i]);
  return code;
}

struct Row {
  FourCC common;
  std::string_view quicktime;  // behind the prefix
  FourCC short_form;           // 0: none
  FourCC user_data;            // 0: none
};

constexpr Row kRows[] = {
    {four_cc("auth"), "author", sign("aut"), sign("aut")},
    {four_cc("cmmt"), "comment", sign("cmt"), sign("cmt")},
    {four_cc("cprt"), "copyright", four_cc("cprt"), sign("cpy")},
    {four_cc("dtor"), "director", sign("dir"), sign("dir")},
    {four_cc("name"), "displayname", sign("nam"), sign("nam")},
    {four_cc("info"), "information", sign("inf"), sign("inf")},
    {four_cc("keyw"), "keywords", four_cc("keyw"), sign("key")},
    {four_cc("prod"), "producer", sign("prd"), sign("prd")},
    {four_cc("albm"), "album", sign("alb"), sign("alb")},
    {four_cc("arts"), "artist", sign("ART"), sign("ART")},
    {four_cc("artw"), "artwork", four_cc("covr"), 0},
    {four_cc("chap"), "chaptername", 0, sign("chp")},
    {four_cc("comp"), "composer", sign("wrt"), sign("com")},
    {four_cc("desc"), "description", four_cc("desc"), sign("des")},
    {four_cc("genr"), "genre", sign("gen"), sign("gen")},
    {four_cc("orif"), "originalformat", 0, sign("fmt")},
    {four_cc("oris"), "originalsource", 0, sign("src")},
    {four_cc("perf"), "performer", 0, sign("prf")},
    {four_cc("soft"), "software", sign("too"), sign("swr")},
    {four_cc("wrtr"), "writer", 0, sign("wrt")},
};

std::string_view text_of(const Bytes& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace

std::optional<ItemKey> native_key(FourCC common, FourCC storage) {
  for (const Row& row : kRows) {
    if (row.common != common) continue;
    if (storage == storage_format::kQuickTime) {
      std::string text(kPrefix);
      text += row.quicktime;
      return ItemKey{key_format::kQuickTime, Bytes(text.begin(), text.end())};
    }
    const bool is_short = storage == storage_format::kShortList;
    const FourCC code = is_short ? row.short_form : row.user_data;
    if (code == 0) return std::nullopt;
    return key_of_code(is_short ? key_format::kShortForm : key_format::kUserData, code);
  }
  return std::nullopt;
}

FourCC common_key(const ItemKey& key) {
  for (const Row& row : kRows) {
    if (key.format == key_format::kQuickTime) {
      const std::string_view text = text_of(key.bytes);
      if (text.starts_with(kPrefix) && text.substr(kPrefix.size()) == row.quicktime)
        return row.common;
    } else if (key.format == key_format::kShortForm) {
      if (row.short_form != 0 && key.code() == row.short_form) return row.common;
    } else if (key.format == key_format::kUserData && row.user_data != 0) {
      if (key.code() == row.user_data) return row.common;
    }
  }
  return 0;
}

bool is_title(const ItemKey& key) {
  return key.format == key_format::kQuickTime && text_of(key.bytes) == kTitle;
}

}  // namespace toolbox
