// Memory for pixels, which come in large pieces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace toolbox {

/// Gives memory back the way it came.
struct FreePixels {
  size_t mapped_bytes = 0;  // 0: it came from the heap
  void operator()(void* memory) const;
};
using PixelMemory = std::unique_ptr<uint8_t[], FreePixels>;

/// The most bytes of pixels in one piece.
inline constexpr size_t kMostPixelBytes = size_t{512} << 20;

/// Memory full of zeros. First touches are what large pictures cost most; the system is asked for
/// large pages, which are touched less often. Null without memory and beyond kMostPixelBytes.
PixelMemory allocate_pixels(size_t bytes);

}  // namespace toolbox
