// Reads and writes characters in the text encodings that host strings carry.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace krz {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

/// Walks the characters of a text. Bytes that the encoding does not define read as U+FFFD. Bytes of
/// unknown encoding read as UTF-8 when all of them are valid UTF-8, else as MacRoman.
class TextReader {
 public:
  TextReader(std::string_view bytes, uint32_t text_encoding);

  /// False at the end of the text.
  bool next(char32_t& character);

  /// Bytes read so far.
  size_t position() const { return position_; }

 private:
  enum class Form : uint8_t { kUtf8, kUtf16, kUtf32, kAscii, kLatin1, kMacRoman };
  char32_t next_utf8();
  char32_t next_utf16();
  char32_t next_utf32();

  std::string_view bytes_;
  size_t position_ = 0;
  Form form_;
};

/// Appends a character; one that the encoding lacks becomes "?".
void append_character(std::string& text, char32_t character, uint32_t text_encoding);

/// A text in another encoding.
std::string transcode(std::string_view bytes, uint32_t from, uint32_t to);

bool is_ascii(std::string_view bytes);
bool is_valid_utf8(std::string_view bytes);

/// Whether every character below U+0080 is its own single byte in that encoding.
bool extends_ascii(uint32_t text_encoding);

}  // namespace krz
