// Any bytes as the record of a region: what is refused has at most a box, and what is read is the
// same when it is written and read again, has bands in order inside its box, and combines with
// itself to what it must.
#include <cstdlib>

#include "base/big_endian.h"
#include "graphics/region.h"

namespace toolbox {
namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

/// Walks the bands and answers how many pixels they hold.
int64_t check_bands(const Region& region) {
  int64_t pixels = 0;
  int32_t above = INT32_MIN;
  region.for_each_band([&](int32_t top, int32_t bottom, std::span<const int16_t> edges) {
    require(top >= above && top < bottom && edges.size() % 2 == 0 && !edges.empty());
    require(top >= region.bounds().top && bottom <= region.bounds().bottom);
    require(edges.front() >= region.bounds().left && edges.back() <= region.bounds().right);
    for (size_t i = 0; i < edges.size(); i += 2) {
      require(edges[i] < edges[i + 1] && (i == 0 || edges[i] > edges[i - 1]));
      pixels += int64_t{bottom - top} * (edges[i + 1] - edges[i]);
    }
    require(region.contains(edges[0], top) && !region.contains(edges[1], top));
    above = bottom;
  });
  return pixels;
}

void check(const Region& region) {
  using Operation = Region::Operation;
  const int64_t pixels = check_bands(region);
  require((pixels == 0) == region.empty());
  const auto record = region.record();
  // Only an edge where rows end keeps a region that was read from being written.
  if (record) {
    require(load_big_endian<uint16_t>(record->data()) == record->size());
    require(Region::from_record(*record) == region);
  } else {
    require(region.bounds().right == 0x7FFF || region.bounds().bottom == 0x7FFF);
  }
  require(Region::combine(region, region, Operation::kExclusiveOr).empty());
  require(Region::combine(region, region, Operation::kIntersection) == region);
  const Region box = Region::rectangle(region.bounds());
  require(Region::combine(region, box, Operation::kUnion) == box);
  const Region rest = Region::combine(box, region, Operation::kDifference);
  require(check_bands(rest) + pixels == int64_t{box.bounds().width()} * box.bounds().height());
  require(Region::combine(box, rest, Operation::kDifference) == region);
}

}  // namespace
}  // namespace toolbox

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const toolbox::ByteView record(bytes, size);
  if (const auto region = toolbox::Region::from_record(record)) toolbox::check(*region);
  const auto box = toolbox::Region::bounds_of_record(record);
  toolbox::require(box.has_value() == (size >= 10));
  if (box) toolbox::check(*box);
  return 0;
}
