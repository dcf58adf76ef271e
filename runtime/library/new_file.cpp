#include "library/new_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "library/io_error.h"

namespace krz {

namespace {

/// What the process lets a new file's permissions be; mkostemp allows the owner alone.
mode_t everybody_allowed() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

}  // namespace

NewFile::~NewFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
  if (!written_.empty()) ::unlink(written_.c_str());
}

bool NewFile::create(const std::string& path, bool overwrite) {
  if (!check_path(path)) return false;
  path_ = path;
  overwrites_ = overwrite;
  struct stat status {};
  const bool exists = ::stat(path.c_str(), &status) == 0;
  if (exists && S_ISDIR(status.st_mode)) return failed("create", EISDIR);
  if (exists && !S_ISREG(status.st_mode)) {
    descriptor_ = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    return descriptor_ >= 0 || failed("open", errno);
  }
  if (exists && !overwrite) return failed("create", EEXIST);
  std::string name = path + ".XXXXXX";
  descriptor_ = ::mkostemp(name.data(), O_CLOEXEC);
  if (descriptor_ < 0) return failed("create", errno);
  written_ = std::move(name);
  return ::fchmod(descriptor_, everybody_allowed()) == 0 || failed("create", errno);
}

bool NewFile::take_standard_output() {
  path_ = "standard output";
  descriptor_ = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
  return descriptor_ >= 0 || failed("open", errno);
}

bool NewFile::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return failed("write", errno);
    bytes.remove_prefix(static_cast<size_t>(count));
  }
  return true;
}

bool NewFile::finish() {
  const int descriptor = descriptor_;
  descriptor_ = -1;
  if (::close(descriptor) != 0) return failed("write", errno);
  if (written_.empty()) return true;
  // A link, unlike a new name, does not replace what somebody has put there meanwhile.
  const bool named = overwrites_ ? std::rename(written_.c_str(), path_.c_str()) == 0
                                 : ::link(written_.c_str(), path_.c_str()) == 0;
  if (!named) return failed("create", errno);
  if (!overwrites_) ::unlink(written_.c_str());
  written_.clear();
  return true;
}

bool NewFile::failed(const char* action, int error) {
  raise_io_error(action, path_, error);
  return false;
}

}  // namespace krz
