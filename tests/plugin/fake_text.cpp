// Text conversion for the fake host.
#include "plugin/fake_text.h"

#include <cstring>

#include "plugin/host/encodings.h"

namespace fake_text {
namespace {

struct MacCharacter {
  uint8_t byte;
  char16_t character;
};
constexpr MacCharacter kMacCharacters[] = {{0xA9, 0x00A9}, {0x8E, 0x00E9}, {0xDB, 0x20AC}};

std::u16string decode(std::string_view bytes, uint32_t encoding) {
  std::u16string text;
  if (encoding == krz::kUTF16) {
    text.resize(bytes.size() / 2);
    std::memcpy(text.data(), bytes.data(), text.size() * 2);
    return text;
  }
  for (size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<uint8_t>(bytes[i]);
    if (byte < 0x80) {
      text += byte;
    } else if (encoding == krz::kUTF8 && byte >= 0xE0 && i + 2 < bytes.size()) {
      text +=
          static_cast<char16_t>((byte & 15) << 12 | (bytes[i + 1] & 63) << 6 | (bytes[i + 2] & 63));
      i += 2;
    } else if (encoding == krz::kUTF8 && i + 1 < bytes.size()) {
      text += static_cast<char16_t>((byte & 31) << 6 | (bytes[i + 1] & 63));
      i += 1;
    } else {
      char16_t found = u'?';
      for (const MacCharacter& one : kMacCharacters) {
        if (one.byte == byte) found = one.character;
      }
      text += found;
    }
  }
  return text;
}

std::string encode(const std::u16string& text, uint32_t encoding) {
  if (encoding == krz::kUTF16) return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
  std::string bytes;
  for (const char16_t unit : text) {
    if (unit < 0x80) {
      bytes += static_cast<char>(unit);
    } else if (encoding == krz::kUTF8) {
      if (unit < 0x800) {
        bytes += static_cast<char>(0xC0 | unit >> 6);
      } else {
        bytes += static_cast<char>(0xE0 | unit >> 12);
        bytes += static_cast<char>(0x80 | (unit >> 6 & 63));
      }
      bytes += static_cast<char>(0x80 | (unit & 63));
    } else {
      char found = '?';
      for (const MacCharacter& one : kMacCharacters) {
        if (one.character == unit && encoding == krz::kMacRoman)
          found = static_cast<char>(one.byte);
      }
      bytes += found;
    }
  }
  return bytes;
}

}  // namespace

std::string convert(std::string_view bytes, uint32_t from, uint32_t to) {
  if (from == to) return std::string(bytes);
  return encode(decode(bytes, from), to);
}

}  // namespace fake_text
