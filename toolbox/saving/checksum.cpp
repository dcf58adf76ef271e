#include "saving/checksum.h"

#include <algorithm>

#include "base/big_endian.h"

namespace toolbox {

Status PassingChecksum::saw(const ByteSource* source, uint64_t offset, ByteView bytes) {
  const uint64_t end = range_.offset + range_.size;
  if (source != range_.source || offset + bytes.size() <= next_ || offset >= end) return {};
  TRY(read_up_to(offset));
  const uint64_t skipped = next_ - offset;
  add(bytes.subspan(skipped, std::min<uint64_t>(bytes.size() - skipped, end - next_)));
  return {};
}

Result<uint64_t> PassingChecksum::finish() {
  TRY(read_up_to(range_.offset + range_.size));
  uint64_t sum = 0;
  for (size_t i = 0; i < carried_size_; ++i) sum = mix(sum, carried_[i]);
  for (const uint64_t lane : lanes_) sum = mix(sum, lane);
  return sum;
}

Status PassingChecksum::read_up_to(uint64_t end) {
  Bytes window;
  while (next_ < end) {
    window.resize(std::min<uint64_t>(end - next_, 256 * 1024));
    TRY(range_.source->read(next_, window));
    add(window);
  }
  return {};
}

void PassingChecksum::add(ByteView bytes) {
  next_ += bytes.size();
  if (carried_size_ > 0) {
    const size_t taken = std::min(bytes.size(), kStripe - carried_size_);
    std::copy_n(bytes.begin(), taken, carried_.begin() + static_cast<ptrdiff_t>(carried_size_));
    carried_size_ += taken;
    bytes = bytes.subspan(taken);
    if (carried_size_ < kStripe) return;
    add_stripes(carried_.data(), 1);
  }
  const size_t at = bytes.size() - bytes.size() % kStripe;
  add_stripes(bytes.data(), at / kStripe);
  carried_size_ = bytes.size() - at;
  std::copy_n(bytes.begin() + static_cast<ptrdiff_t>(at), carried_size_, carried_.begin());
}

void PassingChecksum::add_stripes(const uint8_t* bytes, size_t count) {
  // Written out, so that the sums stay in registers.
  auto [a, b, c, d] = lanes_;
  for (const uint8_t* const end = bytes + count * kStripe; bytes != end; bytes += kStripe) {
    a = mix(a, load_big_endian<uint64_t>(bytes));
    b = mix(b, load_big_endian<uint64_t>(bytes + 8));
    c = mix(c, load_big_endian<uint64_t>(bytes + 16));
    d = mix(d, load_big_endian<uint64_t>(bytes + 24));
  }
  lanes_ = {a, b, c, d};
}

Result<uint64_t> checksum_of(const ByteRange& range) { return PassingChecksum(range).finish(); }

}  // namespace toolbox
