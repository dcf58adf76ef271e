#include "movie/pending_data.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace toolbox {

namespace {

constexpr uint64_t kMostInMemory = 16 * 1024 * 1024;

Status write_failure() {
  const int error = errno;
  const OSErr code = error == ENOSPC || error == EDQUOT ? dskFulErr : ioErr;
  return {code, std::string("new media data cannot be kept in a temporary file (") +
                    std::strerror(error) + "); make room or set TMPDIR to a folder with room"};
}

// A file that vanishes with its descriptor.
int open_nameless_file() {
  const char* folder = std::getenv("TMPDIR");
  const std::string place = folder != nullptr && *folder != '\0' ? folder : "/tmp";
  const int descriptor = ::open(place.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (descriptor >= 0) return descriptor;
  std::string name = place + "/krz-media-XXXXXX";
  const int named = ::mkostemp(name.data(), O_CLOEXEC);
  if (named >= 0) ::unlink(name.c_str());
  return named;
}

Status write_all(int descriptor, uint64_t offset, ByteView bytes) {
  while (!bytes.empty()) {
    const ssize_t count =
        ::pwrite(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return write_failure();
    bytes = bytes.subspan(static_cast<size_t>(count));
    offset += static_cast<uint64_t>(count);
  }
  return {};
}

}  // namespace

PendingData::~PendingData() { clear(); }

Result<uint64_t> PendingData::append(ByteView bytes) {
  if (bytes.size() > kPendingBase - 1 - size_) {
    return Status(dskFulErr, "there is too much new media data");
  }
  if (descriptor_ < 0 && size_ + bytes.size() > kMostInMemory) TRY(spill());
  if (descriptor_ >= 0) {
    TRY(write_all(descriptor_, size_, bytes));
  } else {
    memory_.insert(memory_.end(), bytes.begin(), bytes.end());
  }
  const uint64_t offset = kPendingBase + size_;
  size_ += bytes.size();
  return offset;
}

Status PendingData::spill() {
  const int descriptor = open_nameless_file();
  if (descriptor < 0) return write_failure();
  if (Status status = write_all(descriptor, 0, memory_); !status.ok()) {
    ::close(descriptor);
    return status;
  }
  descriptor_ = descriptor;
  memory_ = Bytes();
  return {};
}

Status PendingData::read(uint64_t offset, std::span<uint8_t> bytes) const {
  const uint64_t start = offset - kPendingBase;
  if (!is_pending(offset) || start > size_ || bytes.size() > size_ - start) {
    return {eofErr, "new media data was asked for that was never added"};
  }
  if (descriptor_ < 0) {
    if (!bytes.empty()) std::memcpy(bytes.data(), memory_.data() + start, bytes.size());
    return {};
  }
  uint64_t place = start;
  while (!bytes.empty()) {
    const ssize_t count =
        ::pread(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(place));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      return {ioErr, std::string("new media data cannot be read back from its temporary file (") +
                         std::strerror(errno) + ")"};
    }
    bytes = bytes.subspan(static_cast<size_t>(count));
    place += static_cast<uint64_t>(count);
  }
  return {};
}

void PendingData::cut(uint64_t size) {
  if (descriptor_ < 0) memory_.resize(size);
  size_ = size;
}

void PendingData::clear() {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
  memory_ = Bytes();
  size_ = 0;
}

}  // namespace toolbox
