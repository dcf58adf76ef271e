// Owned and borrowed runs of bytes.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace toolbox {

using Bytes = std::vector<uint8_t>;
using ByteView = std::span<const uint8_t>;

}  // namespace toolbox
