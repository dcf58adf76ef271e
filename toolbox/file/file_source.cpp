#include "file/file_source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace toolbox {

namespace {

Status open_failure(const std::string& path, int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return {fnfErr, path + ": there is no such file; check the path"};
    case EACCES:
    case EPERM:
      return {permErr, path + ": you may not read this file; check its permissions"};
    case ENAMETOOLONG:
    case ELOOP:
      return {bdNamErr, path + ": this path cannot be followed (" + std::strerror(error) + ")"};
    default:
      return {ioErr, path + ": the file cannot be opened (" + std::strerror(error) + ")"};
  }
}

}  // namespace

Result<std::unique_ptr<FileSource>> FileSource::open(const std::string& path) {
  if (path.empty()) return Status(bdNamErr, "the path is empty; name a movie file");
  if (path.find('\0') != std::string::npos) {
    return Status(bdNamErr, "the path holds a zero character; name a movie file");
  }
  // Without O_NONBLOCK, opening a pipe would wait for somebody to write to it.
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return open_failure(path, errno);

  struct stat info;
  Status status;
  if (::fstat(descriptor, &info) != 0) {
    status = open_failure(path, errno);
  } else if (S_ISDIR(info.st_mode)) {
    status = {fnfErr, path + ": this is a folder; name a movie file in it"};
  } else if (!S_ISREG(info.st_mode)) {
    status = {fnfErr,
              path + ": this is a device or a pipe, not a file; copy its bytes to a file first"};
  }
  if (!status.ok()) {
    ::close(descriptor);
    return status;
  }
  return std::unique_ptr<FileSource>(
      new FileSource(descriptor, static_cast<uint64_t>(info.st_size), path));
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
