#include "library/file_operations.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>

#include "library/io_error.h"
#include "object/exceptions.h"

namespace krz {

namespace {

constexpr size_t kPiece = 256 * 1024;

/// Closes a descriptor whichever way it is left.
struct Descriptor {
  int number;
  explicit Descriptor(int n) : number(n) {}
  ~Descriptor() {
    if (number >= 0) ::close(number);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
};

// 0, or the errno value of what failed.
int copy_bytes(int from, int to) {
  const auto piece = std::make_unique_for_overwrite<char[]>(kPiece);
  for (;;) {
    const ssize_t count = ::read(from, piece.get(), kPiece);
    if (count == 0) return 0;
    if (count < 0 && errno != EINTR) return errno;
    for (ssize_t done = 0; done < count;) {
      const ssize_t written = ::write(to, piece.get() + done, static_cast<size_t>(count - done));
      if (written < 0 && errno != EINTR) return errno;
      done += std::max<ssize_t>(written, 0);
    }
  }
}

bool is_folder(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::vector<std::string> folder_names(const std::string& path) {
  std::vector<std::string> names;
  if (!check_path(path)) return names;
  DIR* const folder = ::opendir(path.c_str());
  if (!folder) {
    raise_io_error("list", path, errno);
    return names;
  }
  while (const dirent* const entry = ::readdir(folder)) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  ::closedir(folder);
  std::sort(names.begin(), names.end());
  return names;
}

void delete_file(const std::string& path) {
  if (!check_path(path)) return;
  if (is_folder(path)) return raise_io_error("delete", path, EISDIR);
  if (::unlink(path.c_str()) != 0) raise_io_error("delete", path, errno);
}

void create_folder(const std::string& path) {
  constexpr mode_t kEverybody = 0777;
  if (check_path(path) && ::mkdir(path.c_str(), kEverybody) != 0)
    raise_io_error("create the folder", path, errno);
}

void copy_file(const std::string& from, const std::string& to) {
  if (!check_path(from) || !check_path(to)) return;
  // A pipe would wait for somebody to write to it.
  const Descriptor source(::open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (source.number < 0 || ::fstat(source.number, &status) != 0)
    return raise_io_error("copy", from, errno);
  if (!S_ISREG(status.st_mode))
    return raise_io_error("copy", from, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
  constexpr mode_t kPermissions = 0777;
  const Descriptor target(
      ::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, status.st_mode & kPermissions));
  if (target.number < 0) return raise_io_error("create", to, errno);
  if (const int error = copy_bytes(source.number, target.number)) {
    ::unlink(to.c_str());  // half a copy is none
    raise_io_error("copy to", to, error);
  }
}

void move_file(const std::string& from, const std::string& to) {
  if (!check_path(from) || !check_path(to)) return;
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return;
  if (errno == EXDEV || errno == EINVAL || errno == ENOSYS) {
    copy_file(from, to);
    if (!exception_pending()) delete_file(from);
    return;
  }
  const int error = errno;
  raise_io_error(error == EEXIST ? "create" : "move", error == EEXIST ? to : from, error);
}

}  // namespace krz
