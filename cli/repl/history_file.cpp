#include "repl/history_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace cli {

namespace {

constexpr size_t kLongestLine = 4096;
constexpr off_t kMostRead = 1 << 20;

/// Makes a folder and those above it.
void make_folders(const std::string& path) {
  for (size_t slash = path.find('/', 1); slash != std::string::npos;
       slash = path.find('/', slash + 1))
    mkdir(path.substr(0, slash).c_str(), 0700);
}

std::string state_folder() {
  // The XDG rules: a relative path there is no path.
  if (const char* state = std::getenv("XDG_STATE_HOME"); state && state[0] == '/') return state;
  const char* home = std::getenv("HOME");
  return home && home[0] == '/' ? std::string(home) + "/.local/state" : std::string();
}

void write_whole(int descriptor, const std::string& text) {
  [[maybe_unused]] const ssize_t written = write(descriptor, text.data(), text.size());
}

}  // namespace

HistoryFile::HistoryFile() {
  const std::string folder = state_folder();
  if (folder.empty()) return;
  path_ = folder + "/krz/history";
  make_folders(path_);
}

std::vector<std::string> HistoryFile::load() {
  std::vector<std::string> lines;
  const int descriptor = path_.empty() ? -1 : open(path_.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat status {};
  if (descriptor < 0) return lines;  // It may not be there yet.
  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
    close(descriptor);
    path_.clear();
    return lines;
  }
  const off_t start = status.st_size > kMostRead ? status.st_size - kMostRead : 0;
  std::string text(static_cast<size_t>(status.st_size - start), '\0');
  const ssize_t count = pread(descriptor, text.data(), text.size(), start);
  close(descriptor);
  text.resize(count > 0 ? static_cast<size_t>(count) : 0);
  size_t begin = start > 0 ? text.find('\n') + 1 : 0;  // behind what may be half a line
  for (size_t end; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1)
    if (end > begin) lines.push_back(text.substr(begin, end - begin));
  const bool grown = start > 0 || lines.size() > 2 * kMostLines;
  if (lines.size() > kMostLines)
    lines.erase(lines.begin(), lines.end() - static_cast<ptrdiff_t>(kMostLines));
  if (!grown) return lines;

  const std::string shorter = path_ + ".new";
  const int output = open(shorter.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (output < 0) return lines;
  std::string kept;
  for (const std::string& line : lines) kept += line + '\n';
  write_whole(output, kept);
  close(output);
  std::rename(shorter.c_str(), path_.c_str());
  return lines;
}

void HistoryFile::add(const std::string& line) {
  if (path_.empty() || line.size() > kLongestLine) return;
  const int descriptor =
      open(path_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600);
  if (descriptor < 0) return;
  write_whole(descriptor, line + '\n');
  close(descriptor);
}

}  // namespace cli
