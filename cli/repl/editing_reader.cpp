// Lines that a person edits, with the editline library.
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cwchar>

#include "language/names.h"
#include "repl/history_file.h"
#include "repl/libedit.h"
#include "repl/line_reader.h"

namespace cli {

namespace {

constexpr char kControlD = 4;

size_t characters_in(std::string_view text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
  }));
}

/// What all names begin with, in the spelling of the first.
std::string_view common_beginning(const std::vector<std::string>& names) {
  std::string_view common = names.front();
  for (const std::string& name : names) {
    while (!krz::equal_names(common, std::string_view(name).substr(0, common.size())))
      common.remove_suffix(1);
  }
  return common;
}

class EditingReader final : public LineReader {
 public:
  EditingReader(const Libedit& library, Complete complete)
      : library_(library), complete_(std::move(complete)) {
    // Letters beyond ASCII are one character each only in a locale that says so.
    if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1)
      std::setlocale(LC_CTYPE, "C.UTF-8");
    editor_ = library_.init("krz", stdin, stdout, stderr);
    if (editor_ == nullptr) return;
    history_ = library_.history_init();
    library_.set(editor_, EL_CLIENTDATA, this);
    library_.set(editor_, EL_PROMPT, &EditingReader::prompt_of);
    library_.set(editor_, EL_EDITOR, "emacs");
    library_.set(editor_, EL_SIGNAL, 1);
    library_.set(editor_, EL_GETCFN, &EditingReader::read_character);
    // The narrow form copies the names and never gives them back.
    library_.set_wide(editor_, EL_ADDFN, L"krz-complete", L"Completes names",
                      &EditingReader::complete);
    library_.set(editor_, EL_BIND, "^I", "krz-complete", nullptr);
    library_.set(editor_, EL_BIND, "^R", "em-inc-search-prev", nullptr);
    library_.source(editor_, nullptr);  // the user's own key bindings
    if (history_ == nullptr) return;
    HistEvent event;
    library_.history(history_, &event, H_SETSIZE, static_cast<int>(HistoryFile::kMostLines));
    library_.history(history_, &event, H_SETUNIQUE, 1);
    library_.set(editor_, EL_HIST, library_.history, history_);
    for (const std::string& line : file_.load())
      library_.history(history_, &event, H_ENTER, line.c_str());
  }

  ~EditingReader() override {
    if (history_ != nullptr) library_.history_end(history_);
    if (editor_ != nullptr) library_.end(editor_);
  }

  bool works() const { return editor_ != nullptr; }

  Got read(const std::string& prompt, std::string& line) override {
    prompt_ = prompt;
    take_interrupt();
    library_.resize(editor_);
    int length = 0;
    const char* read = library_.gets(editor_, &length);
    if (read == nullptr || length <= 0) {
      std::fputs("\n", stdout);
      std::fflush(stdout);
      return take_interrupt() ? Got::kInterrupted : Got::kEnd;
    }
    line.assign(read, static_cast<size_t>(length));
    if (line.ends_with('\n')) line.pop_back();
    remember(line);
    return Got::kLine;
  }

 private:
  void remember(const std::string& line) {
    if (line.find_first_not_of(" \t") == std::string::npos || line == last_) return;
    last_ = line;
    HistEvent event;
    if (history_ != nullptr) library_.history(history_, &event, H_ENTER, line.c_str());
    file_.add(line);
  }

  static EditingReader& reader_of(EditLine* editor) {
    void* reader = nullptr;
    libedit()->get(editor, EL_CLIENTDATA, &reader);
    return *static_cast<EditingReader*>(reader);
  }

  static char* prompt_of(EditLine* editor) { return reader_of(editor).prompt_.data(); }

  /// Ctrl-D, typed on an empty line while something ran, has become a zero byte on its way through
  /// the terminal's two modes.
  static bool is_early_end(EditLine* editor, char byte) {
    const LineInfo* info = libedit()->line(editor);
    return byte == 0 && info->lastchar == info->buffer;
  }

  /// One character from the terminal. The library's own function would go on after Ctrl-C.
  static int read_character(EditLine* editor, wchar_t* character) {
    mbstate_t state{};
    for (;;) {
      if (!wait_for_input()) return -1;
      char byte = 0;
      const ssize_t count = ::read(STDIN_FILENO, &byte, 1);
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return static_cast<int>(count);
      if (is_early_end(editor, byte)) byte = kControlD;
      const size_t length = std::mbrtowc(character, &byte, 1, &state);
      if (length == static_cast<size_t>(-2)) continue;  // not all of it yet
      if (length == static_cast<size_t>(-1)) *character = L'?';
      return 1;
    }
  }

  /// False for Ctrl-C, also when it came a moment before: it can only come while we wait.
  static bool wait_for_input() {
    sigset_t interrupt;
    sigset_t before;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    sigprocmask(SIG_BLOCK, &interrupt, &before);
    int ready = 0;
    while (ready <= 0 && !interrupt_waits()) {
      pollfd input{STDIN_FILENO, POLLIN, 0};
      ready = ::ppoll(&input, 1, nullptr, &before);
      if (ready < 0 && errno != EINTR) break;
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return !interrupt_waits();
  }

  static unsigned char complete(EditLine* editor, int) { return reader_of(editor).complete_word(); }

  unsigned char complete_word() {
    const LineInfo* info = library_.line(editor_);
    const std::string line(info->buffer, static_cast<size_t>(info->cursor - info->buffer));
    if (line.find_first_not_of(" \t") == std::string::npos) {
      return library_.insert(editor_, "  ") == 0 ? CC_REFRESH : CC_ERROR;
    }
    const Completions found = complete_(line);
    if (found.names.empty()) return CC_REFRESH_BEEP;
    const std::string_view word = std::string_view(line).substr(found.word);
    const std::string_view common = common_beginning(found.names);
    const bool longer = common.size() > word.size();
    if (longer || found.names.size() == 1) {
      library_.remove(editor_, static_cast<int>(characters_in(word)));
      library_.insert(editor_, std::string(common).c_str());
      return CC_REFRESH;
    }
    list(found.names);
    return CC_REDISPLAY;
  }

  /// The names below the line, in columns.
  static void list(const std::vector<std::string>& names) {
    constexpr size_t kMostNames = 120;
    size_t width = 80;
    struct winsize window {};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) == 0 && window.ws_col > 0) width = window.ws_col;
    const size_t shown = std::min(names.size(), kMostNames);
    size_t column = 0;
    for (size_t i = 0; i < shown; ++i) column = std::max(column, characters_in(names[i]) + 2);
    const size_t columns = std::max<size_t>(1, width / column);
    std::string text;
    for (size_t i = 0; i < shown; ++i) {
      if (i % columns == 0) text += '\n';
      text += names[i];
      text.append(column - characters_in(names[i]), ' ');
    }
    if (names.size() > shown) text += "\n… " + std::to_string(names.size() - shown) + " more";
    text += '\n';
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
  }

  const Libedit& library_;
  Complete complete_;
  EditLine* editor_ = nullptr;
  History* history_ = nullptr;
  HistoryFile file_;
  std::string prompt_;
  std::string last_;
};

}  // namespace

std::unique_ptr<LineReader> editing_reader(Complete complete) {
  const Libedit* library = libedit();
  if (library == nullptr) return nullptr;
  auto reader = std::make_unique<EditingReader>(*library, std::move(complete));
  if (!reader->works()) return nullptr;
  return reader;
}

}  // namespace cli
