#include "memory/pixel_memory.h"

#include <sys/mman.h>

#include <cstdlib>

namespace toolbox {

void FreePixels::operator()(void* memory) const {
  if (mapped_bytes > 0) {
    munmap(memory, mapped_bytes);
  } else {
    std::free(memory);
  }
}

PixelMemory allocate_pixels(size_t bytes) {
  constexpr size_t kLargePage = size_t{2} << 20;
  if (bytes > kMostPixelBytes) return nullptr;
  if (bytes < 2 * kLargePage) {
    return PixelMemory(static_cast<uint8_t*>(std::calloc(bytes > 0 ? bytes : 1, 1)), FreePixels());
  }
  // Large pages begin at multiples of their size: what is around them is given back.
  const size_t size = (bytes + kLargePage - 1) / kLargePage * kLargePage;
  void* const mapped =
      mmap(nullptr, size + kLargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) return nullptr;
  auto* const first = static_cast<uint8_t*>(mapped);
  const size_t in_front =
      (kLargePage - reinterpret_cast<uintptr_t>(first) % kLargePage) % kLargePage;
  if (in_front > 0) munmap(first, in_front);
  if (in_front < kLargePage) munmap(first + in_front + size, kLargePage - in_front);
  // A system without large pages refuses, and nothing is lost.
  static_cast<void>(madvise(first + in_front, size, MADV_HUGEPAGE));
  return PixelMemory(first + in_front, FreePixels{size});
}

}  // namespace toolbox
