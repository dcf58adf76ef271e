// Regions out of bitmaps, a word of pixels at a time.
#include <algorithm>
#include <bit>
#include <cstring>

#include "base/big_endian.h"
#include "graphics/region_builder.h"

namespace toolbox {

namespace {

/// A row of bits in words of 64, the leftmost bit highest; what is behind the row's width is 0.
class BitRows {
 public:
  explicit BitRows(const BitImage& image)
      : image_(image), bytes_(static_cast<size_t>(image.bounds.width() + 7) / 8) {
    const int spare = static_cast<int>(bytes_ * 8) - image.bounds.width();
    last_mask_ = static_cast<uint8_t>(0xFF << spare);
  }

  size_t words() const { return (bytes_ + 7) / 8; }

  void read(int32_t row, std::vector<uint64_t>& words) const {
    const uint8_t* const bits = image_.bits + row * image_.row_bytes;
    const size_t whole = (bytes_ - 1) / 8;
    for (size_t i = 0; i < whole; ++i) words[i] = load_big_endian<uint64_t>(bits + 8 * i);
    uint8_t last[8] = {};
    std::memcpy(last, bits + 8 * whole, bytes_ - 8 * whole);
    last[bytes_ - 1 - 8 * whole] &= last_mask_;
    words[whole] = load_big_endian<uint64_t>(last);
  }

 private:
  const BitImage& image_;
  size_t bytes_;
  uint8_t last_mask_;
};

}  // namespace

std::optional<Region> Region::from_bits(const BitImage& image) {
  if (image.bounds.empty()) return Region();
  const BitRows rows(image);
  std::vector<uint64_t> above(rows.words()), row(rows.words());
  std::vector<int16_t> flips;
  RegionBuilder builder;
  for (int32_t y = 0; y <= image.bounds.height(); ++y) {
    if (y < image.bounds.height()) {
      rows.read(y, row);
    } else {
      std::fill(row.begin(), row.end(), 0);  // below the last row all spans end
    }
    flips.clear();
    const auto add = [&](size_t bit) {
      flips.push_back(static_cast<int16_t>(image.bounds.left + static_cast<int32_t>(bit)));
    };
    // Where this row and the one above begin or cease to differ, an edge flips.
    uint64_t before = 0;
    for (size_t i = 0; i < row.size(); ++i) {
      const uint64_t differing = row[i] ^ above[i];
      uint64_t changes = differing ^ (differing >> 1 | before << 63);
      before = differing & 1;
      while (changes != 0) {
        const int bit = std::countl_zero(changes);
        changes &= ~(uint64_t{1} << 63 >> bit);
        add(64 * i + static_cast<size_t>(bit));
      }
    }
    if (before != 0) add(64 * row.size());  // a row that fills its last word ends behind it
    builder.add_untracked_flips(image.bounds.top + y, flips);
    if (builder.record_bytes() > kMostRecordBytes) return std::nullopt;
    above.swap(row);
  }
  return builder.take();
}

}  // namespace toolbox
