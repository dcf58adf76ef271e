#include "foundation/mac_roman.h"

#include <algorithm>
#include <iterator>

namespace toolbox {

namespace {

// What the bytes from 0x80 on stand for.
constexpr uint16_t kUpperHalf[128] = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3,
    0x00E5, 0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3,
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3,
    0x00A7, 0x2022, 0x00B6, 0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA,
    0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB,
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D,
    0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1, 0x00CB, 0x00C8, 0x00CD, 0x00CE,
    0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC,
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7};

constexpr uint32_t kReplacement = 0xFFFD;

void append_utf8(Bytes& out, uint32_t character) {
  const auto add = [&](uint32_t byte) { out.push_back(static_cast<uint8_t>(byte)); };
  if (character < 0x80) {
    add(character);
  } else if (character < 0x800) {
    add(0xC0 | (character >> 6));
    add(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    add(0xE0 | (character >> 12));
    add(0x80 | ((character >> 6) & 0x3F));
    add(0x80 | (character & 0x3F));
  } else {
    add(0xF0 | (character >> 18));
    add(0x80 | ((character >> 12) & 0x3F));
    add(0x80 | ((character >> 6) & 0x3F));
    add(0x80 | (character & 0x3F));
  }
}

/// Takes one character off the front of a text that is not empty; kReplacement and one byte for
/// what is not well-formed.
uint32_t take_utf8(ByteView& text) {
  const uint8_t first = text[0];
  const size_t length = first < 0x80   ? 1
                        : first < 0xC2 ? 0
                        : first < 0xE0 ? 2
                        : first < 0xF0 ? 3
                        : first < 0xF5 ? 4
                                       : 0;
  uint32_t character = length == 1   ? first
                       : length == 2 ? first & 0x1F
                       : length == 3 ? first & 0x0F
                                     : first & 0x07;
  bool good = length > 0 && length <= text.size();
  for (size_t i = 1; good && i < length; ++i) {
    good = (text[i] & 0xC0) == 0x80;
    character = (character << 6) | (text[i] & 0x3F);
  }
  const bool is_surrogate = character >= 0xD800 && character < 0xE000;
  good = good && !is_surrogate && character < 0x110000 && !(length == 3 && character < 0x800) &&
         !(length == 4 && character < 0x10000);
  text = text.subspan(good ? length : 1);
  return good ? character : kReplacement;
}

}  // namespace

Bytes mac_roman_of_utf8(ByteView text) {
  Bytes out;
  while (!text.empty()) {
    const uint32_t character = take_utf8(text);
    const auto found = std::find(std::begin(kUpperHalf), std::end(kUpperHalf), character);
    out.push_back(character < 0x80 ? static_cast<uint8_t>(character)
                  : found == std::end(kUpperHalf)
                      ? uint8_t{'?'}
                      : static_cast<uint8_t>(0x80 + (found - kUpperHalf)));
  }
  return out;
}

Bytes utf8_of_mac_roman(ByteView text) {
  Bytes out;
  for (const uint8_t byte : text) append_utf8(out, byte < 0x80 ? byte : kUpperHalf[byte - 0x80]);
  return out;
}

Bytes utf8_of_utf16(ByteView text) {
  const bool little = text.size() >= 2 && text[0] == 0xFF && text[1] == 0xFE;
  if (little || (text.size() >= 2 && text[0] == 0xFE && text[1] == 0xFF)) text = text.subspan(2);
  const auto unit = [&](size_t at) {
    return little ? uint32_t{text[at]} | uint32_t{text[at + 1]} << 8
                  : uint32_t{text[at]} << 8 | uint32_t{text[at + 1]};
  };
  Bytes out;
  for (size_t at = 0; at + 1 < text.size(); at += 2) {
    uint32_t character = unit(at);
    const bool leads = character >= 0xD800 && character < 0xDC00;
    const uint32_t next = leads && at + 3 < text.size() ? unit(at + 2) : 0;
    if (next >= 0xDC00 && next < 0xE000) {
      character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
      at += 2;
    } else if (character >= 0xD800 && character < 0xE000) {
      character = kReplacement;
    }
    append_utf8(out, character);
  }
  return out;
}

bool is_utf8(ByteView text) {
  while (!text.empty()) {
    const ByteView before = text;
    if (take_utf8(text) == kReplacement && before.size() - text.size() == 1) return false;
  }
  return true;
}

bool is_utf8_beyond_ascii(ByteView text) {
  return std::any_of(text.begin(), text.end(), [](uint8_t byte) { return byte >= 0x80; }) &&
         is_utf8(text);
}

}  // namespace toolbox
