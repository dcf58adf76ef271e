#include "each_movie.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "commands/script_file.h"

namespace cli {

namespace {

constexpr Option kOptions[] = {
    {"files-from", 0, "LIST", "movies from a file, one a line; - for standard input"},
    {"keep-going", 'k', nullptr, "go on with the next movie after a failure"}};

volatile sig_atomic_t g_interrupted = 0;

/// KEY=VALUE: the sign stands before any slash, so that ./a=b.mov is a file.
bool is_assignment(const std::string& word) {
  const size_t equals = word.find('=');
  return equals != std::string::npos && equals > 0 && word.find('/') > equals;
}

bool has_option(const Command& command, std::string_view name) {
  return std::any_of(command.options.begin(), command.options.end(),
                     [&](const Option& option) { return name == option.name; });
}

/// Lines, or names between zero bytes, as `find -print0` writes them.
std::vector<std::string> names_in(const std::string& text) {
  const char separator = text.find('\0') == std::string::npos ? '\n' : '\0';
  std::vector<std::string> names;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find(separator, at), text.size());
    std::string name = text.substr(at, end - at);
    if (separator == '\n' && name.ends_with('\r')) name.pop_back();
    if (!name.empty()) names.push_back(std::move(name));
    at = end + 1;
  }
  return names;
}

bool read_list(const Invocation& invocation, std::vector<std::string>& names) {
  if (!invocation.has("files-from")) return true;
  const std::string path(invocation.value("files-from"));
  std::string text;
  if (!read_script(path, text)) {
    report(script_name(path) + ": " + std::strerror(errno));
    return false;
  }
  names = names_in(text);
  if (names.empty()) report(script_name(path) + ": no movie is named there");
  return !names.empty();
}

/// The movies among the arguments; what is left stays in order.
std::vector<std::string> take_movies(Movies which, bool is_listed, std::vector<std::string>& rest) {
  std::vector<std::string> movies;
  if (which == Movies::kFirst) {
    if (is_listed || rest.empty()) return movies;
    movies.push_back(rest.front());
    rest.erase(rest.begin());
    return movies;
  }
  const auto last = rest.end() - (which == Movies::kAllButLast && !rest.empty() ? 1 : 0);
  const auto behind = std::stable_partition(rest.begin(), last, [&](const std::string& word) {
    return which != Movies::kAllButAssignments || !is_assignment(word);
  });
  movies.assign(rest.begin(), behind);
  rest.erase(rest.begin(), behind);
  return movies;
}

/// The status of a run in a process of its own; 128 and the signal for one that a signal ended.
int status_of_run(const Invocation& one, int (*run)(const Invocation& one)) {
  const pid_t child = fork();
  if (child < 0) {
    report(std::string("no process can be started: ") + std::strerror(errno));
    return kFailed;
  }
  if (child == 0) {
    signal(SIGINT, SIG_DFL);
    _exit(run(one));
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void say(const Invocation& invocation, const std::string& line) {
  if (!invocation.has("quiet")) report(line);
}

void print_heading(const std::string& movie) {
  const std::string line = movie + "\n";
  [[maybe_unused]] const auto written = write(STDOUT_FILENO, line.data(), line.size());
}

}  // namespace

std::span<const Option> several_movies_options() { return kOptions; }

bool find_movies(Invocation& invocation, MovieRuns& runs) {
  const Command& command = *invocation.command;
  if (command.movies == Movies::kNone) return true;
  std::vector<std::string> listed;
  if (!read_list(invocation, listed)) return false;
  if (command.movies == Movies::kTogether) {
    invocation.arguments.insert(invocation.arguments.end(), listed.begin(), listed.end());
    return true;
  }
  runs.rest = invocation.arguments;
  runs.movies = take_movies(command.movies, !listed.empty(), runs.rest);
  runs.movies.insert(runs.movies.end(), listed.begin(), listed.end());
  if (runs.movies.size() > 1 && invocation.has("output")) {
    report(std::string("-o takes one movie") +
           (has_option(command, "in-place") ? "; -i changes many" : ""));
    return false;
  }
  // A document of several movies is the script's own work.
  const bool is_one_document = invocation.has("json");
  if (is_one_document && runs.movies.size() > 1 && command.movies != Movies::kAll) {
    report(std::string(command.name) + " --json takes one movie");
    return false;
  }
  runs.one_by_one = runs.movies.size() > 1 && !is_one_document;
  if (!listed.empty() && !runs.one_by_one) {
    invocation.arguments = runs.movies;
    invocation.arguments.insert(invocation.arguments.end(), runs.rest.begin(), runs.rest.end());
  }
  return true;
}

int run_for_each(const Invocation& invocation, const MovieRuns& runs,
                 int (*run)(const Invocation& one)) {
  // The run that is interrupted ends by itself; no other begins behind it.
  struct sigaction action {};
  action.sa_handler = [](int) { g_interrupted = 1; };
  sigaction(SIGINT, &action, nullptr);

  const Command& command = *invocation.command;
  const bool is_listing = !has_option(command, "in-place") && command.movies != Movies::kAllButLast;
  const bool keeps_going = invocation.has("keep-going");
  size_t done = 0;
  std::string failed;
  int first_failure = kDone;
  for (const std::string& movie : runs.movies) {
    if (is_listing) print_heading(movie);
    Invocation one = invocation;
    one.arguments = {movie};
    one.arguments.insert(one.arguments.end(), runs.rest.begin(), runs.rest.end());
    const int status = status_of_run(one, run);
    if (status == kDone) {
      ++done;
      continue;
    }
    if (first_failure == kDone) first_failure = status;
    failed += (failed.empty() ? "" : ", ") + movie + " (status " + std::to_string(status) + ")";
    if (!keeps_going || g_interrupted) break;
  }
  const std::string count = std::to_string(runs.movies.size());
  if (failed.empty()) {
    if (!is_listing) say(invocation, count + " movies done");
    return kDone;
  }
  report(std::to_string(done) + " of " + count + " movies done; failed: " + failed +
         (keeps_going ? "" : "; -k goes on after a failure"));
  return keeps_going && !g_interrupted ? kSomeFailed : first_failure;
}

}  // namespace cli
