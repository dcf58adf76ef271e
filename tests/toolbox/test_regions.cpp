// Regions against bitmaps: whatever is done to a region, asking for each pixel must agree.
#include <gtest/gtest.h>

#include <random>

#include "graphics/region.h"
#include "test_bytes.h"

namespace toolbox::testing {
namespace {

/// A set of pixels, one byte each, in a box.
struct Oracle {
  Box box;
  std::vector<uint8_t> pixels;

  explicit Oracle(const Box& bounds)
      : box(bounds), pixels(static_cast<size_t>(bounds.width() * bounds.height())) {}
  bool at(int32_t x, int32_t y) const {
    if (x < box.left || x >= box.right || y < box.top || y >= box.bottom) return false;
    return pixels[static_cast<size_t>((y - box.top) * box.width() + x - box.left)] != 0;
  }
  template <class Is>
  void set(Is is) {
    size_t i = 0;
    for (int32_t y = 0; y < box.height(); ++y) {
      for (int32_t x = 0; x < box.width(); ++x) pixels[i++] = is(x, y) ? 1 : 0;
    }
  }
  /// Rows with bits behind the last column set, which do not count.
  Bytes bits(int64_t row_bytes) const {
    Bytes bytes(static_cast<size_t>(row_bytes * box.height()), 0xFF);
    for (int32_t y = 0; y < box.height(); ++y) {
      for (int32_t x = 0; x < box.width(); ++x) {
        if (at(box.left + x, box.top + y)) continue;
        bytes[static_cast<size_t>(y * row_bytes + x / 8)] &= static_cast<uint8_t>(~(0x80 >> x % 8));
      }
    }
    return bytes;
  }
};

/// Shapes of many kinds, in boxes of many sizes and places.
Oracle random_shape(std::mt19937& random) {
  const auto pick = [&](int32_t from, int32_t to) {
    return std::uniform_int_distribution<int32_t>(from, to)(random);
  };
  const int32_t left = pick(-300, 300), top = pick(-300, 300);
  const int32_t width = pick(1, 150), height = pick(1, 40);
  Oracle shape({top, left, top + height, left + width});
  const int32_t a = pick(1, 9), b = pick(1, 9), c = pick(0, width), d = pick(0, height);
  switch (pick(0, 9)) {
    case 0:
      shape.set([](auto, auto) { return false; });
      break;
    case 1:
      shape.set([](auto, auto) { return true; });
      break;
    case 2:  // noise
      shape.set([&](auto, auto) { return pick(0, 9) < a; });
      break;
    case 3:
      shape.set([&](auto x, auto y) { return (x / a + y / b) % 2 == 0; });
      break;
    case 4:
      shape.set([&](auto x, auto) { return x % a == 0; });
      break;
    case 5:
      shape.set([&](auto, auto y) { return y % a == 0; });
      break;
    case 6:  // an ellipse with a hole
      shape.set([&](auto x, auto y) {
        const double u = (2.0 * x + 1) / width - 1, v = (2.0 * y + 1) / height - 1;
        const double r = u * u + v * v;
        return r < 1 && r > 0.1 * a;
      });
      break;
    case 7:
      shape.set([&](auto x, auto y) { return x == c || y == d; });
      break;
    case 8:  // a diagonal band
      shape.set([&](auto x, auto y) { return (x + y) % 16 < b; });
      break;
    default:
      shape.set([&](auto x, auto y) { return x < c && y >= d; });
  }
  return shape;
}

Region region_of(const Oracle& shape, int64_t spare = 0) {
  const int64_t row_bytes = (shape.box.width() + 7) / 8 + spare;
  const Bytes bits = shape.bits(row_bytes);
  const auto region = Region::from_bits({bits.data(), row_bytes, shape.box});
  EXPECT_TRUE(region.has_value());
  return region.value_or(Region());
}

template <class Is>
void expect_pixels(const Region& region, const Box& box, Is is) {
  for (int32_t y = box.top - 1; y <= box.bottom; ++y) {
    for (int32_t x = box.left - 1; x <= box.right; ++x) {
      ASSERT_EQ(is(x, y), region.contains(x, y)) << x << ", " << y;
    }
  }
}

TEST(Regions, AgreeWithBitmaps) {
  std::mt19937 random(1);
  for (int round = 0; round < 400; ++round) {
    SCOPED_TRACE(round);
    const Oracle shape = random_shape(random);
    const Region region = region_of(shape, round % 5);
    ASSERT_NO_FATAL_FAILURE(
        expect_pixels(region, shape.box, [&](auto x, auto y) { return shape.at(x, y); }));
    // Bands cover each pixel once, and the box is theirs.
    Oracle painted(shape.box);
    Box extent{INT16_MAX, INT16_MAX, INT16_MIN, INT16_MIN};
    region.for_each_band([&](int32_t top, int32_t bottom, std::span<const int16_t> edges) {
      extent = {std::min(extent.top, top), std::min<int32_t>(extent.left, edges.front()),
                std::max(extent.bottom, bottom), std::max<int32_t>(extent.right, edges.back())};
      for (int32_t y = top; y < bottom; ++y) {
        for (size_t i = 0; i < edges.size(); i += 2) {
          for (int32_t x = edges[i]; x < edges[i + 1]; ++x) {
            ++painted.pixels[static_cast<size_t>((y - shape.box.top) * shape.box.width() + x -
                                                 shape.box.left)];
          }
        }
      }
    });
    EXPECT_EQ(shape.pixels, painted.pixels);
    EXPECT_EQ(region.empty() ? Box{} : extent, region.bounds());
    // The record says the same, in the one form that there is for it.
    const auto record = region.record();
    ASSERT_TRUE(record.has_value());
    const auto back = Region::from_record(*record + Bytes{1, 2, 3});
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(region, *back);
    EXPECT_EQ(record, back->record());
  }
}

TEST(Regions, CombineAsBitmapsDo) {
  using Operation = Region::Operation;
  std::mt19937 random(2);
  for (int round = 0; round < 100; ++round) {
    const Oracle a = random_shape(random);
    Oracle b = random_shape(random);
    // Near enough to meet.
    b.box = {a.box.top + round % 7, a.box.left - round % 11, a.box.top + round % 7 + b.box.height(),
             a.box.left - round % 11 + b.box.width()};
    const Box both{std::min(a.box.top, b.box.top), std::min(a.box.left, b.box.left),
                   std::max(a.box.bottom, b.box.bottom), std::max(a.box.right, b.box.right)};
    const struct {
      Operation operation;
      bool (*of)(bool, bool);
    } operations[] = {{Operation::kUnion, [](bool i, bool j) { return i || j; }},
                      {Operation::kIntersection, [](bool i, bool j) { return i && j; }},
                      {Operation::kDifference, [](bool i, bool j) { return i && !j; }},
                      {Operation::kExclusiveOr, [](bool i, bool j) { return i != j; }}};
    for (const auto& each : operations) {
      SCOPED_TRACE(std::to_string(round) + " " + std::to_string(static_cast<int>(each.operation)));
      const Region result = Region::combine(region_of(a), region_of(b), each.operation);
      ASSERT_NO_FATAL_FAILURE(expect_pixels(
          result, both, [&](auto x, auto y) { return each.of(a.at(x, y), b.at(x, y)); }));
      const auto record = result.record();
      ASSERT_TRUE(record.has_value());
      EXPECT_EQ(result, Region::from_record(*record)) << "not in canonical form";
    }
  }
}

TEST(Regions, HaveTheRecordsOfTheFormat) {
  EXPECT_EQ(hex("000A 0000 0000 0000 0000"), Region().record());
  EXPECT_EQ(hex("000A 0000 0000 0003 0005"), Region::rectangle({0, 0, 3, 5}).record());
  // An edge at 32767 is no end of a row in a rectangle.
  EXPECT_EQ(hex("000A 8001 8001 7FFF 7FFF"),
            Region::rectangle({-32767, -32767, 32767, 32767}).record());
  Oracle corner({0, 0, 40, 30});
  corner.set([](auto x, auto y) { return x < 10 || y >= 20; });
  EXPECT_EQ(hex("0024 0000 0000 0028 001E | 0000 0000 000A 7FFF | 0014 000A 001E 7FFF |"
                "0028 0000 001E 7FFF | 7FFF"),
            region_of(corner).record());
  Oracle frame({10, 10, 40, 30});
  frame.set([](auto x, auto y) { return x < 5 || x >= 15 || y < 10 || y >= 20; });
  EXPECT_EQ(hex("002C 000A 000A 0028 001E | 000A 000A 001E 7FFF | 0014 000F 0019 7FFF |"
                "001E 000F 0019 7FFF | 0028 000A 001E 7FFF | 7FFF"),
            region_of(frame).record());
}

TEST(Regions, RefuseDamagedRecordsButTheirBox) {
  const std::string good =
      "0024 0000 0000 0028 001E 0000 0000 000A 7FFF 0014 000A 001E 7FFF 0028 0000 001E 7FFF 7FFF";
  ASSERT_TRUE(Region::from_record(hex(good)).has_value());
  const struct {
    const char* what;
    std::string record;
  } damaged[] = {
      {"longer than what there is", "0026" + good.substr(4)},
      {"an odd size", "0023" + good.substr(4)},
      {"a size below its head", "0008" + good.substr(4)},
      {"rows out of order",
       "0024 0000 0000 0028 001E 0014 0000 000A 7FFF 0000 000A 001E 7FFF "
       "0028 0000 001E 7FFF 7FFF"},
      {"columns out of order",
       "0024 0000 0000 0028 001E 0000 000A 0000 7FFF 0014 000A 001E 7FFF "
       "0028 0000 001E 7FFF 7FFF"},
      {"the same column twice",
       "001C 0000 0000 0028 001E 0000 0000 0000 7FFF 0028 0000 001E 7FFF"
       " 7FFF"},
      {"an odd number of columns",
       "001A 0000 0000 0028 001E 0000 0000 7FFF 0028 0000 001E 7FFF "
       "7FFF"},
      {"spans that never end", "0014 0000 0000 0028 001E 0000 0000 001E 7FFF 7FFF"},
      {"no end of the rows", "001A 0000 0000 0028 001E 0000 0000 001E 7FFF 0028 0000 001E 7FFF"},
      {"no end of a row", "0018 0000 0000 0028 001E 0000 0000 001E 7FFF 0028 0000 001E"},
      {"an end too early",
       "001E 0000 0000 0028 001E 7FFF 0000 0000 001E 7FFF 0028 0000 001E 7FFF"
       " 7FFF"},
      {"a box that is not that of the rows", "0024 0000 0000 0028 001F" + good.substr(24)},
      {"no rows", "000C 0000 0000 0028 001E 7FFF"},
  };
  for (const auto& each : damaged) {
    SCOPED_TRACE(each.what);
    const Bytes record = hex(each.record);
    EXPECT_FALSE(Region::from_record(record).has_value());
    const auto box = Region::bounds_of_record(record);
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(0, box->bounds().left);
    EXPECT_EQ(40, box->bounds().bottom);
    EXPECT_TRUE(box->is_rectangle());
  }
  for (size_t size = 0; size < hex(good).size(); ++size) {
    Bytes cut = hex(good);
    cut.resize(size);
    EXPECT_FALSE(Region::from_record(cut).has_value()) << size;
    EXPECT_EQ(size >= 10, Region::bounds_of_record(cut).has_value()) << size;
  }
  EXPECT_TRUE(Region::from_record(hex("000A 0005 0005 0001 0009"))->empty()) << "an inverted box";
}

TEST(Regions, StopWhereNoRecordCanHoldThem) {
  const int32_t side = 4096;
  Bytes bits(side / 8 * side);
  std::mt19937 random(3);
  for (uint8_t& byte : bits) byte = static_cast<uint8_t>(random());
  EXPECT_FALSE(Region::from_bits({bits.data(), side / 8, {0, 0, side, side}}).has_value());
  // A few rows have a record, many of them together have none any more.
  const auto few = Region::from_bits({bits.data(), side / 8, {0, 0, 5, side}});
  ASSERT_TRUE(few.has_value());
  EXPECT_LE(few->record()->size(), Region::kMostRecordBytes);
  Region many;
  for (int32_t i = 0; i < 12; ++i) {
    const auto rows = Region::from_bits({bits.data(), side / 8, {6 * i, 0, 6 * i + 5, side}});
    many = Region::combine(many, *rows, Region::Operation::kUnion);
  }
  EXPECT_EQ(6 * 11 + 5, many.bounds().bottom);
  EXPECT_FALSE(many.record().has_value());
}

}  // namespace
}  // namespace toolbox::testing
