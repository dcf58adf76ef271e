#include "graphics/region_builder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace toolbox {

void RegionBuilder::add_untracked_flips(int32_t y, std::span<const int16_t> flips) {
  if (flips.empty()) return;
  Box& bounds = region_.bounds_;
  if (region_.rows_.empty()) bounds = {y, flips.front(), y, flips.back()};
  // The leftmost and the rightmost edge are flips of the rows in which they begin.
  bounds.left = std::min<int32_t>(bounds.left, flips.front());
  bounds.right = std::max<int32_t>(bounds.right, flips.back());
  bounds.bottom = y;
  region_.rows_.push_back({static_cast<int16_t>(y), static_cast<uint32_t>(region_.flips_.size())});
  region_.flips_.insert(region_.flips_.end(), flips.begin(), flips.end());
}

void RegionBuilder::add_flips(int32_t y, std::span<const int16_t> flips) {
  Region::flip(edges_, flips);
  add_untracked_flips(y, flips);
}

void RegionBuilder::add_edges(int32_t y, std::span<const int16_t> edges) {
  std::vector<int16_t> flips;
  std::set_symmetric_difference(edges_.begin(), edges_.end(), edges.begin(), edges.end(),
                                std::back_inserter(flips));
  edges_.assign(edges.begin(), edges.end());
  add_untracked_flips(y, flips);
}

Region RegionBuilder::take() {
  edges_.clear();
  return std::exchange(region_, Region());
}

}  // namespace toolbox
