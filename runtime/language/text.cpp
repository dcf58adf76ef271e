// Joining and comparing strings of any encodings.
#include "language/text.h"

#include <string>

#include "language/names.h"
#include "object/text_codec.h"

namespace krz {
namespace {

/// Simple case folding of the scripts that text about movies is mostly written in.
char32_t fold(char32_t c) {
  if (c < 0x80) return static_cast<unsigned char>(fold_ascii(static_cast<char>(c)));
  if ((c >= 0xC0 && c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3A9) ||
      (c >= 0x410 && c <= 0x42F))
    return c + 32;
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  const bool even_capital = (c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177) ||
                            (c >= 0x1E00 && c <= 0x1EFF) || (c >= 0x460 && c <= 0x4BF);
  if (even_capital) return c | 1;
  const bool odd_capital = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  if (odd_capital) return c + (c & 1);
  return c;
}

int compare_characters(REALstring left, REALstring right) {
  TextReader a(string_bytes(left), left->encoding);
  TextReader b(string_bytes(right), right->encoding);
  for (;;) {
    char32_t x = 0;
    char32_t y = 0;
    const bool more_left = a.next(x);
    const bool more_right = b.next(y);
    if (!more_left || !more_right)
      return static_cast<int>(more_left) - static_cast<int>(more_right);
    x = fold(x);
    y = fold(y);
    if (x != y) return x < y ? -1 : 1;
  }
}

/// The encoding of what two texts give together; false when both have to become UTF-8.
bool common_encoding(uint32_t& encoding, REALstring next) {
  if (encoding == next->encoding) return true;
  if (is_ascii(string_bytes(next)) && extends_ascii(next->encoding) && extends_ascii(encoding))
    return true;
  if (encoding == encoding::kAscii && extends_ascii(next->encoding)) {
    encoding = next->encoding;
    return true;
  }
  return false;
}

}  // namespace

REALstring join_strings(std::span<const REALstring> strings) {
  size_t length = 0;
  REALstring only = nullptr;
  size_t filled = 0;
  bool common = true;
  uint32_t text_encoding = encoding::kUtf8;
  for (const REALstring one : strings) {
    if (one == nullptr || one->length == 0) continue;
    if (filled == 0) {
      text_encoding = one->encoding;
    } else if (common) {
      common = common_encoding(text_encoding, one);
    }
    only = one;
    ++filled;
    length += static_cast<size_t>(one->length);
  }
  if (filled == 0) return nullptr;
  if (filled == 1) {
    lock_string(only);
    return only;
  }
  if (length > static_cast<size_t>(INT32_MAX) - 16) return nullptr;
  std::string joined;
  joined.reserve(length);
  for (const REALstring one : strings) {
    if (common) {
      joined += string_bytes(one);
    } else {
      joined += string_utf8(one);
    }
  }
  return make_string(joined, common ? text_encoding : encoding::kUtf8);
}

int compare_strings(REALstring left, REALstring right) {
  if (left == right) return 0;
  const std::string_view a = string_bytes(left);
  const std::string_view b = string_bytes(right);
  if (a.empty() || b.empty()) return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
  if (!extends_ascii(left->encoding) || !extends_ascii(right->encoding))
    return compare_characters(left, right);
  // As long as all is ASCII, bytes are characters.
  const size_t shorter = a.size() < b.size() ? a.size() : b.size();
  for (size_t i = 0; i < shorter; ++i) {
    const auto x = static_cast<unsigned char>(fold_ascii(a[i]));
    const auto y = static_cast<unsigned char>(fold_ascii(b[i]));
    if ((x | y) >= 0x80) return compare_characters(left, right);
    if (x != y) {
      // A later character may still be of another script, but these two have decided.
      return x < y ? -1 : 1;
    }
  }
  return static_cast<int>(a.size() > shorter) - static_cast<int>(b.size() > shorter);
}

}  // namespace krz
