#include "library/buffered_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "library/io_error.h"

namespace krz {

namespace {

constexpr size_t kPiece = 64 * 1024;

int flags_of(BufferedFile::Mode mode) {
  switch (mode) {
    case BufferedFile::Mode::kRead:
      return O_RDONLY;
    case BufferedFile::Mode::kReadWrite:
      return O_RDWR;
    case BufferedFile::Mode::kCreate:
      return O_RDWR | O_CREAT | O_EXCL;
    case BufferedFile::Mode::kOverwrite:
      return O_RDWR | O_CREAT | O_TRUNC;
    case BufferedFile::Mode::kAppend:
      return O_WRONLY | O_CREAT | O_APPEND;
  }
  return O_RDONLY;
}

}  // namespace

BufferedFile* BufferedFile::open(const std::string& path, Mode mode) {
  if (!check_path(path)) return nullptr;
  const bool creates = mode == Mode::kCreate || mode == Mode::kOverwrite;
  const char* const action = creates ? "create" : "open";
  constexpr mode_t kEverybody = 0666;
  const int descriptor = ::open(path.c_str(), flags_of(mode) | O_CLOEXEC, kEverybody);
  if (descriptor < 0) {
    raise_io_error(action, path, errno);
    return nullptr;
  }
  struct stat status {};
  if (::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
    ::close(descriptor);
    raise_io_error(action, path, EISDIR);
    return nullptr;
  }
  auto* const file = new BufferedFile(descriptor, path);
  if (mode == Mode::kAppend) file->file_position_ = int64_t{status.st_size};
  return file;
}

BufferedFile::~BufferedFile() {
  if (writing_) {
    for (std::string_view rest = buffer_; !rest.empty();) {
      const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
      if (written <= 0) break;
      rest.remove_prefix(static_cast<size_t>(written));
    }
  }
  ::close(descriptor_);
}

bool BufferedFile::failed(const char* action) {
  raise_io_error(action, path_, errno);
  return false;
}

std::string_view BufferedFile::ahead() {
  if (writing_ && !flush()) return {};
  if (used_ == buffer_.size()) {
    used_ = 0;
    buffer_.resize(kPiece);
    ssize_t count = 0;
    do {
      count = ::read(descriptor_, buffer_.data(), kPiece);
    } while (count < 0 && errno == EINTR);
    buffer_.resize(static_cast<size_t>(std::max<ssize_t>(count, 0)));
    file_position_ += static_cast<int64_t>(buffer_.size());
    if (count < 0) failed("read");
  }
  return std::string_view(buffer_).substr(used_);
}

size_t BufferedFile::read(char* to, size_t count) {
  size_t done = 0;
  while (done < count) {
    const std::string_view piece = ahead().substr(0, count - done);
    if (piece.empty()) break;
    std::memcpy(to + done, piece.data(), piece.size());
    skip(piece.size());
    done += piece.size();
  }
  return done;
}

bool BufferedFile::drop_ahead() {
  if (writing_ || buffer_.empty()) return true;
  const int64_t here = position();
  if (used_ < buffer_.size() && ::lseek(descriptor_, here, SEEK_SET) < 0)
    return failed("move about in");
  file_position_ = here;
  buffer_.clear();
  used_ = 0;
  return true;
}

bool BufferedFile::write(std::string_view bytes) {
  if (!drop_ahead()) return false;
  writing_ = true;
  buffer_.append(bytes);
  return buffer_.size() < kPiece || flush();
}

bool BufferedFile::flush() {
  if (!writing_) return true;
  writing_ = false;
  std::string_view rest = buffer_;
  bool done = true;
  while (done && !rest.empty()) {
    const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
    if (written >= 0) {
      rest.remove_prefix(static_cast<size_t>(written));
      file_position_ += written;
    } else if (errno != EINTR) {
      done = failed("write to");
    }
  }
  buffer_.clear();
  return done;
}

int64_t BufferedFile::position() const {
  const auto size = static_cast<int64_t>(buffer_.size());
  return writing_ ? file_position_ + size : file_position_ - size + static_cast<int64_t>(used_);
}

bool BufferedFile::seek(int64_t position) {
  if (!flush()) return false;
  const int64_t first = file_position_ - static_cast<int64_t>(buffer_.size());
  if (position >= first && position <= file_position_) {
    used_ = static_cast<size_t>(position - first);
    return true;
  }
  buffer_.clear();
  used_ = 0;
  if (::lseek(descriptor_, position, SEEK_SET) < 0) return failed("move about in");
  file_position_ = position;
  return true;
}

int64_t BufferedFile::length() {
  if (!flush()) return 0;
  struct stat status {};
  if (::fstat(descriptor_, &status) != 0) failed("measure");
  return int64_t{status.st_size};
}

}  // namespace krz
