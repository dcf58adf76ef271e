// Where the lines of a session come from.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Names that may stand at the end of a line, and where in it the word begins that they replace.
struct Completions {
  size_t word = 0;
  std::vector<std::string> names;
};
using Complete = std::function<Completions(std::string_view line)>;

class LineReader {
 public:
  virtual ~LineReader() = default;

  enum class Got { kLine, kEnd, kInterrupted };

  /// The next line, without its end. The last one may end without one.
  virtual Got read(const std::string& prompt, std::string& line) = 0;
};

/// Reads standard input as it is, with prompts on standard output or without.
std::unique_ptr<LineReader> plain_reader(bool with_prompts);

/// Lets a person edit lines on a terminal, with history and completion; null without the library
/// that does it.
std::unique_ptr<LineReader> editing_reader(Complete complete);

/// From now on, Ctrl-C interrupts what runs in the session, or the line that is being read.
void catch_interrupts();

/// Whether Ctrl-C was pressed since it was last asked.
bool take_interrupt();

/// The same, without forgetting it.
bool interrupt_waits();

}  // namespace cli
