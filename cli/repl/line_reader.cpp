#include "repl/line_reader.h"

#include <signal.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "language/script.h"

namespace cli {

namespace {

volatile sig_atomic_t g_interrupted = 0;

class PlainReader final : public LineReader {
 public:
  explicit PlainReader(bool with_prompts) : with_prompts_(with_prompts) {}
  ~PlainReader() override { std::free(buffer_); }

  Got read(const std::string& prompt, std::string& line) override {
    if (with_prompts_) {
      std::fputs(prompt.c_str(), stdout);
      std::fflush(stdout);
    }
    errno = 0;
    const ssize_t length = getline(&buffer_, &size_, stdin);
    if (length < 0) {
      const bool interrupted = errno == EINTR && take_interrupt();
      std::clearerr(stdin);
      return interrupted ? Got::kInterrupted : Got::kEnd;
    }
    line.assign(buffer_, static_cast<size_t>(length));
    if (line.ends_with('\n')) line.pop_back();
    if (line.ends_with('\r')) line.pop_back();
    return Got::kLine;
  }

 private:
  bool with_prompts_;
  char* buffer_ = nullptr;
  size_t size_ = 0;
};

}  // namespace

std::unique_ptr<LineReader> plain_reader(bool with_prompts) {
  return std::make_unique<PlainReader>(with_prompts);
}

void catch_interrupts() {
  struct sigaction action {};
  action.sa_handler = [](int) {
    g_interrupted = 1;
    krz::Script::interrupt();
  };
  sigaction(SIGINT, &action, nullptr);  // without SA_RESTART: reading a line ends, too
}

bool interrupt_waits() { return g_interrupted != 0; }

bool take_interrupt() {
  const bool interrupted = g_interrupted != 0;
  g_interrupted = 0;
  return interrupted;
}

}  // namespace cli
