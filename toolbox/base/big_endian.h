// Big-endian numbers in bytes, as the file format stores them.
#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace toolbox {

/// The number of type `T` whose big-endian bytes begin at `bytes`, which need not be aligned.
template <std::integral T>
inline T load_big_endian(const void* bytes) {
  using Unsigned = std::make_unsigned_t<T>;
  Unsigned value;
  std::memcpy(&value, bytes, sizeof value);
  if constexpr (std::endian::native == std::endian::little && sizeof(T) > 1) {
    if constexpr (sizeof(T) == 2) value = __builtin_bswap16(value);
    if constexpr (sizeof(T) == 4) value = __builtin_bswap32(value);
    if constexpr (sizeof(T) == 8) value = __builtin_bswap64(value);
  }
  return static_cast<T>(value);
}

/// Writes the big-endian bytes of `value` at `bytes`, which need not be aligned.
template <std::integral T>
inline void store_big_endian(void* bytes, T value) {
  auto swapped = static_cast<std::make_unsigned_t<T>>(value);
  if constexpr (std::endian::native == std::endian::little && sizeof(T) > 1) {
    if constexpr (sizeof(T) == 2) swapped = __builtin_bswap16(swapped);
    if constexpr (sizeof(T) == 4) swapped = __builtin_bswap32(swapped);
    if constexpr (sizeof(T) == 8) swapped = __builtin_bswap64(swapped);
  }
  std::memcpy(bytes, &swapped, sizeof swapped);
}

}  // namespace toolbox
