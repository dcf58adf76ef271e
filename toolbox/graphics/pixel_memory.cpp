#include "graphics/pixel_memory.h"

#include <sys/mman.h>

namespace toolbox {

PixelMemory allocate_pixels(int64_t bytes) {
  constexpr size_t kLargePage = size_t{2} << 20;
  if (bytes < 0 || bytes > kMostPixelBytes) return nullptr;
  const auto size = static_cast<size_t>(bytes);
  if (size < 2 * kLargePage) {
    return PixelMemory(static_cast<uint8_t*>(std::malloc(size > 0 ? size : 1)));
  }
  const size_t rounded = (size + kLargePage - 1) / kLargePage * kLargePage;
  PixelMemory memory(static_cast<uint8_t*>(std::aligned_alloc(kLargePage, rounded)));
  // A system without large pages refuses, and nothing is lost.
  if (memory) static_cast<void>(madvise(memory.get(), rounded, MADV_HUGEPAGE));
  return memory;
}

}  // namespace toolbox
