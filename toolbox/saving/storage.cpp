#include "saving/storage.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace toolbox {

namespace {

Storage g_system;
Storage* g_current = &g_system;

Status failure(const std::string& name, const std::string& step) {
  const int error = errno;
  OSErr code = ioErr;
  std::string advice;
  if (error == ENOSPC || error == EDQUOT || error == EFBIG) {
    code = dskFulErr;
    advice = "; make room and save again";
  } else if (error == EACCES || error == EPERM || error == EROFS) {
    code = wrPermErr;
    advice = "; check the permissions, or save elsewhere";
  } else if (error == EEXIST) {
    code = dupFNErr;
    advice = "; choose another name";
  }
  return {code, name + ": " + step + " failed (" + std::strerror(error) + ")" + advice};
}

constexpr uint64_t kPage = 4096;

// Whether the kernel has declined to copy between these files for good.
bool must_copy_by_hand(int error) {
  return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

// All writes but the first begin with a page.
Status copy_by_hand(Storage& storage, int from, off_t in, int to, off_t out, uint64_t size,
                    const std::string& name) {
  constexpr uint64_t kAtOnce = 1024 * 1024;
  const auto buffer = std::make_unique_for_overwrite<uint8_t[]>(kAtOnce);
  while (size > 0) {
    const uint64_t wanted = std::min(size, kAtOnce - static_cast<uint64_t>(out) % kPage);
    const ssize_t count = ::pread(from, buffer.get(), static_cast<size_t>(wanted), in);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return failure(name, "reading what is to be copied");
    if (count == 0) return {eofErr, name + ": the file became shorter while it was copied"};
    TRY(storage.Storage::write(to, static_cast<uint64_t>(out),
                               ByteView(buffer.get(), static_cast<size_t>(count)), name));
    in += count;
    out += count;
    size -= static_cast<uint64_t>(count);
  }
  return {};
}

}  // namespace

Storage& Storage::current() { return *g_current; }

ScopedStorage::ScopedStorage(Storage& storage) : previous_(g_current) { g_current = &storage; }
ScopedStorage::~ScopedStorage() { g_current = previous_; }

Status Storage::write(int file, uint64_t offset, ByteView bytes, const std::string& name) {
  while (!bytes.empty()) {
    const ssize_t count = ::pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return failure(name, "writing");
    bytes = bytes.subspan(static_cast<size_t>(count));
    offset += static_cast<uint64_t>(count);
  }
  return {};
}

// Page by page, the kernel is slower than large writes; but places that lie alike in their pages
// may be shared by the files without being copied at all.
Status Storage::copy(int from, uint64_t from_offset, int to, uint64_t to_offset, uint64_t size,
                     const std::string& name) {
  constexpr uint64_t kAtOnce = uint64_t{1} << 30;
  auto in = static_cast<off_t>(from_offset);
  auto out = static_cast<off_t>(to_offset);
  while (size > 0 && (from_offset - to_offset) % kPage == 0) {
    const ssize_t count =
        ::copy_file_range(from, &in, to, &out, static_cast<size_t>(std::min(size, kAtOnce)), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && !must_copy_by_hand(errno)) return failure(name, "copying");
    if (count <= 0) break;
    size -= static_cast<uint64_t>(count);
  }
  return size == 0 ? Status() : copy_by_hand(*this, from, in, to, out, size, name);
}

Status Storage::reserve(int file, uint64_t offset, uint64_t size, const std::string& name) {
  if (size == 0) return {};
  // Unlike posix_fallocate(), this never writes zeros where the file system cannot reserve.
  if (::fallocate(file, 0, static_cast<off_t>(offset), static_cast<off_t>(size)) == 0) return {};
  if (errno == ENOSPC || errno == EDQUOT || errno == EFBIG) {
    return failure(name, "making room for " + std::to_string(size) + " bytes");
  }
  return {};
}

Status Storage::set_size(int file, uint64_t size, const std::string& name) {
  while (::ftruncate(file, static_cast<off_t>(size)) != 0) {
    if (errno != EINTR) return failure(name, "setting the length of the file");
  }
  return {};
}

Status Storage::flush(int file, const std::string& name) {
  return ::fsync(file) == 0 ? Status() : failure(name, "writing to the disk");
}

Status Storage::flush_folder(const std::string& folder) {
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  // A folder that may be written but not read cannot be flushed; the file itself is.
  if (descriptor < 0) return {};
  const bool flushed = ::fsync(descriptor) == 0 || errno == EINVAL;
  const Status status = flushed ? Status() : failure(folder, "writing the folder to the disk");
  ::close(descriptor);
  return status.ok() ? Status() : Status(status.code(), status.message());
}

Result<int> Storage::create(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (descriptor < 0) return failure(path, "making a file");
  return descriptor;
}

Status Storage::rename(const std::string& from, const std::string& to) {
  return ::rename(from.c_str(), to.c_str()) == 0 ? Status()
                                                 : failure(to, "putting the new file in place");
}

Status Storage::rename_new(const std::string& from, const std::string& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
  if (errno != EINVAL && errno != ENOSYS) return failure(to, "naming the new file");
  // A file system without that call: a second name never replaces a file either.
  if (::link(from.c_str(), to.c_str()) == 0) {
    ::unlink(from.c_str());
    return {};
  }
  if (errno == EEXIST) return failure(to, "naming the new file");
  return Storage::rename(from, to);
}

void Storage::remove(const std::string& path) { ::unlink(path.c_str()); }

}  // namespace toolbox
