// Bytes in memory as a source: an unpacked movie atom, a table that was edited, a movie made by a
// test.
#pragma once

#include "base/bytes.h"
#include "file/byte_source.h"

namespace toolbox {

class MemorySource : public ByteSource {
 public:
  MemorySource(Bytes bytes, std::string name) : bytes_(std::move(bytes)), name_(std::move(name)) {}

  uint64_t size() const override { return bytes_.size(); }
  const std::string& name() const override { return name_; }
  Status read(uint64_t offset, std::span<uint8_t> bytes) const override;

  const Bytes& bytes() const { return bytes_; }
  ByteRange whole() const { return {this, 0, bytes_.size()}; }

 private:
  Bytes bytes_;
  std::string name_;
};

}  // namespace toolbox
