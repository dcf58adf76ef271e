// krz repl: a session of the language, at a terminal or from a pipe.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "command_line_class.h"
#include "commands/actions.h"
#include "commands/scripts.h"
#include "language/names.h"
#include "language/session.h"
#include "repl/line_reader.h"
#include "runtime.h"

namespace cli {

namespace {

using krz::Session;

constexpr int kInterrupted = 130;

/// Whether a line may end a piece that the lines before it left unfinished. Only then is the piece
/// looked at again as a whole, so that long blocks do not take long.
bool may_finish(std::string_view line, std::string_view before) {
  if (before.ends_with("_\n")) return true;
  for (const std::string_view word : {"end", "next", "wend", "loop", "_"}) {
    const auto found = std::search(line.begin(), line.end(), word.begin(), word.end(),
                                   [](char a, char b) { return krz::fold_ascii(a) == b; });
    if (found != line.end()) return true;
  }
  return false;
}

class Conversation {
 public:
  Conversation(krz::Runtime& runtime, bool with_person)
      : session_(runtime, with_person ? "input" : "standard input"), with_person_(with_person) {
    if (!with_person) {
      reader_ = plain_reader(false);
      return;
    }
    reader_ = editing_reader([this](std::string_view line) {
      const size_t before = piece_.size();
      Session::Completion found = session_.complete(piece_ + std::string(line));
      return Completions{found.word - before, std::move(found.names)};
    });
    if (reader_ == nullptr) {
      report("lines cannot be edited without libedit (libedit.so.2; Debian: libedit2)");
      reader_ = plain_reader(true);
    }
  }

  /// Runs what opens the movie. False when the session is over already.
  bool begin(std::string_view program) {
    return session_.run(program, "krz repl") == Session::Result::kDone;
  }

  int exit_status() const { return session_.exit_status(); }

  /// Reads and runs pieces to the end.
  int run() {
    for (std::string line;;) {
      switch (reader_->read(piece_.empty() ? "krz> " : "...> ", line)) {
        case LineReader::Got::kInterrupted:
          if (!with_person_) return kInterrupted;
          piece_.clear();
          continue;
        case LineReader::Got::kEnd:
          if (!with_person_ && !piece_.empty() && !run_piece()) return end_;
          return failed_ && !with_person_ ? kFailed : kDone;
        case LineReader::Got::kLine:
          break;
      }
      const bool look = with_person_ || piece_.empty() || may_finish(line, piece_);
      piece_ += line + '\n';
      if (look && is_whole() && !run_piece()) return end_;
    }
  }

 private:
  /// A person sees at once what is wrong; a pipe's block is read to its end, so that its rest is
  /// not taken for something else.
  bool is_whole() const {
    const Session::Completeness found = Session::completeness(piece_);
    return found == Session::Completeness::kWhole ||
           (with_person_ && found == Session::Completeness::kDamaged);
  }

  /// False when the session is over, with the exit status in `end_`.
  bool run_piece() {
    std::string piece;
    piece.swap(piece_);
    switch (session_.run(piece)) {
      case Session::Result::kDone:
        return true;
      case Session::Result::kFailed:
        failed_ = true;
        return true;
      case Session::Result::kInterrupted:
        if (with_person_) report("interrupted");
        end_ = kInterrupted;
        return with_person_;
      case Session::Result::kQuit:
        end_ = session_.exit_status();
        return false;
    }
    return false;
  }

  Session session_;
  bool with_person_;
  std::unique_ptr<LineReader> reader_;
  std::string piece_;  // lines of one that is not whole yet
  bool failed_ = false;
  int end_ = kDone;
};

}  // namespace

int run_session(const Invocation& invocation) {
  if (invocation.arguments.empty() && invocation.has("write")) {
    report("-w needs a movie: krz repl -w MOVIE");
    return kWrongUsage;
  }
  krz::RuntimeOptions options;
  options.arguments = invocation.arguments;
  const bool with_person = isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1;
  // A person sees each line when it is printed, in order with what is typed.
  if (with_person) {
    options.standard_output = [](std::string_view text) {
      std::fwrite(text.data(), 1, text.size(), stdout);
    };
  }
  // As in krz run, the process takes the runtime with it.
  static krz::Runtime& runtime = *new krz::Runtime(std::move(options));
  if (const std::string failure = runtime.load_module(krz::Runtime::default_module_path());
      !failure.empty()) {
    report(failure);
    return kFailed;
  }
  register_command_line(runtime, invocation);

  catch_interrupts();
  Conversation conversation(runtime, with_person);
  if (with_person) std::puts("krz " KRZ_VERSION "; Tab completes, Ctrl-D or Quit leaves");
  std::fflush(stdout);
  if (!invocation.arguments.empty() && !conversation.begin(kReplScript))
    return conversation.exit_status();
  return conversation.run();
}

}  // namespace cli
