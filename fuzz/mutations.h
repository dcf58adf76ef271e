// Small changes of an input, the same ones every time: what a short fuzz without a fuzzer feeds.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace krz_fuzz {

/// Change `number` of `seed`: cut off, bytes flipped, a number field at a boundary value, a piece
/// repeated or removed, or several of these. The same seed and number give the same bytes on every
/// machine. At most twice as long as the seed.
std::vector<uint8_t> changed(std::span<const uint8_t> seed, uint64_t number);

}  // namespace krz_fuzz
