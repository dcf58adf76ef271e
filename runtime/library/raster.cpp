#include "library/raster.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace krz {

namespace {

// Heights in every row of pixels at which edges are asked for.
constexpr int kHeights = 8;

uint8_t mixed(uint32_t under, uint32_t over, uint32_t coverage) {
  return static_cast<uint8_t>((under * (255 - coverage) + over * coverage + 127) / 255);
}

}  // namespace

Raster::Raster(PicturePixels& pixels, uint32_t color)
    : pixels_(pixels),
      at_(pixels.places()),
      red_(static_cast<uint8_t>(color >> 16)),
      green_(static_cast<uint8_t>(color >> 8)),
      blue_(static_cast<uint8_t>(color)) {}

void Raster::mix(uint8_t* pixel, uint32_t coverage) const {
  // Colours are multiplied by their alpha, so all four components mix alike.
  pixel[at_.red] = mixed(pixel[at_.red], red_, coverage);
  pixel[at_.green] = mixed(pixel[at_.green], green_, coverage);
  pixel[at_.blue] = mixed(pixel[at_.blue], blue_, coverage);
  pixel[at_.alpha] = mixed(pixel[at_.alpha], 255, coverage);
}

void Raster::fill_rect(int32_t x, int32_t y, int32_t width, int32_t height) {
  const auto left = std::max(x, 0);
  const auto top = std::max(y, 0);
  const auto right = static_cast<int32_t>(std::min<int64_t>(int64_t{x} + width, pixels_.width()));
  const auto bottom =
      static_cast<int32_t>(std::min<int64_t>(int64_t{y} + height, pixels_.height()));
  if (left >= right || top >= bottom) return;
  uint8_t* const first = pixels_.pixel(left, top);
  for (int32_t i = 0; i < right - left; ++i) mix(first + size_t(i) * 4, 255);
  for (int32_t row = top + 1; row < bottom; ++row)
    std::memcpy(pixels_.pixel(left, row), first, size_t(right - left) * 4);
}

template <class Edges>
void Raster::fill_between(double top, double bottom, Edges edges) {
  const double width = pixels_.width();
  const auto first =
      static_cast<int32_t>(std::floor(std::clamp(top, 0.0, double(pixels_.height()))));
  const auto last =
      static_cast<int32_t>(std::ceil(std::clamp(bottom, 0.0, double(pixels_.height()))));
  std::vector<float> covered(size_t(pixels_.width()) + 1);
  for (int32_t y = first; y < last; ++y) {
    int32_t from = pixels_.width();
    int32_t until = 0;
    for (int i = 0; i < kHeights; ++i) {
      const double height = y + (i + 0.5) / kHeights;
      if (height < top || height >= bottom) continue;
      double left = 0, right = 0;
      edges(height, left, right);
      left = std::clamp(left, 0.0, width);
      right = std::clamp(right, 0.0, width);
      if (left >= right) continue;
      const auto first_pixel = static_cast<int32_t>(left);
      const auto end_pixel = static_cast<int32_t>(std::ceil(right));
      for (int32_t x = first_pixel; x < end_pixel; ++x) {
        const double part = std::min(right, x + 1.0) - std::max(left, double(x));
        covered[size_t(x)] += static_cast<float>(part / kHeights);
      }
      from = std::min(from, first_pixel);
      until = std::max(until, end_pixel);
    }
    for (int32_t x = from; x < until; ++x) {
      const auto coverage = static_cast<uint32_t>(std::lround(covered[size_t(x)] * 255));
      if (coverage > 0) mix(pixels_.pixel(x, y), std::min(coverage, 255u));
      covered[size_t(x)] = 0;
    }
  }
}

void Raster::fill_oval(int32_t x, int32_t y, int32_t width, int32_t height) {
  if (width <= 0 || height <= 0) return;
  const double radius_x = width / 2.0;
  const double radius_y = height / 2.0;
  fill_between(y, double(y) + height, [&](double at, double& left, double& right) {
    const double part = (at - y - radius_y) / radius_y;
    const double half = radius_x * std::sqrt(std::max(0.0, 1 - part * part));
    left = x + radius_x - half;
    right = x + radius_x + half;
  });
}

void Raster::line(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t width) {
  const double half = std::max(width, 1) / 2.0;
  const double length = std::hypot(double(x2) - x1, double(y2) - y1);
  // Along and across the line, half a pen long.
  const double along_x = length > 0 ? (double(x2) - x1) / length * half : half;
  const double along_y = length > 0 ? (double(y2) - y1) / length * half : 0;
  const double corners_x[] = {x1 + half - along_x - along_y, x2 + half + along_x - along_y,
                              x2 + half + along_x + along_y, x1 + half - along_x + along_y};
  const double corners_y[] = {y1 + half - along_y + along_x, y2 + half + along_y + along_x,
                              y2 + half + along_y - along_x, y1 + half - along_y - along_x};
  const auto [top, bottom] = std::minmax_element(std::begin(corners_y), std::end(corners_y));
  fill_between(*top, *bottom, [&](double at, double& left, double& right) {
    left = 1e10;
    right = -1e10;
    for (int i = 0; i < 4; ++i) {
      const int k = (i + 1) % 4;
      const double from = corners_y[i], to = corners_y[k];
      if (from == to || at < std::min(from, to) || at > std::max(from, to)) continue;
      const double x = corners_x[i] + (at - from) / (to - from) * (corners_x[k] - corners_x[i]);
      left = std::min(left, x);
      right = std::max(right, x);
    }
  });
}

void Raster::cover(int64_t left, int64_t top, int32_t width, int32_t height,
                   const uint8_t* coverage, int32_t bytes_per_row) {
  const int64_t first_row = std::max<int64_t>(0, -top);
  const int64_t end_row = std::min<int64_t>(height, pixels_.height() - top);
  const int64_t first = std::max<int64_t>(0, -left);
  const int64_t end = std::min<int64_t>(width, pixels_.width() - left);
  for (int64_t y = first_row; y < end_row; ++y) {
    for (int64_t x = first; x < end; ++x) {
      if (const uint8_t covered = coverage[y * bytes_per_row + x])
        mix(pixels_.pixel(static_cast<int32_t>(left + x), static_cast<int32_t>(top + y)), covered);
    }
  }
}

}  // namespace krz
