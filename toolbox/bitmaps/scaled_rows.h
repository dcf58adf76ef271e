// A bitmap, scaled, a row at a time: smaller by averaging, larger by linear interpolation.
#pragma once

#include <vector>

#include "bitmaps/bitmap_context.h"

namespace toolbox {

/// The pixels that make up one scaled pixel, in one direction: they begin at `first` and their
/// weights sum up to 1.
class ScaledPixel {
 public:
  /// Of the pixel `index` when `from` pixels become `to`.
  ScaledPixel(uint32_t from, uint64_t to, uint64_t index);

  uint32_t first() const { return first_; }
  uint32_t count() const { return count_; }
  float weight(uint32_t i) const;

 private:
  uint32_t first_ = 0;
  uint32_t count_ = 1;
  float first_weight_ = 1;
  float inner_weight_ = 0;
  float last_weight_ = 0;
};

class ScaledRows {
 public:
  /// `source` scaled to the size of `place`; of every row `count` pixels beginning with `first`.
  ScaledRows(const Bitmap& source, const PixelRect& place, uint32_t first, uint32_t count);

  /// A row, 0 being the uppermost; it lives until the next one is asked for.
  const Pixel* row(uint64_t index);

 private:
  const Bitmap& source_;
  uint64_t height_;
  uint32_t first_;
  bool same_size_;
  std::vector<ScaledPixel> columns_;
  std::vector<Pixel> read_;    // one row of the source
  std::vector<float> summed_;  // weighted rows of the source, four components a pixel
  std::vector<Pixel> result_;
};

}  // namespace toolbox
