// The lines of earlier sessions, kept in a text file of the user's. Where it cannot be read or
// written, there is no history, and nobody is told.
#pragma once

#include <string>
#include <vector>

namespace cli {

class HistoryFile {
 public:
  static constexpr size_t kMostLines = 1000;

  /// The file $XDG_STATE_HOME/krz/history, or the same below ~/.local/state. Its folders are made.
  HistoryFile();

  /// The last lines, oldest first. A file that has grown far beyond them is cut down to them.
  std::vector<std::string> load();

  /// Appends a line, at once: sessions beside each other keep theirs together.
  void add(const std::string& line);

 private:
  std::string path_;  // empty for none
};

}  // namespace cli
