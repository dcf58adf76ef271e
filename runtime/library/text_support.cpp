#include "library/text_support.h"

#include "object/text_codec.h"

namespace krz {

namespace {

bool is_wide(uint32_t text_encoding) { return !extends_ascii(text_encoding); }

bool is_continuation(char byte) { return (static_cast<uint8_t>(byte) & 0xC0) == 0x80; }

char32_t small_letter(char32_t c) {
  if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + 32 : c;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  if ((c >= 0x100 && c <= 0x137 && c != 0x130 && c != 0x131) || (c >= 0x14A && c <= 0x177)) {
    return c | 1;
  }
  if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return (c & 1) ? c + 1 : c;
  if (c == 0x178) return 0xFF;
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 32;
  if (c >= 0x410 && c <= 0x42F) return c + 32;
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  return c;
}

char32_t capital_letter(char32_t c) {
  if (c < 0x80) return c >= 'a' && c <= 'z' ? c - 32 : c;
  if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return c - 32;
  if ((c >= 0x100 && c <= 0x137 && c != 0x130 && c != 0x131) || (c >= 0x14A && c <= 0x177)) {
    return c & ~char32_t{1};
  }
  if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return (c & 1) ? c : c - 1;
  if (c == 0xFF) return 0x178;
  if (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2) return c - 32;
  if (c >= 0x430 && c <= 0x44F) return c - 32;
  if (c >= 0x450 && c <= 0x45F) return c - 80;
  return c;
}

template <class Change>
std::string changed_letters(std::string_view text, uint32_t text_encoding, Change change) {
  std::string changed(text);
  const bool whole_characters = text_encoding == encoding::kUtf8 && !is_ascii(text);
  if (!whole_characters) {
    for (char& c : changed) {
      if (static_cast<uint8_t>(c) < 0x80) c = static_cast<char>(change(static_cast<uint8_t>(c)));
    }
    return changed;
  }
  TextReader reader(text, text_encoding);
  std::string one;
  for (size_t at = 0;; at = reader.position()) {
    char32_t character;
    if (!reader.next(character)) return changed;
    const char32_t other = change(character);
    if (other == character) continue;
    one.clear();
    append_character(one, other, text_encoding);
    if (one.size() == reader.position() - at) changed.replace(at, one.size(), one);
  }
}

}  // namespace

Text::Text(REALstring string)
    : bytes_(string_bytes(string)), encoding_(string ? string->encoding : encoding::kUtf8) {
  if (is_wide(encoding_)) {
    owned_ = string_utf8(string);
    bytes_ = owned_;
    encoding_ = encoding::kUtf8;
  }
  byte_a_character_ = encoding_ != encoding::kUtf8 || is_ascii(bytes_);
}

size_t Text::characters_before(size_t byte) const {
  if (byte_a_character_) return byte;
  size_t count = 0;
  for (size_t i = 0; i < byte; ++i) count += !is_continuation(bytes_[i]);
  return count;
}

size_t Text::byte_of(size_t character) const {
  if (byte_a_character_) return character < bytes_.size() ? character : bytes_.size();
  size_t at = 0;
  for (;; ++at) {
    while (at < bytes_.size() && is_continuation(bytes_[at])) ++at;
    if (at >= bytes_.size() || character-- == 0) return at;
  }
}

size_t Text::byte_after(size_t byte) const {
  ++byte;
  while (!byte_a_character_ && byte < bytes_.size() && is_continuation(bytes_[byte])) ++byte;
  return byte;
}

std::string text_in(REALstring string, uint32_t text_encoding) {
  if (!string || string->encoding == text_encoding || text_encoding == kEncodingUnknown) {
    return std::string(string_bytes(string));
  }
  const REALstring converted = convert_string(string, text_encoding);
  std::string bytes(string_bytes(converted));
  unlock_string(converted);
  return bytes;
}

std::string small_letters(std::string_view text, uint32_t text_encoding) {
  return changed_letters(text, text_encoding, small_letter);
}

std::string capital_letters(std::string_view text, uint32_t text_encoding) {
  return changed_letters(text, text_encoding, capital_letter);
}

}  // namespace krz
