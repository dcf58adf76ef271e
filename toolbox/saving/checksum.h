// Checksums of parts of files, for noticing change, not malice.
#pragma once

#include <array>

#include "file/atom_tree.h"

namespace toolbox {

/// Scrambles a word into a sum.
constexpr uint64_t mix(uint64_t sum, uint64_t word) {
  sum ^= word;
  sum *= 0x9E3779B97F4A7C15;
  return sum ^ (sum >> 32);
}

/// The checksum of a range whose bytes pass by on their way elsewhere, so that they need not be
/// read twice.
class PassingChecksum {
 public:
  explicit PassingChecksum(const ByteRange& range)
      : range_(range), lanes_{range.size, 1, 2, 3}, next_(range.offset) {}

  /// Takes note of bytes that were read; those outside of the range do no harm. What was passed
  /// over before them is read. Fails: as ByteSource::read.
  Status saw(const ByteSource* source, uint64_t offset, ByteView bytes);

  /// The checksum, after what is left was read. Fails: as ByteSource::read.
  Result<uint64_t> finish();

 private:
  static constexpr size_t kStripe = 32;

  Status read_up_to(uint64_t end);
  void add(ByteView bytes);
  void add_stripes(const uint8_t* bytes, size_t count);

  ByteRange range_;
  // Sums that do not wait for each other are worked out at the same time.
  std::array<uint64_t, kStripe / 8> lanes_;
  std::array<uint8_t, kStripe> carried_{};  // of a stripe that is not whole yet
  size_t carried_size_ = 0;
  uint64_t next_;  // offset of the first byte that was not seen
};

/// The checksum of a range. Fails: as ByteSource::read.
Result<uint64_t> checksum_of(const ByteRange& range);

}  // namespace toolbox
