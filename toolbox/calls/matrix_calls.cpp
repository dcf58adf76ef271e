// The arithmetic calls: numbers in fixed point, times in other scales and projections. They leave
// the current error.
#include <QuickTime/QuickTime.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "calls/guard.h"
#include "movie/time_math.h"

namespace {

constexpr double kFixedOne = 65536.0;
constexpr double kFractOne = 1073741824.0;

SInt32 rounded(double value) {
  return static_cast<SInt32>(std::clamp(std::nearbyint(value), -2147483648.0, 2147483647.0));
}

using Row = std::array<double, 9>;  // eight coefficients and the right side

/// Solves eight equations in place; false when they have no single solution.
bool solve(std::array<Row, 8>& rows) {
  for (size_t column = 0; column < 8; ++column) {
    size_t best = column;
    for (size_t row = column + 1; row < 8; ++row) {
      if (std::abs(rows[row][column]) > std::abs(rows[best][column])) best = row;
    }
    if (std::abs(rows[best][column]) < 1e-9) return false;
    std::swap(rows[column], rows[best]);
    for (size_t row = 0; row < 8; ++row) {
      if (row == column) continue;
      const double factor = rows[row][column] / rows[column][column];
      for (size_t i = column; i < 9; ++i) rows[row][i] -= factor * rows[column][i];
    }
  }
  for (size_t row = 0; row < 8; ++row) rows[row][8] /= rows[row][row];
  return true;
}

}  // namespace

TOOLBOX_CALL Fixed Long2Fix(SInt32 value) {
  return static_cast<Fixed>(std::clamp(value, SInt32{-32768}, SInt32{32767}) * 65536 +
                            (value > 32767 ? 0xFFFF : 0));
}

TOOLBOX_CALL SInt32 Fix2Long(Fixed value) {
  // Halves of negative numbers go down, away from zero.
  const int64_t half = value < 0 ? 0x7FFF : 0x8000;
  return static_cast<SInt32>((int64_t{value} + half) >> 16);
}

TOOLBOX_CALL Fixed FixRatio(SInt16 numerator, SInt16 denominator) {
  if (denominator == 0) return numerator < 0 ? INT32_MIN : INT32_MAX;
  return rounded(std::round(numerator * kFixedOne / denominator));
}

TOOLBOX_CALL void TranslateMatrix(MatrixRecord* matrix, Fixed deltaX, Fixed deltaY) {
  if (matrix == nullptr) return;
  Fixed* const row = matrix->matrix[2];
  row[0] = static_cast<Fixed>(static_cast<uint32_t>(row[0]) + static_cast<uint32_t>(deltaX));
  row[1] = static_cast<Fixed>(static_cast<uint32_t>(row[1]) + static_cast<uint32_t>(deltaY));
}

TOOLBOX_CALL void ConvertTimeScale(TimeRecord* time, TimeScale newScale) {
  if (time == nullptr || time->scale <= 0 || newScale <= 0) return;
  const auto value = static_cast<int64_t>((uint64_t{static_cast<uint32_t>(time->value.hi)} << 32) |
                                          time->value.lo);
  const auto converted = static_cast<uint64_t>(
      toolbox::rescale(value, static_cast<uint32_t>(time->scale), static_cast<uint32_t>(newScale)));
  time->value.hi = static_cast<SInt32>(converted >> 32);
  time->value.lo = static_cast<UInt32>(converted);
  time->scale = newScale;
}

TOOLBOX_CALL OSErr QuadToQuadMatrix(const FixedPoint source[4], const FixedPoint dest[4],
                                    MatrixRecord* matrix) {
  if (source == nullptr || dest == nullptr || matrix == nullptr) return paramErr;
  // x' (u x + v y + 1) = a x + c y + tx, and y' likewise; unknown are a c tx b d ty u v.
  std::array<Row, 8> rows{};
  for (size_t i = 0; i < 4; ++i) {
    const double x = source[i].x / kFixedOne, y = source[i].y / kFixedOne;
    const double to_x = dest[i].x / kFixedOne, to_y = dest[i].y / kFixedOne;
    rows[2 * i] = {x, y, 1, 0, 0, 0, -to_x * x, -to_x * y, to_x};
    rows[2 * i + 1] = {0, 0, 0, x, y, 1, -to_y * x, -to_y * y, to_y};
  }
  if (!solve(rows)) {
    *matrix = {
        {{0x10000, 0, 0},
         {0, 0x10000, 0},
         {static_cast<Fixed>(static_cast<uint32_t>(dest[0].x) - static_cast<uint32_t>(source[0].x)),
          static_cast<Fixed>(static_cast<uint32_t>(dest[0].y) - static_cast<uint32_t>(source[0].y)),
          0x40000000}}};
    return paramErr;
  }
  const auto fixed = [&](size_t i) { return rounded(rows[i][8] * kFixedOne); };
  const auto fract = [&](size_t i) { return rounded(rows[i][8] * kFractOne); };
  *matrix = {{{fixed(0), fixed(3), fract(6)},
              {fixed(1), fixed(4), fract(7)},
              {fixed(2), fixed(5), 0x40000000}}};
  return noErr;
}
