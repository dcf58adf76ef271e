#include "file/byte_sink.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace toolbox {

void MemorySink::patch(uint64_t offset, ByteView bytes) {
  std::memcpy(bytes_.data() + offset, bytes.data(), bytes.size());
}

void FileSink::put(ByteView bytes) {
  constexpr size_t kBufferBytes = 64 * 1024;
  buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
  if (buffer_.size() >= kBufferBytes) flush();
}

void FileSink::leave_hole(uint64_t size) {
  flush();
  buffer_offset_ += size;
}

void FileSink::flush() {
  write_at(buffer_offset_, buffer_);
  buffer_offset_ += buffer_.size();
  buffer_.clear();
}

void FileSink::patch(uint64_t offset, ByteView bytes) {
  if (offset < buffer_offset_) {
    flush();
    write_at(offset, bytes);
  } else {
    std::memcpy(buffer_.data() + (offset - buffer_offset_), bytes.data(), bytes.size());
  }
}

Status FileSink::finish() {
  flush();
  if (status_.ok() && ::ftruncate(descriptor_, static_cast<off_t>(position_)) != 0) {
    status_ = {ioErr, name_ + ": the length cannot be set (" + std::strerror(errno) + ")"};
  }
  return std::move(status_);
}

void FileSink::write_at(uint64_t offset, ByteView bytes) {
  while (!bytes.empty() && status_.ok()) {
    const ssize_t count =
        ::pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      status_ = {ioErr, name_ + ": writing at byte " + std::to_string(offset) + " failed (" +
                            std::strerror(errno) + ")"};
      return;
    }
    bytes = bytes.subspan(static_cast<size_t>(count));
    offset += static_cast<uint64_t>(count);
  }
}

}  // namespace toolbox
