// A host string as a row of characters, for functions that count in characters.
#pragma once

#include <string>
#include <string_view>

#include "object/string.h"

namespace krz {

/// Borrows the string's bytes where it can. Encodings of one byte a character stay as they are,
/// wide ones are read as UTF-8. REQUIRES: the string outlives the view.
class Text {
 public:
  explicit Text(REALstring string);
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;

  std::string_view bytes() const { return bytes_; }
  uint32_t encoding() const { return encoding_; }

  /// Number of characters.
  size_t count() const { return characters_before(bytes_.size()); }

  /// Number of characters that begin before a byte.
  size_t characters_before(size_t byte) const;

  /// First byte of a character, from 0; the number of bytes when there are fewer characters.
  size_t byte_of(size_t character) const;

  /// First byte of the character after the one that begins at `byte`.
  size_t byte_after(size_t byte) const;

  /// A part of the text in its encoding, locked once.
  REALstring slice(size_t first_byte, size_t byte_count) const {
    return make_string(bytes_.substr(first_byte, byte_count), encoding_);
  }

 private:
  std::string owned_;
  std::string_view bytes_;
  uint32_t encoding_;
  bool byte_a_character_;
};

/// The text in another encoding.
std::string text_in(REALstring string, uint32_t text_encoding);

/// The same text with small (or capital) letters in place of the others, every character as long as
/// it was, so that places in the result are places in the text. Letters of ASCII, Latin, Greek and
/// Cyrillic alphabets have two cases.
std::string small_letters(std::string_view text, uint32_t text_encoding);
std::string capital_letters(std::string_view text, uint32_t text_encoding);

}  // namespace krz
