#include "bitmaps/scaled_rows.h"

#include <algorithm>
#include <cmath>

namespace toolbox {

ScaledPixel::ScaledPixel(uint32_t from, uint64_t to, uint64_t index) {
  const double step = static_cast<double>(from) / static_cast<double>(to);
  if (step > 1) {
    // It covers a span of the source; the pixels at both ends count as far as they are covered.
    const double begin = static_cast<double>(index) * step;
    const double end = std::min(begin + step, static_cast<double>(from));
    first_ = std::min(static_cast<uint32_t>(begin), from - 1);
    const uint32_t last = std::clamp(static_cast<uint32_t>(std::ceil(end)) - 1, first_, from - 1);
    count_ = last - first_ + 1;
    if (count_ == 1) return;
    const double length = end - begin;
    first_weight_ = static_cast<float>((first_ + 1 - begin) / length);
    inner_weight_ = static_cast<float>(1 / length);
    last_weight_ = static_cast<float>((end - last) / length);
    return;
  }
  // Its middle lies between the middles of two.
  const double middle = (static_cast<double>(index) + 0.5) * step - 0.5;
  const double clamped = std::clamp(middle, 0.0, static_cast<double>(from - 1));
  first_ = static_cast<uint32_t>(clamped);
  const auto part = static_cast<float>(clamped - first_);
  if (part <= 0) return;
  count_ = 2;
  first_weight_ = 1 - part;
  last_weight_ = part;
}

float ScaledPixel::weight(uint32_t i) const {
  if (i == 0) return first_weight_;
  return i == count_ - 1 ? last_weight_ : inner_weight_;
}

ScaledRows::ScaledRows(const Bitmap& source, const PixelRect& place, uint32_t first, uint32_t count)
    : source_(source),
      height_(static_cast<uint64_t>(place.bottom - place.top)),
      first_(first),
      same_size_(place.right - place.left == source.width && height_ == source.height),
      result_(count) {
  if (same_size_) return;
  const auto width = static_cast<uint64_t>(place.right - place.left);
  columns_.reserve(count);
  for (uint32_t i = 0; i < count; ++i) columns_.emplace_back(source.width, width, first + i);
  read_.resize(source.width);
  summed_.resize(size_t{source.width} * 4);
}

const Pixel* ScaledRows::row(uint64_t index) {
  const auto count = static_cast<uint32_t>(result_.size());
  const PixelFormat& format = source_.format;
  if (same_size_) {
    format.read(source_.row(static_cast<uint32_t>(index)) + first_ * format.bytes_per_pixel(),
                result_.data(), count);
    return result_.data();
  }
  const ScaledPixel vertical(source_.height, height_, index);
  std::fill(summed_.begin(), summed_.end(), 0.0f);
  for (uint32_t i = 0; i < vertical.count(); ++i) {
    const float weight = vertical.weight(i);
    format.read(source_.row(vertical.first() + i), read_.data(), source_.width);
    float* sum = summed_.data();
    for (const Pixel& pixel : read_) {
      sum[0] += weight * pixel.red;
      sum[1] += weight * pixel.green;
      sum[2] += weight * pixel.blue;
      sum[3] += weight * pixel.alpha;
      sum += 4;
    }
  }
  for (uint32_t i = 0; i < count; ++i) {
    const ScaledPixel& column = columns_[i];
    float sums[4] = {};
    for (uint32_t k = 0; k < column.count(); ++k) {
      const float weight = column.weight(k);
      const float* const from = &summed_[size_t{column.first() + k} * 4];
      for (int c = 0; c < 4; ++c) sums[c] += weight * from[c];
    }
    const auto whole = [](float sum) {
      return static_cast<uint8_t>(std::clamp(sum + 0.5f, 0.0f, 255.0f));
    };
    const uint8_t alpha = whole(sums[3]);
    result_[i] = {std::min(whole(sums[0]), alpha), std::min(whole(sums[1]), alpha),
                  std::min(whole(sums[2]), alpha), alpha};
  }
  return result_.data();
}

}  // namespace toolbox
