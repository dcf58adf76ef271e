// Bytes written as hexadecimal text, sources over them, and a source that counts what is asked of
// it.
#pragma once

#include <string_view>

#include "base/bytes.h"
#include "file/memory_source.h"

namespace toolbox {

/// The bytes of hexadecimal digits; blanks and bars are ignored.
inline Bytes hex(std::string_view digits) {
  Bytes bytes;
  int high = -1;
  for (char digit : digits) {
    if (digit == ' ' || digit == '|') continue;
    const int value = digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10;
    if (high < 0) {
      high = value;
    } else {
      bytes.push_back(static_cast<uint8_t>(high * 16 + value));
      high = -1;
    }
  }
  return bytes;
}

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

/// What reading cost.
struct ReadCount {
  uint64_t reads = 0;
  uint64_t bytes = 0;
};

/// Counts the reads of a source beneath.
class CountedSource : public ByteSource {
 public:
  CountedSource(std::unique_ptr<ByteSource> source, ReadCount& count)
      : source_(std::move(source)), count_(count) {}
  uint64_t size() const override { return source_->size(); }
  const std::string& name() const override { return source_->name(); }
  Status read(uint64_t offset, std::span<uint8_t> bytes) const override {
    ++count_.reads;
    count_.bytes += bytes.size();
    return source_->read(offset, bytes);
  }

 private:
  std::unique_ptr<ByteSource> source_;
  ReadCount& count_;
};

}  // namespace toolbox
