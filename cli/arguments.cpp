// Sorting the words of a command line into arguments and options, with getopt_long over the
// command's own records.
#include <getopt.h>

#include <string>

#include "command.h"
#include "each_movie.h"

namespace cli {

bool Invocation::has(std::string_view option) const {
  for (const auto& [name, value] : options) {
    if (name == option) return true;
  }
  return false;
}

std::string_view Invocation::value(std::string_view option) const {
  std::string_view found;
  for (const auto& [name, value] : options) {
    if (name == option) found = value;
  }
  return found;
}

namespace {

std::string usage_hint(const Command& command) {
  return std::string("; see `krz help ") + command.name + "`";
}

bool right_number_of_arguments(const Command& command, const Invocation& invocation) {
  // A list stands for one movie, or for as many as there may be.
  const size_t count = invocation.arguments.size() + (invocation.has("files-from") ? 1 : 0);
  if (count < static_cast<size_t>(command.least_arguments)) {
    report(std::string(command.name) + " needs more arguments: krz " + command.name + " " +
           command.synopsis);
    return false;
  }
  if (command.most_arguments >= 0 && count > static_cast<size_t>(command.most_arguments)) {
    report(std::string(command.name) + " takes no more arguments than: krz " + command.name + " " +
           command.synopsis);
    return false;
  }
  return true;
}

}  // namespace

std::vector<Option> options_of(const Command& command) {
  std::vector<Option> options(command.options.begin(), command.options.end());
  if (command.movies != Movies::kNone) {
    const auto several = several_movies_options();
    options.insert(options.end(), several.begin(), several.end());
  }
  return options;
}

bool parse_arguments(const Command& command, std::span<char*> words, Invocation& invocation) {
  const std::vector<Option> options = options_of(command);
  std::vector<option> long_options;
  std::string short_options = command.stops_at_argument ? "+:" : ":";
  for (size_t i = 0; i < options.size(); ++i) {
    const Option& one = options[i];
    const int takes_value = !one.value_name            ? no_argument
                            : one.value_name[0] == '[' ? optional_argument
                                                       : required_argument;
    long_options.push_back({one.name, takes_value, nullptr, static_cast<int>(i) + 256});
    if (one.letter) {
      short_options += one.letter;
      if (one.value_name) short_options += ':';
    }
  }
  long_options.push_back({nullptr, 0, nullptr, 0});

  // getopt_long wants a program name in front.
  std::vector<char*> argv{const_cast<char*>(command.name)};
  argv.insert(argv.end(), words.begin(), words.end());
  const int argc = static_cast<int>(argv.size());
  argv.push_back(nullptr);

  invocation.command = &command;
  optind = 0;
  opterr = 0;
  for (;;) {
    const int at = optind == 0 ? 1 : optind;
    const int code =
        getopt_long(argc, argv.data(), short_options.c_str(), long_options.data(), nullptr);
    if (code == -1) break;
    if (code == '?' || code == ':') {
      const char* word = argv[static_cast<size_t>(at)];
      report(std::string(word) + (code == ':' ? " needs a value" : " is not an option of ") +
             (code == ':' ? "" : command.name) + usage_hint(command));
      return false;
    }
    for (size_t i = 0; i < options.size(); ++i) {
      const Option& one = options[i];
      if (code == static_cast<int>(i) + 256 || (one.letter && code == one.letter)) {
        invocation.options.emplace_back(one.name, optarg ? optarg : "");
      }
    }
  }
  for (int i = optind; i < argc; ++i)
    invocation.arguments.emplace_back(argv[static_cast<size_t>(i)]);
  return right_number_of_arguments(command, invocation);
}

}  // namespace cli
