// Four-character codes: numbers that people read as four letters.
#pragma once

#include <cstdint>
#include <string>

namespace toolbox {

using FourCC = uint32_t;

/// The code of four characters, the first in the most significant byte: four_cc("moov").
consteval FourCC four_cc(const char (&text)[5]) {
  FourCC code = 0;
  for (int i = 0; i < 4; ++i) code = (code << 8) | static_cast<uint8_t>(text[i]);
  return code;
}

/// The code as people read it: its four characters where they are printable (the sign 0xA9 as "©"),
/// each other byte as "\xHH".
std::string four_cc_text(FourCC code);

}  // namespace toolbox
