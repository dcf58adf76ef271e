// Memory for the pixels of a world.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace toolbox {

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};
using PixelMemory = std::unique_ptr<uint8_t[], FreeMemory>;

/// The most bytes that the pixels of one world may have.
inline constexpr int64_t kMostPixelBytes = int64_t{512} << 20;

/// Memory with undefined contents. First touches are what large worlds cost most; the system is
/// asked for large pages, which are touched less often. Null without memory and beyond
/// kMostPixelBytes.
PixelMemory allocate_pixels(int64_t bytes);

}  // namespace toolbox
