// Regions: sets of pixels of any shape, in the scanline form that movie files store.
//
//        10      30          Every row lists where inside and outside change against the row above:
//   0 ┌──────┐               0: 0 10     the span 0-10 begins
//     │      │              20: 10 30    and goes on to 30
//  20 │      └──────┐       40: 0 30     all that is open ends
//  40 └─────────────┘
//
// Rows that change nothing are left out, so that equal sets have equal rows.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/bytes.h"

namespace toolbox {

/// A rectangle of pixels; the right column and the bottom row are outside. Numbers are those of 16
/// bits, held in more so that differences fit.
struct Box {
  int32_t top = 0;
  int32_t left = 0;
  int32_t bottom = 0;
  int32_t right = 0;

  int32_t width() const { return right - left; }
  int32_t height() const { return bottom - top; }
  bool empty() const { return right <= left || bottom <= top; }
  bool operator==(const Box&) const = default;
};

/// What two boxes have in common; may be empty.
Box intersection(const Box& a, const Box& b);

/// One bit a pixel, the leftmost in the highest bit; 1 is inside. Borrows the bits.
struct BitImage {
  const uint8_t* bits = nullptr;
  int64_t row_bytes = 0;
  Box bounds;
};

class Region {
 public:
  /// A record states its size in 16 bits, and it is even.
  static constexpr size_t kMostRecordBytes = 0xFFFE;

  enum class Operation { kUnion, kIntersection, kDifference, kExclusiveOr };

  /// The empty region.
  Region() = default;
  static Region rectangle(const Box& box);

  /// The pixels of a bitmap that are 1; nothing when the record would pass kMostRecordBytes, which
  /// is noticed on the way.
  static std::optional<Region> from_bits(const BitImage& image);

  /// Reads a record; bytes behind the size that it states do not count. Nothing when it is damaged:
  /// rows or columns out of order, spans that never end, a box that is not that of the rows.
  static std::optional<Region> from_record(ByteView record);

  /// The rectangle that a record states, for one whose rows are damaged; nothing without a whole
  /// box.
  static std::optional<Region> bounds_of_record(ByteView record);

  /// The record in canonical form: ten bytes for a rectangle and for nothing at all. Nothing when
  /// it would pass kMostRecordBytes, or has an edge at 32767, which ends rows, and is no rectangle.
  std::optional<Bytes> record() const;

  static Region combine(const Region& a, const Region& b, Operation operation);

  bool empty() const { return rows_.empty(); }
  const Box& bounds() const { return bounds_; }
  bool is_rectangle() const { return flips_.size() == 4 && rows_.size() == 2; }
  bool contains(int32_t x, int32_t y) const;
  bool operator==(const Region& other) const = default;

  /// Calls visit(top, bottom, edges) from top to bottom for each run of equal rows that is not
  /// empty; `edges` are left and right ends of its spans by turns, ascending.
  template <class Visit>
  void for_each_band(Visit visit) const {
    std::vector<int16_t> edges;
    for (size_t i = 0; i + 1 < rows_.size(); ++i) {
      flip(edges, flips_of(i));
      if (!edges.empty()) {
        visit(int32_t{rows_[i].y}, int32_t{rows_[i + 1].y}, std::span<const int16_t>(edges));
      }
    }
  }

 private:
  friend class RegionBuilder;

  struct Row {
    int16_t y = 0;
    uint32_t first = 0;  // of its flips; they end where those of the next row begin
    bool operator==(const Row&) const = default;
  };

  std::span<const int16_t> flips_of(size_t row) const {
    const size_t end = row + 1 < rows_.size() ? rows_[row + 1].first : flips_.size();
    return std::span(flips_).subspan(rows_[row].first, end - rows_[row].first);
  }

  /// The edges of a row out of those of the row above.
  static void flip(std::vector<int16_t>& edges, std::span<const int16_t> flips);

  std::vector<Row> rows_;  // the last one ends every span
  std::vector<int16_t> flips_;
  Box bounds_;
};

}  // namespace toolbox
