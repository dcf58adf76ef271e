// Numbers of scripts as fixed-point numbers of the toolbox.
#pragma once

#include <Carbon/MacTypes.h>

namespace krz {

/// The value in 16.16, cut toward zero; what it cannot hold becomes its nearest end, and no number
/// 0.
constexpr Fixed FixedFromDouble(double value) {
  const double scaled = value * 65536.0;
  if (scaled >= 2147483647.0) return 0x7FFFFFFF;
  if (scaled <= -2147483648.0) return -0x7FFFFFFF - 1;
  return scaled == scaled ? static_cast<Fixed>(scaled) : 0;
}

}  // namespace krz
