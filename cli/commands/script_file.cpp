#include "commands/script_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace cli {

namespace {

constexpr size_t kLongestScript = 16 * 1024 * 1024;

bool read_everything(int descriptor, std::string& text) {
  char buffer[65536];
  for (;;) {
    const ssize_t count = read(descriptor, buffer, sizeof buffer);
    if (count == 0) return true;
    if (count < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    text.append(buffer, static_cast<size_t>(count));
    if (text.size() > kLongestScript) {
      errno = EFBIG;
      return false;
    }
  }
}

}  // namespace

bool read_script(const std::string& path, std::string& text) {
  if (path == "-") return read_everything(STDIN_FILENO, text);
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool complete = read_everything(descriptor, text);
  const int error = errno;
  close(descriptor);
  errno = error;
  return complete;
}

std::string script_name(const std::string& path) { return path == "-" ? "standard input" : path; }

}  // namespace cli
