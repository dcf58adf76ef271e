#include "base/four_cc.h"

namespace toolbox {

std::string four_cc_text(FourCC code) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const auto byte = static_cast<uint8_t>(code >> shift);
    if (byte >= 0x20 && byte < 0x7F) {
      text += static_cast<char>(byte);
    } else if (byte == 0xA9) {
      text += "\u00A9";
    } else {
      text += "\\x";
      text += kDigits[byte >> 4];
      text += kDigits[byte & 15];
    }
  }
  return text;
}

}  // namespace toolbox
