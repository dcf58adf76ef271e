// The command krz: finds the command that the first word names and runs it.
#include <unistd.h>

#include <string>
#include <string_view>

#include "command.h"
#include "commands/actions.h"
#include "help.h"
#include "language/names.h"

namespace cli {

void report(std::string_view message) {
  std::string line = "krz: ";
  line += message;
  line += '\n';
  [[maybe_unused]] const auto written = write(STDERR_FILENO, line.data(), line.size());
}

namespace {

int unknown_command(std::string_view word) {
  std::string message = std::string(word) + " is not a command";
  std::vector<std::string_view> names;
  for (const Command& command : commands()) names.emplace_back(command.name);
  if (const std::string_view nearest = krz::nearest_name(word, names); !nearest.empty()) {
    message += "; did you mean `krz " + std::string(nearest) + "`?";
  } else {
    message += "; `krz --help` lists the commands";
  }
  report(message);
  return kWrongUsage;
}

int help(std::span<char*> words) {
  if (words.empty()) {
    print_help();
    return kDone;
  }
  const Command* command = find_command(words[0]);
  if (!command) return unknown_command(words[0]);
  print_command_help(*command);
  return kDone;
}

bool asks_for_help(const Command& command, std::span<char*> words) {
  for (const std::string_view word : words) {
    if (word == "--help" || word == "-h") return true;
    if (word == "--" || (command.stops_at_argument && !word.starts_with('-'))) return false;
  }
  return false;
}

int dispatch(std::span<char*> words) {
  if (words.empty()) {
    print_help();
    return kWrongUsage;
  }
  const std::string_view first = words[0];
  const std::span<char*> rest = words.subspan(1);
  if (first == "--help" || first == "-h" || first == "help") return help(rest);
  if (first == "--version") return print_version();
  const Command* command = find_command(first);
  if (!command) return unknown_command(first);
  if (asks_for_help(*command, rest)) {
    print_command_help(*command);
    return kDone;
  }
  Invocation invocation;
  if (!parse_arguments(*command, rest, invocation)) return kWrongUsage;
  if (command->run) return command->run(invocation);
  const bool as_json = command->json_script && invocation.has("json");
  return run_program(as_json ? command->json_script : command->script,
                     std::string("krz ") + command->name, invocation, invocation.arguments);
}

}  // namespace

}  // namespace cli

int main(int argc, char** argv) {
  return cli::dispatch(std::span<char*>(argv, static_cast<size_t>(argc)).subspan(argc > 0 ? 1 : 0));
}
