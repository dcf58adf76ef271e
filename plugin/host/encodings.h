// The text encodings that cross between host, module and toolbox.
#pragma once

#include <cstdint>

namespace krz {

inline constexpr uint32_t kMacRoman = 0;
inline constexpr uint32_t kUTF16 = 0x100;  // native byte order
inline constexpr uint32_t kASCII = 0x600;
inline constexpr uint32_t kUTF8 = 0x08000100;
inline constexpr uint32_t kUTF32 = 0x0C000100;

}  // namespace krz
