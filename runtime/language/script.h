// Running scripts: source text in, exit status and diagnostics out.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace krz {

class Runtime;

/// A place in a source and what is wrong there.
struct KRZ_API Diagnostic {
  std::string file;
  int line = 0;    // from 1
  int column = 0;  // from 1, in characters
  std::string message;
  std::string source_line;  // the line's text, for the caret

  /// "file:line:column: error: message", the source line, and a caret under the column; ends with a
  /// new line.
  std::string text() const;

  /// The source line and the caret alone, each with its new line.
  std::string source_excerpt() const;
};

/// A checked and compiled script.
class KRZ_API Script {
 public:
  ~Script();
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  /// Parses, checks and compiles. Null when anything is wrong; `diagnostics` then says what, in
  /// source order, at most twenty.
  static std::unique_ptr<Script> compile(Runtime& runtime, std::string_view source,
                                         std::string file, std::vector<Diagnostic>& diagnostics);

  /// The compiled script as bytes, for load(). They are good for the build of krz that made them.
  std::string bytecode() const;

  /// Makes a script of its bytecode, without compiling it. Null when these bytes are none, come
  /// from another version of krz, or name a class that `runtime` does not have: compile() then says
  /// what is wrong. `source` and `file` are what it was compiled from, for messages. The bytes must
  /// outlive the script.
  static std::unique_ptr<Script> load(Runtime& runtime, std::string_view bytecode,
                                      std::string_view source, std::string file);

  /// Runs the script. The result is its exit status: 0, what Quit was given, or 1 after an uncaught
  /// exception, which has then been reported on standard error with its place.
  int run();

  /// Makes the script that runs now, or the next one that starts, stop at its next loop or call
  /// with exit status 130. May be called from a signal handler.
  static void interrupt();

  /// Whether that was asked for. What takes long inside of one call has to look.
  static bool is_interrupted();

 private:
  struct State;
  explicit Script(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace krz
