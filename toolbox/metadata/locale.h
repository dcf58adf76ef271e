// Languages and countries as files store them, and as people write them: "en_GB".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/bytes.h"

namespace toolbox {

/// Language codes of user data texts. Those below kFirstPackedLanguage are classic numbers; packed
/// ones stand for three letters, five bits each.
inline constexpr uint16_t kClassicEnglish = 0;
inline constexpr uint16_t kFirstPackedLanguage = 0x400;
inline constexpr uint16_t kUnspecifiedLanguage = 0x7FFF;
inline constexpr uint16_t kUndeterminedLanguage = 0x55C4;  // "und"
inline constexpr uint16_t kPackedEnglish = 0x15C7;         // "eng"

constexpr bool is_packed_language(uint16_t language) {
  return language >= kFirstPackedLanguage && language != kUnspecifiedLanguage;
}

/// Where and for whom a value is meant; 0 stands for any.
struct Locale {
  uint16_t country = 0;   // two ASCII letters, or the number (1 to 255) of a list in the file
  uint16_t language = 0;  // packed, or the number of a list
};

/// The text of a locale: "en_GB", "en", "_GB", the language with three letters where it has no
/// common two; empty for any. Numbers of lists give nothing.
std::string locale_text(Locale locale);

/// The locale of a text; letters in either case, "-" for "_". Nothing when it is not one.
std::optional<Locale> parse_locale(std::string_view text);

}  // namespace toolbox
