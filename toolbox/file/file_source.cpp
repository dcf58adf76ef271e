#include "file/file_source.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace toolbox {

namespace {

Status open_failure(const std::string& path, int error, FileAccess access) {
  const bool writing = access == FileAccess::kWriting;
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return {fnfErr, path + ": there is no such file; check the path"};
    case EROFS:
      return {wrPermErr, path + ": this disk is read-only; save under another name"};
    case ETXTBSY:
      return {fBsyErr, path + ": this file is in use; try again later"};
    case EACCES:
    case EPERM:
      if (writing) {
        return {wrPermErr, path +
                               ": you may not change this file; check its permissions, or save "
                               "under another name"};
      }
      return {permErr, path + ": you may not read this file; check its permissions"};
    case ENAMETOOLONG:
    case ELOOP:
      return {bdNamErr, path + ": this path cannot be followed (" + std::strerror(error) + ")"};
    default:
      return {ioErr, path + ": the file cannot be opened (" + std::strerror(error) + ")"};
  }
}

}  // namespace

FileSource::Stamp FileSource::stamp_of(const struct stat& info) {
  return {.device = info.st_dev,
          .inode = info.st_ino,
          .modified_seconds = info.st_mtim.tv_sec,
          .modified_nanoseconds = info.st_mtim.tv_nsec,
          .size = static_cast<uint64_t>(info.st_size)};
}

Result<std::unique_ptr<FileSource>> FileSource::open(const std::string& path, FileAccess access) {
  if (path.empty()) return Status(bdNamErr, "the path is empty; name a movie file");
  if (path.find('\0') != std::string::npos) {
    return Status(bdNamErr, "the path holds a zero character; name a movie file");
  }
  const bool writing = access == FileAccess::kWriting;
  // Without O_NONBLOCK, opening a pipe would wait for somebody to write to it.
  const int flags = (writing ? O_RDWR : O_RDONLY) | O_CLOEXEC | O_NONBLOCK;
  const int descriptor = ::open(path.c_str(), flags);
  // A folder cannot be opened for writing; what it is says more than that it cannot.
  if (descriptor < 0 && errno == EISDIR) {
    return Status(fnfErr, path + ": this is a folder; name a movie file in it");
  }
  if (descriptor < 0) return open_failure(path, errno, access);

  struct stat info;
  Status status;
  if (::fstat(descriptor, &info) != 0) {
    status = open_failure(path, errno, access);
  } else if (S_ISDIR(info.st_mode)) {
    status = {fnfErr, path + ": this is a folder; name a movie file in it"};
  } else if (!S_ISREG(info.st_mode)) {
    status = {fnfErr,
              path + ": this is a device or a pipe, not a file; copy its bytes to a file first"};
  } else if (access != FileAccess::kUnlocked &&
             ::flock(descriptor, (writing ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0 && writing &&
             errno == EWOULDBLOCK) {
    status = {fBsyErr, path + ": another program has this movie open; close it there first"};
  }
  if (!status.ok()) {
    ::close(descriptor);
    return status;
  }
  return std::unique_ptr<FileSource>(new FileSource(descriptor, access, stamp_of(info), path));
}

Result<std::unique_ptr<FileSource>> FileSource::reopen() const {
  // A duplicate shares the lock, which lasts until the last of them is closed.
  const int descriptor = ::fcntl(descriptor_, F_DUPFD_CLOEXEC, 0);
  struct stat info;
  if (descriptor < 0 || ::fstat(descriptor, &info) != 0) {
    const Status status = open_failure(name_, errno, access_);
    if (descriptor >= 0) ::close(descriptor);
    return Status(status.code(), status.message());
  }
  return std::unique_ptr<FileSource>(new FileSource(descriptor, access_, stamp_of(info), name_));
}

Status FileSource::check_unchanged() const {
  struct stat opened;
  struct stat named;
  if (::fstat(descriptor_, &opened) != 0) {
    return {ioErr, name_ + ": the file cannot be looked at (" + std::strerror(errno) + ")"};
  }
  const bool is_there = ::stat(name_.c_str(), &named) == 0;
  if (stamp_of(opened) == stamp_ && is_there && stamp_of(named) == stamp_) return {};
  return {fBsyErr, name_ +
                       ": another program has changed this file since it was opened; open it "
                       "again and repeat the change"};
}

void FileSource::note_own_writes() const {
  struct stat info;
  if (::fstat(descriptor_, &info) == 0) stamp_ = stamp_of(info);
}

FileSource::~FileSource() { ::close(descriptor_); }

Status FileSource::read(uint64_t offset, std::span<uint8_t> bytes) const {
  if (offset > size_ || bytes.size() > size_ - offset) {
    return {eofErr, name_ + ": " + std::to_string(bytes.size()) + " bytes were wanted at byte " +
                        std::to_string(offset) + ", but the file has only " +
                        std::to_string(size_)};
  }
  while (!bytes.empty()) {
    const ssize_t count =
        ::pread(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      return {ioErr, name_ + ": reading at byte " + std::to_string(offset) + " failed (" +
                         std::strerror(errno) + ")"};
    }
    if (count == 0) {
      return {eofErr, name_ +
                          ": the file became shorter while it was open; it now ends before byte " +
                          std::to_string(offset) + "; open it again"};
    }
    bytes = bytes.subspan(static_cast<size_t>(count));
    offset += static_cast<uint64_t>(count);
  }
  return {};
}

}  // namespace toolbox
