#include "language/includes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "language/names.h"

namespace krz {
namespace {

constexpr int kDeepest = 50;
constexpr std::string_view kWord = "Include";

bool is_blank(char c) { return c == ' ' || c == '\t'; }
bool ends_line(char c) { return c == '\n' || c == '\r'; }

using FileId = std::pair<dev_t, ino_t>;

/// Reads at most `limit` bytes of a regular file. The result says what is wrong, empty for nothing.
/// Opening never waits: not for a writer of a pipe, nor for a device.
std::string read_file(const std::string& path, size_t limit, std::string& text, FileId& id) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) return std::strerror(errno);
  std::string wrong;
  struct stat status {};
  if (fstat(descriptor, &status) != 0) {
    wrong = std::strerror(errno);
  } else if (!S_ISREG(status.st_mode)) {
    wrong = "it is no regular file";
  } else if (static_cast<uint64_t>(status.st_size) > limit) {
    wrong = "the script would be larger than 16 MiB with it";
  } else {
    id = {status.st_dev, status.st_ino};
    text.resize(static_cast<size_t>(status.st_size));
    size_t filled = 0;
    while (filled < text.size()) {
      const ssize_t count = read(descriptor, text.data() + filled, text.size() - filled);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) wrong = std::strerror(errno);
      if (count <= 0) break;
      filled += static_cast<size_t>(count);
    }
    text.resize(filled);
  }
  close(descriptor);
  return wrong;
}

/// The path between the quotes of an include line; empty when there is none. `end` is that of the
/// line.
std::string_view path_of(std::string_view text, size_t position, size_t end) {
  size_t place = position + 1 + kWord.size();
  while (place < end && is_blank(text[place])) ++place;
  if (place >= end || text[place] != '"') return {};
  const size_t close = text.find('"', place + 1);
  if (close == std::string_view::npos || close >= end) return {};
  return text.substr(place + 1, close - place - 1);
}

class Expansion {
 public:
  Expansion(SourceText& source, DiagnosticList& diagnostics) : diagnostics_(diagnostics) {
    files_.push_back({source.file(), std::string(source.text())});
    struct stat status {};
    if (stat(source.file().c_str(), &status) == 0)
      known_.emplace_back(status.st_dev, status.st_ino);
    append(0, 0, 0);
    source.set_pieces(std::move(text_), std::move(files_), std::move(pieces_));
    for (auto& [offset, message] : complaints_) diagnostics_.add(offset, std::move(message));
  }

 private:
  /// Appends what lies in a file from `begin` on, with what it includes.
  void append(size_t file, size_t begin, int depth) {
    for (size_t from = begin;;) {
      // The file list may grow and move; its texts must not be held over a call.
      const std::string_view all = files_[file].text;
      size_t hash = all.find('#', from);
      while (hash != std::string_view::npos && !is_include_line(all, hash))
        hash = all.find('#', hash + 1);
      size_t end = all.size();
      if (hash != std::string_view::npos) {
        end = hash;
        while (end < all.size() && !ends_line(all[end])) ++end;
      }
      const std::string path(hash == std::string_view::npos ? std::string_view()
                                                            : path_of(all, hash, end));
      const auto start = static_cast<SourceOffset>(text_.size());
      pieces_.push_back({start, static_cast<SourceOffset>(from), file});
      text_ += all.substr(from, end - from);
      if (hash == std::string_view::npos) return;
      include(path, file, static_cast<SourceOffset>(start + (hash - from)), depth);
      from = end;
    }
  }

  void include(const std::string& path, size_t includer, SourceOffset place, int depth) {
    if (path.empty())
      return complain(place, "#Include needs a path in quotes: #Include \"other.bas\"");
    if (depth >= kDeepest) return complain(place, "files include each other too deeply");
    std::string name = path;
    const size_t slash = files_[includer].name.rfind('/');
    if (path.front() != '/' && slash != std::string::npos)
      name = files_[includer].name.substr(0, slash + 1) + path;
    std::string text;
    FileId id;
    // The main file's own text has its share of the bound, too.
    const size_t used = text_.size() + files_.front().text.size();
    const size_t left = used < kMaxSourceSize ? kMaxSourceSize - used : 0;
    const std::string wrong = read_file(name, left, text, id);
    if (!wrong.empty())
      return complain(place, "cannot include “" + shown_text(name) + "”: " + wrong);
    if (std::find(known_.begin(), known_.end(), id) != known_.end()) return;
    known_.push_back(id);

    text_ += '\n';
    size_t begin = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    if (std::string_view(text).substr(begin).starts_with("#!"))
      while (begin < text.size() && !ends_line(text[begin])) ++begin;
    files_.push_back({std::move(name), std::move(text)});
    append(files_.size() - 1, begin, depth + 1);
    text_ += '\n';
  }

  void complain(SourceOffset place, std::string message) {
    complaints_.emplace_back(place, std::move(message));
  }

  DiagnosticList& diagnostics_;
  std::string text_;
  std::vector<SourceText::File> files_;
  std::vector<SourceText::Piece> pieces_;
  std::vector<FileId> known_;
  std::vector<std::pair<SourceOffset, std::string>> complaints_;
};

}  // namespace

bool is_include_line(std::string_view text, size_t position) {
  const std::string_view rest = text.substr(position + 1);
  if (rest.size() < kWord.size() || !equal_names(rest.substr(0, kWord.size()), kWord)) return false;
  const char after = rest.size() > kWord.size() ? rest[kWord.size()] : '\n';
  if (!is_blank(after) && !ends_line(after) && after != '"') return false;
  while (position > 0 && is_blank(text[position - 1])) --position;
  return position == 0 || ends_line(text[position - 1]);
}

void read_includes(SourceText& source, DiagnosticList& diagnostics) {
  const std::string_view text = source.text();
  for (size_t hash = text.find('#'); hash != std::string_view::npos;
       hash = text.find('#', hash + 1)) {
    if (is_include_line(text, hash)) {
      const Expansion expansion(source, diagnostics);
      return;
    }
  }
}

}  // namespace krz
