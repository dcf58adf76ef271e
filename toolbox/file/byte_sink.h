// Where a movie that is being composed goes: into memory, into a file, or nowhere but into a count.
#pragma once

#include "base/big_endian.h"
#include "base/bytes.h"
#include "base/status.h"

namespace toolbox {

/// Takes bytes from front to back; a few may be overwritten later. A failure sticks and is answered
/// by finish().
class ByteSink {
 public:
  virtual ~ByteSink() = default;

  uint64_t position() const { return position_; }
  void write(ByteView bytes) {
    put(bytes);
    position_ += bytes.size();
  }
  /// Bytes that read as zero and, in a file, take no room on the disk.
  void skip(uint64_t size) {
    leave_hole(size);
    position_ += size;
  }
  /// Overwrites bytes that are already there. REQUIRES: offset + bytes.size() <= position().
  virtual void patch(uint64_t offset, ByteView bytes) = 0;
  virtual Status finish() { return {}; }

  template <std::integral T>
  void number(T value) {
    uint8_t bytes[sizeof(T)];
    store_big_endian(bytes, value);
    write(bytes);
  }

 protected:
  virtual void put(ByteView bytes) = 0;
  virtual void leave_hole(uint64_t size) = 0;
  uint64_t position_ = 0;
};

/// Only counts.
class CountingSink : public ByteSink {
 public:
  void patch(uint64_t, ByteView) override {}

 private:
  void put(ByteView) override {}
  void leave_hole(uint64_t) override {}
};

class MemorySink : public ByteSink {
 public:
  void patch(uint64_t offset, ByteView bytes) override;
  Bytes take() { return std::move(bytes_); }

 private:
  void put(ByteView bytes) override { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }
  void leave_hole(uint64_t size) override { bytes_.resize(bytes_.size() + size); }
  Bytes bytes_;
};

/// Writes through a small buffer. The descriptor stays the caller's.
class FileSink : public ByteSink {
 public:
  FileSink(int descriptor, std::string name) : descriptor_(descriptor), name_(std::move(name)) {}
  void patch(uint64_t offset, ByteView bytes) override;

  /// Writes what is buffered and sets the file's length. Fails: ioErr.
  Status finish() override;

 private:
  void put(ByteView bytes) override;
  void leave_hole(uint64_t size) override;
  void flush();
  void write_at(uint64_t offset, ByteView bytes);

  int descriptor_;
  std::string name_;
  Bytes buffer_;
  uint64_t buffer_offset_ = 0;
  Status status_;
};

}  // namespace toolbox
