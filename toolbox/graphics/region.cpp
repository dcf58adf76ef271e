#include "graphics/region.h"

#include <algorithm>
#include <iterator>

#include "base/big_endian.h"
#include "graphics/region_builder.h"

namespace toolbox {

namespace {

constexpr size_t kHead = 10;  // size and box
constexpr int16_t kEnd = 0x7FFF;

Box box_of_record(ByteView record) {
  const auto at = [&](size_t offset) {
    return int32_t{load_big_endian<int16_t>(record.data() + offset)};
  };
  return {at(2), at(4), at(6), at(8)};
}

/// The words behind the head of a record.
class Words {
 public:
  explicit Words(ByteView bytes) : bytes_(bytes) {}
  bool at_end() const { return bytes_.size() < 2; }
  /// REQUIRES: !at_end().
  int16_t next() {
    const auto word = load_big_endian<int16_t>(bytes_.data());
    bytes_ = bytes_.subspan(2);
    return word;
  }

 private:
  ByteView bytes_;
};

bool apply(Region::Operation operation, bool a, bool b) {
  switch (operation) {
    case Region::Operation::kUnion:
      return a || b;
    case Region::Operation::kIntersection:
      return a && b;
    case Region::Operation::kDifference:
      return a && !b;
    case Region::Operation::kExclusiveOr:
      return a != b;
  }
  return false;
}

/// The edges of one row of the result.
void combine_edges(const std::vector<int16_t>& a, const std::vector<int16_t>& b,
                   Region::Operation operation, std::vector<int16_t>& result) {
  result.clear();
  bool inside = false;
  for (size_t i = 0, j = 0; i < a.size() || j < b.size();) {
    const bool from_a = j == b.size() || (i < a.size() && a[i] <= b[j]);
    const int16_t x = from_a ? a[i] : b[j];
    if (i < a.size() && a[i] == x) ++i;
    if (j < b.size() && b[j] == x) ++j;
    // An odd number of edges to the left: inside.
    if (apply(operation, i % 2 != 0, j % 2 != 0) != inside) {
      inside = !inside;
      result.push_back(x);
    }
  }
}

}  // namespace

Box intersection(const Box& a, const Box& b) {
  return {std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
          std::min(a.right, b.right)};
}

void Region::flip(std::vector<int16_t>& edges, std::span<const int16_t> flips) {
  std::vector<int16_t> result;
  result.reserve(edges.size() + flips.size());
  // An edge that is flipped goes, one that was not there comes.
  std::set_symmetric_difference(edges.begin(), edges.end(), flips.begin(), flips.end(),
                                std::back_inserter(result));
  edges.swap(result);
}

Region Region::rectangle(const Box& box) {
  RegionBuilder builder;
  if (!box.empty()) {
    const int16_t edges[] = {static_cast<int16_t>(box.left), static_cast<int16_t>(box.right)};
    builder.add_flips(box.top, edges);
    builder.add_flips(box.bottom, edges);
  }
  return builder.take();
}

std::optional<Region> Region::bounds_of_record(ByteView record) {
  if (record.size() < kHead) return std::nullopt;
  return rectangle(box_of_record(record));
}

std::optional<Region> Region::from_record(ByteView record) {
  if (record.size() < kHead) return std::nullopt;
  const size_t size = load_big_endian<uint16_t>(record.data());
  if (size < kHead || size > record.size() || size % 2 != 0) return std::nullopt;
  const Box box = box_of_record(record);
  if (size == kHead) return rectangle(box);

  RegionBuilder builder;
  std::vector<int16_t> flips;
  int32_t above = INT32_MIN;
  for (Words words(record.subspan(kHead, size - kHead)); !words.at_end();) {
    const int16_t y = words.next();
    if (y == kEnd) {
      // The rows end here, and so does the record.
      if (!words.at_end() || !builder.is_closed()) return std::nullopt;
      Region region = builder.take();
      if (region.bounds() != box) return std::nullopt;
      return region;
    }
    if (y <= above) return std::nullopt;
    above = y;
    flips.clear();
    for (;;) {
      if (words.at_end()) return std::nullopt;
      const int16_t x = words.next();
      if (x == kEnd) break;
      if (!flips.empty() && x <= flips.back()) return std::nullopt;
      flips.push_back(x);
    }
    if (flips.size() % 2 != 0) return std::nullopt;
    builder.add_flips(y, flips);
  }
  return std::nullopt;
}

std::optional<Bytes> Region::record() const {
  size_t size = kHead;
  if (!empty() && !is_rectangle()) {
    size += 2 * (2 * rows_.size() + flips_.size() + 1);
    if (size > kMostRecordBytes || bounds_.right == kEnd || bounds_.bottom == kEnd) {
      return std::nullopt;
    }
  }
  Bytes bytes(size);
  uint8_t* at = bytes.data();
  const auto put = [&](int32_t word) {
    store_big_endian(at, static_cast<uint16_t>(word));
    at += 2;
  };
  put(static_cast<int32_t>(size));
  for (const int32_t edge : {bounds_.top, bounds_.left, bounds_.bottom, bounds_.right}) put(edge);
  if (size == kHead) return bytes;
  for (size_t i = 0; i < rows_.size(); ++i) {
    put(rows_[i].y);
    for (const int16_t x : flips_of(i)) put(x);
    put(kEnd);
  }
  put(kEnd);
  return bytes;
}

Region Region::combine(const Region& a, const Region& b, Operation operation) {
  RegionBuilder builder;
  std::vector<int16_t> edges_a, edges_b, edges;
  for (size_t i = 0, j = 0; i < a.rows_.size() || j < b.rows_.size();) {
    const int32_t row_a = i < a.rows_.size() ? a.rows_[i].y : INT32_MAX;
    const int32_t row_b = j < b.rows_.size() ? b.rows_[j].y : INT32_MAX;
    if (row_a <= row_b) flip(edges_a, a.flips_of(i++));
    if (row_b <= row_a) flip(edges_b, b.flips_of(j++));
    combine_edges(edges_a, edges_b, operation, edges);
    builder.add_edges(std::min(row_a, row_b), edges);
  }
  return builder.take();
}

bool Region::contains(int32_t x, int32_t y) const {
  bool inside = false;
  for (size_t i = 0; i < rows_.size() && rows_[i].y <= y; ++i) {
    const auto flips = flips_of(i);
    // Every flip at or left of the pixel turns it over.
    if ((std::upper_bound(flips.begin(), flips.end(), x) - flips.begin()) % 2 != 0)
      inside = !inside;
  }
  return inside;
}

}  // namespace toolbox
