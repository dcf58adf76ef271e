// Exact arithmetic for times in different scales: 128 bits in between, and each rounding by name.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace toolbox {

__extension__ using Int128 = __int128;

/// Rates are 16.16 fixed point.
inline constexpr int64_t kRateOne = 0x10000;

/// Times above this are damage; keeping below it leaves room to add two of them.
inline constexpr int64_t kTimeLimit = std::numeric_limits<int64_t>::max() / 4;

inline int64_t clamped_time(Int128 time) {
  if (time > kTimeLimit) return kTimeLimit;
  return time < -kTimeLimit ? -kTimeLimit : static_cast<int64_t>(time);
}

inline int64_t clamped_unsigned_time(uint64_t time) {
  return time > static_cast<uint64_t>(kTimeLimit) ? kTimeLimit : static_cast<int64_t>(time);
}

/// `time` and `ticks` later, not above kTimeLimit.
inline int64_t advanced(int64_t time, uint64_t ticks) {
  if (ticks > static_cast<uint64_t>(kTimeLimit)) return kTimeLimit;
  return std::min(time + static_cast<int64_t>(ticks), kTimeLimit);
}

/// REQUIRES for all three: denominator > 0.
inline int64_t divide_down(Int128 numerator, Int128 denominator) {
  Int128 quotient = numerator / denominator;
  if (numerator % denominator < 0) --quotient;
  return clamped_time(quotient);
}
inline int64_t divide_up(Int128 numerator, Int128 denominator) {
  Int128 quotient = numerator / denominator;
  if (numerator % denominator > 0) ++quotient;
  return clamped_time(quotient);
}
/// Halves go up.
inline int64_t divide_nearest(Int128 numerator, Int128 denominator) {
  return divide_down(numerator + denominator / 2, denominator);
}

/// `time` of one scale in another, to the nearest unit. REQUIRES: both scales > 0.
inline int64_t rescale(int64_t time, uint32_t from_scale, uint32_t to_scale) {
  return divide_nearest(Int128{time} * to_scale, from_scale);
}

}  // namespace toolbox
