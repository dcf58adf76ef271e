// Regions made row by row, from the top.
#pragma once

#include "graphics/region.h"

namespace toolbox {

/// Takes rows in ascending order; those that change nothing are left out.
class RegionBuilder {
 public:
  /// The row at `y` is as the row above but for these flips, ascending and of even number.
  void add_flips(int32_t y, std::span<const int16_t> flips);

  /// The row at `y` has these edges.
  void add_edges(int32_t y, std::span<const int16_t> edges);

  /// As add_flips for who knows that every span ends: the rows are not followed, is_closed() not
  /// answered and add_edges not to be called.
  void add_untracked_flips(int32_t y, std::span<const int16_t> flips);

  /// Whether every span has ended.
  bool is_closed() const { return edges_.empty(); }

  /// Bytes of the record of a region that is no rectangle.
  size_t record_bytes() const { return 12 + 4 * region_.rows_.size() + 2 * region_.flips_.size(); }

  /// REQUIRES: every span has ended. The builder begins anew.
  Region take();

 private:
  Region region_;
  std::vector<int16_t> edges_;  // of the last row
};

}  // namespace toolbox
