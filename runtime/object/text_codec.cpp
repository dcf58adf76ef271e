#include "object/text_codec.h"

#include <cstring>

#include "object/mac_roman.h"
#include "object/string.h"

namespace krz {

namespace {

bool is_surrogate(char32_t character) { return character >= 0xD800 && character <= 0xDFFF; }

// The length of the valid UTF-8 sequence at the start of `bytes`, 0 when there is none, and the
// character it stands for.
size_t utf8_sequence(std::string_view bytes, char32_t& character) {
  const auto byte = [&](size_t i) { return static_cast<uint8_t>(bytes[i]); };
  const uint8_t lead = byte(0);
  if (lead < 0x80) {
    character = lead;
    return 1;
  }
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return 0;
  character = lead & (0x7Fu >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    character = character << 6 | (byte(i) & 0x3Fu);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (character < kSmallest[length] || character > 0x10FFFF || is_surrogate(character)) return 0;
  return length;
}

template <class Unit>
void append_unit(std::string& text, Unit unit) {
  char bytes[sizeof(Unit)];
  std::memcpy(bytes, &unit, sizeof(Unit));
  text.append(bytes, sizeof(Unit));
}

void append_utf8(std::string& text, char32_t character) {
  const auto tail = [&](int shift) {
    text.push_back(static_cast<char>(0x80 | (character >> shift & 0x3F)));
  };
  if (character < 0x80) {
    text.push_back(static_cast<char>(character));
  } else if (character < 0x800) {
    text.push_back(static_cast<char>(0xC0 | character >> 6));
    tail(0);
  } else if (character < 0x10000) {
    text.push_back(static_cast<char>(0xE0 | character >> 12));
    tail(6);
    tail(0);
  } else {
    text.push_back(static_cast<char>(0xF0 | character >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

void append_mac_roman(std::string& text, char32_t character) {
  if (character < 0x80) {
    text.push_back(static_cast<char>(character));
    return;
  }
  for (size_t i = 0; i < std::size(kMacRomanUpperHalf); ++i) {
    if (kMacRomanUpperHalf[i] == character) {
      text.push_back(static_cast<char>(0x80 + i));
      return;
    }
  }
  text.push_back('?');
}

}  // namespace

TextReader::TextReader(std::string_view bytes, uint32_t text_encoding) : bytes_(bytes) {
  switch (text_encoding) {
    case encoding::kUtf8:
      form_ = Form::kUtf8;
      break;
    case encoding::kUtf16:
      form_ = Form::kUtf16;
      break;
    case encoding::kUtf32:
      form_ = Form::kUtf32;
      break;
    case encoding::kAscii:
      form_ = Form::kAscii;
      break;
    case encoding::kLatin1:
      form_ = Form::kLatin1;
      break;
    case encoding::kMacRoman:
      form_ = Form::kMacRoman;
      break;
    default:
      form_ = is_valid_utf8(bytes) ? Form::kUtf8 : Form::kMacRoman;
  }
}

bool TextReader::next(char32_t& character) {
  if (position_ >= bytes_.size()) return false;
  if (form_ == Form::kUtf16) {
    character = next_utf16();
  } else if (form_ == Form::kUtf32) {
    character = next_utf32();
  } else if (const auto byte = static_cast<uint8_t>(bytes_[position_]);
             byte < 0x80 || form_ == Form::kLatin1) {
    character = byte;
    ++position_;
  } else if (form_ == Form::kUtf8) {
    character = next_utf8();
  } else {
    character = form_ == Form::kMacRoman ? kMacRomanUpperHalf[byte - 0x80] : kReplacementCharacter;
    ++position_;
  }
  return true;
}

char32_t TextReader::next_utf8() {
  char32_t character = 0;
  const size_t length = utf8_sequence(bytes_.substr(position_), character);
  position_ += length ? length : 1;
  return length ? character : kReplacementCharacter;
}

char32_t TextReader::next_utf16() {
  uint16_t unit;
  if (bytes_.size() - position_ < sizeof unit) {
    position_ = bytes_.size();
    return kReplacementCharacter;
  }
  std::memcpy(&unit, bytes_.data() + position_, sizeof unit);
  position_ += sizeof unit;
  if (!is_surrogate(unit)) return unit;
  uint16_t low = 0;
  if (unit < 0xDC00 && bytes_.size() - position_ >= sizeof low) {
    std::memcpy(&low, bytes_.data() + position_, sizeof low);
  }
  if (low < 0xDC00 || low > 0xDFFF) return kReplacementCharacter;
  position_ += sizeof low;
  return 0x10000 + ((unit - 0xD800u) << 10) + (low - 0xDC00u);
}

char32_t TextReader::next_utf32() {
  uint32_t unit;
  if (bytes_.size() - position_ < sizeof unit) {
    position_ = bytes_.size();
    return kReplacementCharacter;
  }
  std::memcpy(&unit, bytes_.data() + position_, sizeof unit);
  position_ += sizeof unit;
  return unit > 0x10FFFF || is_surrogate(unit) ? kReplacementCharacter : char32_t{unit};
}

void append_character(std::string& text, char32_t character, uint32_t text_encoding) {
  if (character > 0x10FFFF || is_surrogate(character)) character = kReplacementCharacter;
  const auto single_byte = [&](char32_t limit) {
    text.push_back(character < limit ? static_cast<char>(character) : '?');
  };
  switch (text_encoding) {
    case encoding::kMacRoman:
      append_mac_roman(text, character);
      break;
    case encoding::kAscii:
      single_byte(0x80);
      break;
    case encoding::kLatin1:
      single_byte(0x100);
      break;
    case encoding::kUtf32:
      append_unit(text, static_cast<uint32_t>(character));
      break;
    case encoding::kUtf16:
      if (character < 0x10000) {
        append_unit(text, static_cast<uint16_t>(character));
      } else {
        append_unit(text, static_cast<uint16_t>(0xD800 + ((character - 0x10000) >> 10)));
        append_unit(text, static_cast<uint16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
      }
      break;
    default:
      append_utf8(text, character);
  }
}

std::string transcode(std::string_view bytes, uint32_t from, uint32_t to) {
  std::string text;
  text.reserve(bytes.size());
  TextReader reader(bytes, from);
  const bool keeps_ascii = extends_ascii(to);
  for (char32_t character = 0; reader.next(character);) {
    if (character < 0x80 && keeps_ascii) {
      text.push_back(static_cast<char>(character));
    } else {
      append_character(text, character, to);
    }
  }
  return text;
}

bool is_ascii(std::string_view bytes) {
  for (const char byte : bytes) {
    if (static_cast<uint8_t>(byte) >= 0x80) return false;
  }
  return true;
}

bool is_valid_utf8(std::string_view bytes) {
  char32_t character;
  for (size_t at = 0; at < bytes.size();) {
    const size_t length = utf8_sequence(bytes.substr(at), character);
    if (length == 0) return false;
    at += length;
  }
  return true;
}

bool extends_ascii(uint32_t text_encoding) {
  return text_encoding != encoding::kUtf16 && text_encoding != encoding::kUtf32;
}

}  // namespace krz
