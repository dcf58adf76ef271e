// Bytes as text of 64 letters, and back.
#include <array>
#include <cstdint>
#include <string>

#include "library/parts.h"
#include "object/string.h"
#include "registry/tables.h"

namespace krz {

namespace {

constexpr std::string_view kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr uint8_t kNoLetter = 64;

constexpr std::array<uint8_t, 256> kValues = [] {
  std::array<uint8_t, 256> values{};
  values.fill(kNoLetter);
  for (size_t i = 0; i < kLetters.size(); ++i) {
    values[static_cast<uint8_t>(kLetters[i])] = static_cast<uint8_t>(i);
  }
  return values;
}();

REALstring encode(REALstring bytes) {
  const std::string_view from = string_bytes(bytes);
  std::string text;
  text.reserve((from.size() + 2) / 3 * 4);
  for (size_t at = 0; at < from.size(); at += 3) {
    const auto byte = [&](size_t i) {
      return at + i < from.size() ? uint32_t{static_cast<uint8_t>(from[at + i])} : 0;
    };
    const uint32_t three = byte(0) << 16 | byte(1) << 8 | byte(2);
    for (size_t i = 0; i < 4; ++i) {
      const bool is_there = at + i <= from.size();
      text += is_there ? kLetters[(three >> (18 - 6 * i)) & 63] : '=';
    }
  }
  return make_string(text);
}

/// Letters that are none, line ends above all, are passed over; padding ends the text.
REALstring decode(REALstring text) {
  std::string bytes;
  uint32_t bits = 0;
  int count = 0;
  for (const char letter : string_bytes(text)) {
    if (letter == '=') break;
    const uint8_t value = kValues[static_cast<uint8_t>(letter)];
    if (value == kNoLetter) continue;
    bits = bits << 6 | value;
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count);
  }
  return make_string(bytes, kEncodingUnknown);
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(encode, "EncodeBase64(bytes as string) as string"),
    KRZ_FUNCTION(decode, "DecodeBase64(text as string) as string"),
};

}  // namespace

void register_base64(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
