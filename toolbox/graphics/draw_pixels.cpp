// Filling and copying pixels through regions.
#include <algorithm>
#include <cstring>
#include <vector>

#include "graphics/pixels.h"

namespace toolbox {

namespace {

/// Calls visit(y, left, right) for every span of a region, row by row.
template <class Visit>
void for_each_span(const Region& region, Visit visit) {
  region.for_each_band([&](int32_t top, int32_t bottom, std::span<const int16_t> edges) {
    for (int32_t y = top; y < bottom; ++y) {
      for (size_t i = 0; i + 1 < edges.size(); i += 2) visit(y, edges[i], edges[i + 1]);
    }
  });
}

Region part_inside(const Region& region, const Box& box) {
  return Region::combine(region, Region::rectangle(box), Region::Operation::kIntersection);
}

Color color_of_pattern(const Fill& with, int32_t x, int32_t y) {
  return with.pattern[y & 7] >> (7 - (x & 7)) & 1 ? with.foreground : with.background;
}

/// What the pixel that is drawn makes of the one that is there. Modes work on ink, the bits of what
/// a colour lacks of white.
Color meet(Transfer transfer, Color drawn, Color there) {
  const Color ink = ~drawn, ink_there = ~there;
  const auto with_ink = [](Color result) { return ~result | kBlack; };
  switch (transfer) {
    case Transfer::kCopy:
      return drawn;
    case Transfer::kTransparent:
      return (drawn | kBlack) == kWhite ? there : drawn;
    case Transfer::kOr:
      return with_ink(ink_there | ink);
    case Transfer::kXor:
      return with_ink(ink_there ^ ink);
    case Transfer::kClear:
      return with_ink(ink_there & ~ink);
    case Transfer::kNotCopy:
      return with_ink(drawn);
    case Transfer::kNotOr:
      return with_ink(ink_there | drawn);
    case Transfer::kNotXor:
      return with_ink(ink_there ^ drawn);
    case Transfer::kNotClear:
      return with_ink(ink_there & ~drawn);
  }
  return there;
}

/// Black becomes the foreground, white stays, what is between lies between.
Color tinted(Color color, Color foreground) {
  Color result = color & 0xFF000000;
  for (int shift = 0; shift < 24; shift += 8) {
    const uint32_t from = foreground >> shift & 0xFF, level = color >> shift & 0xFF;
    result |= (from + (255 - from) * level / 255) << shift;
  }
  return result;
}

/// The rows of a source as colours, each read once for all rows that are made of it.
class SourceRows {
 public:
  SourceRows(const Pixels& source, const Copy& how)
      : source_(source), how_(how), part_(intersection(how.from, source.bounds)) {
    row_.assign(static_cast<size_t>(how.from.width()), kWhite);
  }

  /// The row at `y`, from how.from.left on; white outside of the source.
  std::span<const Color> row(int32_t y) {
    if (y == y_) return row_;
    y_ = y;
    if (part_.empty() || y < part_.top || y >= part_.bottom) {
      std::fill(row_.begin(), row_.end(), kWhite);
      return row_;
    }
    const auto run = std::span(row_).subspan(static_cast<size_t>(part_.left - how_.from.left),
                                             static_cast<size_t>(part_.width()));
    read_pixels(source_, y, part_.left, run);
    if ((how_.foreground | kBlack) != kBlack) {
      for (Color& color : run) color = tinted(color, how_.foreground);
    }
    return row_;
  }

 private:
  const Pixels& source_;
  const Copy& how_;
  Box part_;
  std::vector<Color> row_;
  int32_t y_ = INT32_MIN;
};

/// For each place from `start` to `end` of the destination the place in the source that it is made
/// of, from 0 on.
std::vector<int32_t> source_places(int32_t start, int32_t end, int32_t to_start, int32_t to_length,
                                   int32_t from_length) {
  std::vector<int32_t> places;
  for (int32_t at = start; at < end; ++at) {
    places.push_back(static_cast<int32_t>(int64_t{at - to_start} * from_length / to_length));
  }
  return places;
}

bool is_plain(const Pixels& source, const Pixels& destination, const Copy& how) {
  return how.transfer == Transfer::kCopy && (how.foreground | kBlack) == kBlack &&
         source.depth == destination.depth && source.depth >= 8 &&
         how.from.width() == how.to.width() && how.from.height() == how.to.height() &&
         intersection(how.from, source.bounds) == how.from;
}

}  // namespace

void fill(const Pixels& pixels, const Region& region, const Fill& with) {
  const bool is_solid = std::all_of(with.pattern, with.pattern + 8,
                                    [&](uint8_t row) { return row == with.pattern[0]; }) &&
                        (with.pattern[0] == 0xFF || with.pattern[0] == 0);
  std::vector<Color> run(static_cast<size_t>(std::max(pixels.bounds.width(), 0)),
                         color_of_pattern(with, 0, 0));
  for_each_span(part_inside(region, pixels.bounds), [&](int32_t y, int32_t left, int32_t right) {
    const auto colors = std::span(run).first(static_cast<size_t>(right - left));
    if (!is_solid) {
      for (int32_t x = left; x < right; ++x) {
        colors[static_cast<size_t>(x - left)] = color_of_pattern(with, x, y);
      }
    }
    write_pixels(pixels, y, left, colors);
  });
}

void copy(const Pixels& source, const Pixels& destination, const Copy& how) {
  if (how.from.empty() || how.to.empty()) return;
  if (source.base == destination.base) {
    // Drawn over itself: from a copy, so that no pixel is read after it was drawn.
    std::vector<uint8_t> pixels(
        source.base, source.base + source.row_bytes * std::max(source.bounds.height(), 0));
    Pixels before = source;
    before.base = pixels.data();
    if (before.base != destination.base && !pixels.empty()) copy(before, destination, how);
    return;
  }
  const Box box = intersection(how.to, destination.bounds);
  const Region region = how.mask == nullptr ? Region::rectangle(box) : part_inside(*how.mask, box);
  if (is_plain(source, destination, how)) {
    const int64_t bytes = source.depth / 8;
    for_each_span(region, [&](int32_t y, int32_t left, int32_t right) {
      const int32_t from_y = y - how.to.top + how.from.top;
      const int32_t from_x = left - how.to.left + how.from.left;
      std::memcpy(destination.row(y) + (left - destination.bounds.left) * bytes,
                  source.row(from_y) + (from_x - source.bounds.left) * bytes,
                  static_cast<size_t>((right - left) * bytes));
    });
    return;
  }
  SourceRows rows(source, how);
  const std::vector<int32_t> source_columns =
      source_places(box.left, box.right, how.to.left, how.to.width(), how.from.width());
  const std::vector<int32_t> source_rows =
      source_places(box.top, box.bottom, how.to.top, how.to.height(), how.from.height());
  std::vector<Color> run(source_columns.size());
  for_each_span(region, [&](int32_t y, int32_t left, int32_t right) {
    const auto row = rows.row(how.from.top + source_rows[static_cast<size_t>(y - box.top)]);
    const auto columns =
        std::span(source_columns)
            .subspan(static_cast<size_t>(left - box.left), static_cast<size_t>(right - left));
    const auto colors = std::span(run).first(columns.size());
    const auto drawn = [&](size_t i) { return row[static_cast<size_t>(columns[i])]; };
    if (how.transfer == Transfer::kCopy) {
      for (size_t i = 0; i < colors.size(); ++i) colors[i] = drawn(i);
    } else {
      read_pixels(destination, y, left, colors);
      for (size_t i = 0; i < colors.size(); ++i) {
        colors[i] = meet(how.transfer, drawn(i), colors[i]);
      }
    }
    write_pixels(destination, y, left, colors, how.nearest);
  });
}

}  // namespace toolbox
