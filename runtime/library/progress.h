// A line on the terminal that tells how far a long piece of work is.
#pragma once

#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <string>

#include "runtime.h"

namespace krz {

/// Says nothing for the first second, nothing when standard error is no terminal, and takes its
/// line away in the end.
class Progress {
 public:
  /// Work on `what` number `first` to `last`.
  Progress(std::string what, int64_t first, int64_t last)
      : what_(std::move(what)), first_(first), last_(last), shown_(::isatty(STDERR_FILENO) == 1) {}
  ~Progress() {
    if (is_visible_) Runtime::current().write_error("\r\x1b[K");
  }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void show(int64_t number) {
    if (!shown_) return;
    const auto now = std::chrono::steady_clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds(200);
    is_visible_ = true;
    const int64_t percent = (number - first_) * 100 / (last_ - first_ + 1);
    Runtime::current().write_error("\r" + what_ + " " + std::to_string(number) + " of " +
                                   std::to_string(last_) + ", " + std::to_string(percent) + " %");
  }

 private:
  std::string what_;
  int64_t first_;
  int64_t last_;
  bool shown_;
  bool is_visible_ = false;
  std::chrono::steady_clock::time_point next_ =
      std::chrono::steady_clock::now() + std::chrono::seconds(1);
};

}  // namespace krz
