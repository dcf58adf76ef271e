// Where bytes come from: a file read with positioned reads, or a block of memory.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "base/status.h"

namespace toolbox {

/// A fixed range of bytes that can be read at any place. Not safe for use by several threads at
/// once.
class ByteSource {
 public:
  virtual ~ByteSource() = default;

  /// Bytes in the source, as found when it was opened.
  virtual uint64_t size() const = 0;

  /// What people call the source: the path of the file.
  virtual const std::string& name() const = 0;

  /// Fills `bytes` from `offset` on.
  /// Fails: eofErr when the range reaches beyond size() or the file has become shorter, ioErr.
  virtual Status read(uint64_t offset, std::span<uint8_t> bytes) const = 0;
};

/// A range of a source: an atom's payload, or a table that stays on disk. Borrows the source.
struct ByteRange {
  const ByteSource* source = nullptr;
  uint64_t offset = 0;
  uint64_t size = 0;
};

}  // namespace toolbox
