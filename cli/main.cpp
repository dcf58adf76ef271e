// The command line: finds the command that the first word names and runs it.
#include <unistd.h>

#include <string>
#include <string_view>

#include "command.h"
#include "commands/actions.h"
#include "each_movie.h"
#include "help.h"
#include "language/names.h"
#include "terminal.h"

namespace cli {

void report(std::string_view message) {
  const bool is_remark = message.starts_with("warning: ") || message.starts_with("note: ");
  std::string line = "krz: ";
  if (is_coloured(STDERR_FILENO))
    line = is_remark ? "\x1b[33mkrz:\x1b[0m " : "\x1b[1;31mkrz:\x1b[0m ";
  line += message;
  line += '\n';
  [[maybe_unused]] const auto written = write(STDERR_FILENO, line.data(), line.size());
}

namespace {

int unknown_command(std::string_view word) {
  std::string message = std::string(word) + " is not a command";
  std::vector<std::string_view> names;
  for (const Noun& noun : nouns()) names.emplace_back(noun.name);
  for (const Command& command : commands()) {
    if (std::string_view(command.name).find(' ') == std::string_view::npos) {
      names.emplace_back(command.name);
    }
  }
  if (const std::string_view nearest = krz::nearest_name(word, names); !nearest.empty()) {
    message += "; did you mean `krz " + std::string(nearest) + "`?";
  } else {
    message += "; `krz --help` lists the commands";
  }
  report(message);
  return kWrongUsage;
}

int unknown_verb(const Noun& noun, std::string_view word) {
  report(std::string(noun.name) + (word.empty() ? " needs a verb" : " has no verb ") +
         std::string(word) + "; its verbs are " + noun.verbs);
  return kWrongUsage;
}

/// The command that the first words name, which are taken off `words`. Null when there is none,
/// which has then been reported.
const Command* take_command(std::span<char*>& words) {
  const std::string_view first = words[0];
  words = words.subspan(1);
  if (const Noun* noun = find_noun(first)) {
    const std::string_view verb = words.empty() ? std::string_view() : words[0];
    const Command* command = find_command(std::string(first) + " " + std::string(verb));
    if (command) {
      words = words.subspan(1);
    } else {
      unknown_verb(*noun, verb);
    }
    return command;
  }
  const Command* command = find_command(first);
  if (!command) unknown_command(first);
  return command;
}

bool is_help(std::string_view word) { return word == "--help" || word == "-h"; }

int help(std::span<char*> words) {
  if (words.empty()) {
    print_help();
    return kDone;
  }
  const Noun* noun = find_noun(words[0]);
  if (noun && (words.size() == 1 || is_help(words[1]))) {
    print_noun_help(*noun);
    return kDone;
  }
  const Command* command = take_command(words);
  if (!command) return kWrongUsage;
  print_command_help(*command);
  return kDone;
}

bool asks_for_help(const Command& command, std::span<char*> words) {
  for (const std::string_view word : words) {
    if (is_help(word)) return true;
    if (word == "--" || (command.stops_at_argument && !word.starts_with('-'))) return false;
  }
  return false;
}

int run_command(const Invocation& invocation) {
  const Command& command = *invocation.command;
  if (command.run) return command.run(invocation);
  const bool as_json = command.json_script && invocation.has("json");
  return run_program(as_json ? command.json_script : command.script,
                     std::string("krz ") + command.name, invocation, invocation.arguments);
}

int dispatch(std::span<char*> words) {
  if (words.empty()) {
    print_first_steps();
    return kWrongUsage;
  }
  const std::string_view first = words[0];
  if (is_help(first) || first == "help") return help(words.subspan(1));
  if (first == "--version") return print_version();
  if (first == "--reference") return print_class_reference();
  if (first == "--man") return print_man_page(words.subspan(1));
  if (first == "--completions") return print_completion(words.subspan(1));
  if (first == "--write-manual") return write_manual(words.subspan(1));
  if (words.size() > 1 && is_help(words[1]) && find_noun(first)) return help(words);
  std::span<char*> rest = words;
  const Command* command = take_command(rest);
  if (!command) return kWrongUsage;
  if (asks_for_help(*command, rest)) {
    print_command_help(*command);
    return kDone;
  }
  Invocation invocation;
  if (!parse_arguments(*command, rest, invocation)) return kWrongUsage;
  MovieRuns runs;
  if (!find_movies(invocation, runs)) return kWrongUsage;
  return runs.one_by_one ? run_for_each(invocation, runs, run_command) : run_command(invocation);
}

}  // namespace

}  // namespace cli

/// What the program calls once this library is loaded.
extern "C" __attribute__((visibility("default"))) int krz_command(int argc, char** argv) {
  return cli::dispatch(std::span<char*>(argv, static_cast<size_t>(argc)).subspan(argc > 0 ? 1 : 0));
}
