#include "plugin/fake_texts.h"

#include <cstring>

#include "foundation/mac_roman.h"
#include "plugin/host/encodings.h"

namespace fake_host {
namespace {

std::string utf8_of_units(const std::string& units) {
  std::string bytes;
  for (size_t i = 0; i + 1 < units.size(); i += 2) {
    char16_t unit;
    std::memcpy(&unit, &units[i], 2);
    if (unit < 0x80) {
      bytes += static_cast<char>(unit);
      continue;
    }
    bytes += static_cast<char>(unit < 0x800 ? 0xC0 | unit >> 6 : 0xE0 | unit >> 12);
    if (unit >= 0x800) bytes += static_cast<char>(0x80 | (unit >> 6 & 63));
    bytes += static_cast<char>(0x80 | (unit & 63));
  }
  return bytes;
}

std::string units_of_utf8(const std::string& bytes) {
  std::string units;
  for (size_t i = 0; i < bytes.size(); ++i) {
    const auto first = static_cast<uint8_t>(bytes[i]);
    char16_t unit = first < 0x80 ? first : first < 0xE0 ? first & 31 : first & 15;
    for (int more = (first >= 0xC0) + (first >= 0xE0); more > 0 && i + 1 < bytes.size(); --more) {
      unit = static_cast<char16_t>(unit << 6 | (bytes[++i] & 63));
    }
    units.append(reinterpret_cast<const char*>(&unit), 2);
  }
  return units;
}

}  // namespace

std::string converted(const std::string& bytes, uint32_t from, uint32_t to) {
  if (from == to) return bytes;
  const auto through = [](toolbox::Bytes (*convert)(toolbox::ByteView), const std::string& text) {
    const auto* begin = reinterpret_cast<const uint8_t*>(text.data());
    const toolbox::Bytes result = convert({begin, text.size()});
    return std::string(result.begin(), result.end());
  };
  const std::string utf8 = from == krz::kUTF8    ? bytes
                           : from == krz::kUTF16 ? utf8_of_units(bytes)
                                                 : through(toolbox::utf8_of_mac_roman, bytes);
  return to == krz::kUTF8    ? utf8
         : to == krz::kUTF16 ? units_of_utf8(utf8)
                             : through(toolbox::mac_roman_of_utf8, utf8);
}

}  // namespace fake_host
