// A source seen through one reused window, so that many small reads near each other cost one read
// of the file.
#pragma once

#include <cstring>

#include "base/bytes.h"
#include "file/byte_source.h"

namespace toolbox {

/// Serves small reads from a window that moves over the source beneath, and hands large ones
/// through. The window can be pinned over a range that will be wanted again, such as a small movie
/// atom.
class WindowSource : public ByteSource {
 public:
  static constexpr uint64_t kSmallestWindow = 4 * 1024;
  static constexpr uint64_t kLargestWindow = 64 * 1024;

  explicit WindowSource(std::unique_ptr<ByteSource> source) : source_(std::move(source)) {}

  uint64_t size() const override { return source_->size(); }
  const std::string& name() const override { return source_->name(); }
  Status read(uint64_t offset, std::span<uint8_t> bytes) const override;

  /// True when a small read at `offset` needs no read of the file.
  bool holds(uint64_t offset, uint64_t size) const {
    return pinned_.holds(offset, size) || window_.holds(offset, size);
  }

  /// Reads a range at once and keeps it in memory for good; ranges pinned earlier are given up.
  /// Fails: as ByteSource::read; nothing is pinned then.
  Status pin(uint64_t offset, uint64_t size);

  /// The source beneath.
  const ByteSource& source() const { return *source_; }

 private:
  struct Window {
    uint64_t offset = 0;
    Bytes bytes;
    bool holds(uint64_t at, uint64_t size) const {
      return at >= offset && size <= bytes.size() && at - offset <= bytes.size() - size;
    }
    void copy(uint64_t at, std::span<uint8_t> to) const {
      if (!to.empty()) std::memcpy(to.data(), bytes.data() + (at - offset), to.size());
    }
  };
  Status move_window(uint64_t offset, uint64_t size) const;

  std::unique_ptr<ByteSource> source_;
  Window pinned_;
  mutable Window window_;
  mutable uint64_t reach_ = kSmallestWindow;
};

}  // namespace toolbox
