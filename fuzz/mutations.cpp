#include "mutations.h"

#include <algorithm>
#include <cstddef>

namespace krz_fuzz {

namespace {

using Bytes = std::vector<uint8_t>;

// Sizes and counts where a reader's arithmetic turns: header sizes, signs, ends of the types.
constexpr uint64_t kBoundaries[] = {
    0,          1,          2,          7,           8,           9,
    15,         16,         0x7f,       0xff,        0x7fff,      0xffff,
    0x10000,    0x0fffffff, 0x10000000, 0x1fffffff,  0x20000000,  0x3fffffff,
    0x40000000, 0x7ffffff8, 0x7fffffff, 0x80000000,  0xfffffff0,  0xfffffff8,
    0xffffffff, 1ull << 32, 1ull << 60, ~0ull >> 1u, 1ull << 63u, ~0ull,
};

// Good enough to spread changes over an input, and the same everywhere.
class Dice {
 public:
  explicit Dice(uint64_t seed) : state_(seed) {}
  uint64_t roll() {
    uint64_t mixed = state_ += 0x9e3779b97f4a7c15;
    mixed = (mixed ^ (mixed >> 30u)) * 0xbf58476d1ce4e5b9;
    mixed = (mixed ^ (mixed >> 27u)) * 0x94d049bb133111eb;
    return mixed ^ (mixed >> 31u);
  }
  size_t below(size_t limit) { return limit == 0 ? 0 : static_cast<size_t>(roll() % limit); }

 private:
  uint64_t state_;
};

uint64_t hash(std::span<const uint8_t> bytes) {
  uint64_t value = 0xcbf29ce484222325;
  for (const uint8_t byte : bytes) value = (value ^ byte) * 0x100000001b3;
  return value;
}

bool is_atom_type(const uint8_t* bytes) {
  return std::all_of(bytes, bytes + 4, [](uint8_t c) { return c >= ' ' && c < 0x7f; });
}

// Where the number before an atom's type lies, searched from `start` on; `start` when none follows.
size_t size_field_after(const Bytes& bytes, size_t start) {
  for (size_t at = start; at + 8 <= bytes.size(); ++at) {
    if (bytes[at] < ' ' && is_atom_type(&bytes[at + 4])) return at;
  }
  return start;
}

void put_number(Bytes& bytes, size_t at, size_t width, uint64_t value) {
  for (size_t i = 0; i < width && at + i < bytes.size(); ++i) {
    bytes[at + i] = static_cast<uint8_t>(value >> (8 * (width - 1 - i)));
  }
}

void flip(Bytes& bytes, Dice& dice) {
  const size_t count = 1 + dice.below(4);
  for (size_t i = 0; i < count; ++i) {
    bytes[dice.below(bytes.size())] ^= static_cast<uint8_t>(1u << dice.below(8));
  }
}

void put_boundary(Bytes& bytes, Dice& dice, size_t at) {
  constexpr size_t kWidths[] = {1, 2, 4, 4, 4, 8};
  uint64_t value = kBoundaries[dice.below(std::size(kBoundaries))];
  if (dice.below(4) == 0) value = bytes.size() - at + dice.below(17) - 8;  // about to the end
  put_number(bytes, at, kWidths[dice.below(std::size(kWidths))], value);
}

void put_size(Bytes& bytes, Dice& dice) {
  const size_t at = size_field_after(bytes, dice.below(bytes.size()));
  uint64_t value = kBoundaries[dice.below(std::size(kBoundaries))];
  if (dice.below(2) == 0) value = bytes.size() - at + dice.below(17) - 8;
  put_number(bytes, at, 4, value);
}

void repeat_piece(Bytes& bytes, Dice& dice) {
  const size_t begin = dice.below(bytes.size());
  const size_t size = 1 + dice.below(std::min<size_t>(bytes.size() - begin, 512));
  const Bytes piece(
      bytes.begin() + static_cast<ptrdiff_t>(begin),
      bytes.begin() + static_cast<ptrdiff_t>(begin + std::min(size, bytes.size() - begin)));
  bytes.insert(bytes.begin() + static_cast<ptrdiff_t>(dice.below(bytes.size())), piece.begin(),
               piece.end());
}

void remove_piece(Bytes& bytes, Dice& dice) {
  const size_t begin = dice.below(bytes.size());
  const size_t size = std::min(1 + dice.below(64), bytes.size() - begin);
  const auto first = bytes.begin() + static_cast<ptrdiff_t>(begin);
  bytes.erase(first, first + static_cast<ptrdiff_t>(size));
}

void change_once(Bytes& bytes, Dice& dice) {
  if (bytes.empty()) return;
  switch (dice.below(8)) {
    case 0:
      bytes.resize(dice.below(bytes.size()));
      break;
    case 1:
    case 2:
      flip(bytes, dice);
      break;
    case 3:
    case 4:
      put_size(bytes, dice);
      break;
    case 5:
      put_boundary(bytes, dice, dice.below(bytes.size()));
      break;
    case 6:
      repeat_piece(bytes, dice);
      break;
    default:
      remove_piece(bytes, dice);
  }
}

}  // namespace

std::vector<uint8_t> changed(std::span<const uint8_t> seed, uint64_t number) {
  Dice dice(hash(seed) + number);
  Bytes bytes(seed.begin(), seed.end());
  const size_t changes = 1 + dice.below(3);
  for (size_t i = 0; i < changes && bytes.size() <= seed.size() * 2; ++i) change_once(bytes, dice);
  if (bytes.size() > seed.size() * 2) bytes.resize(seed.size() * 2);
  return bytes;
}

}  // namespace krz_fuzz
