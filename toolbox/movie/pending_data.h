// Media data that was added to a movie and is not in its file yet.
#pragma once

#include "base/bytes.h"
#include "file/byte_source.h"

namespace toolbox {

/// Bytes that wait for the next save. Sample tables refer to them by offsets from kPendingBase on,
/// where no file can reach; a save writes the bytes and puts their real place into the tables.
class PendingData {
 public:
  static constexpr uint64_t kPendingBase = uint64_t{1} << 62;

  static bool is_pending(uint64_t offset) {
    return offset >= kPendingBase && offset < 2 * kPendingBase;
  }

  PendingData() = default;
  ~PendingData();
  PendingData(const PendingData&) = delete;
  PendingData& operator=(const PendingData&) = delete;

  /// Adds bytes; answers the offset that tables use for them. Beyond some MiB they wait in a file
  /// without a name. Fails: memFullErr, ioErr, dskFulErr; nothing is added then.
  Result<uint64_t> append(ByteView bytes);

  /// Bytes that wait.
  uint64_t size() const { return size_; }

  /// Reads what was added. `offset` as append() gave it. Fails: eofErr beyond what was added,
  /// ioErr.
  Status read(uint64_t offset, std::span<uint8_t> bytes) const;

  /// Forgets all but the first `size` bytes. REQUIRES: size <= size(); no table refers to the rest.
  void cut(uint64_t size);

  /// Forgets everything; the tables must not refer to it any more.
  void clear();

 private:
  Status spill();

  Bytes memory_;         // while there are few of them
  int descriptor_ = -1;  // then all are here
  uint64_t size_ = 0;
};

}  // namespace toolbox
