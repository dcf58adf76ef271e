// A session: a script that grows while it runs, one piece of input after another.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace krz {

class Runtime;

/// What the pieces declare is known to those that follow: variables keep their values, and Subs,
/// Functions, Classes and constants stay. A name may be declared again and means the new thing from
/// then on; what was compiled with a variable of the same type, or with a routine of the same
/// parameters and result, sees the new one too. One session runs at a time, and no Script with it.
class KRZ_API Session {
 public:
  /// `name` is what messages call the input.
  Session(Runtime& runtime, std::string name);

  /// Variables and instances die, with their Destructors.
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  enum class Result : uint8_t {
    kDone,
    kFailed,  // what was wrong has been reported on standard error; the session goes on
    kInterrupted,
    kQuit,  // the session is over; exit_status() tells what Quit was given
  };

  /// Runs one piece of input: any number of lines. An expression alone prints its value.
  /// Script::interrupt() stops it. Lines of the input are counted through all its pieces; a piece
  /// that is not the user's input comes with a name of its own.
  Result run(std::string_view text, std::string_view file = {});

  int exit_status() const;

  /// Whether a text is a piece by itself. Unfinished: a block is open in it, or its last line ends
  /// with an underscore. Damaged: the same, and something else is wrong already.
  enum class Completeness : uint8_t { kWhole, kUnfinished, kDamaged };
  static Completeness completeness(std::string_view text);

  /// Ways to go on behind a text: names that begin like its last word, or all members when it ends
  /// with a dot. In order, each once. Nothing is run for it.
  struct Completion {
    size_t word = 0;  // where in the text the last word begins
    std::vector<std::string> names;
  };
  Completion complete(std::string_view text) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace krz
