// Texts in MacRoman, UTF-8 and UTF-16, turned into each other.
#pragma once

#include "base/bytes.h"

namespace toolbox {

/// The MacRoman form of a UTF-8 text: "?" for every character that has none and for broken bytes.
Bytes mac_roman_of_utf8(ByteView text);

/// The UTF-8 form of a text in MacRoman, and of one in UTF-16: big-endian unless it begins with the
/// mark of the other order; a mark is left out, half a pair becomes U+FFFD.
Bytes utf8_of_mac_roman(ByteView text);
Bytes utf8_of_utf16(ByteView text);

/// Whether a text is well-formed UTF-8, and whether it is that and more than ASCII.
bool is_utf8(ByteView text);
bool is_utf8_beyond_ascii(ByteView text);

}  // namespace toolbox
