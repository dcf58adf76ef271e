// How a command of krz is described: parsing, help and completions all read the same records.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cli {

/// Exit statuses, the same for every command.
enum ExitStatus : int {
  kDone = 0,
  kFailed = 1,  // the work failed, the file is unchanged
  kWrongUsage = 2,
  kUnreadableInput = 3,  // the input cannot be read or is not supported
  kRefused = 4,          // data would be lost
  kNotWritten = 5,       // the original is intact
  kSomeFailed = 6,       // of several files
};

/// An option of a command. `value_name` is null for a switch, and "[=NAME]" when the value may be
/// left out.
struct Option {
  const char* name;        // without the dashes
  char letter;             // 0 for none
  const char* value_name;  // what the value is called in the help
  const char* help;
};

struct Invocation;

/// Which arguments of a command are movies that it is done for one by one.
enum class Movies : uint8_t {
  kNone,      // there are none, or they belong together
  kTogether,  // all are movies, and the program itself goes through them
  kFirst,     // the first; several come from a list
  kAll,
  kAllButLast,
  kAllButAssignments,  // what is not KEY=VALUE
};

/// A command. Either `script` holds its program in the host language, or `run` does the work.
struct Command {
  const char* name;      // "info", or noun and verb, "track set"
  const char* synopsis;  // what follows the name, "FILE… [--json]"
  const char* summary;
  const char* examples;  // worked examples, ready to print
  std::span<const Option> options;
  int least_arguments;
  int most_arguments;      // -1 for any number
  bool stops_at_argument;  // options behind the first argument belong to the argument (krz run)
  const char* script;
  const char* json_script;  // what runs in its place for --json, so that neither compiles the other
  int (*run)(const Invocation& invocation);
  Movies movies = Movies::kNone;
};

/// The first word of several commands: `track` of "track list" and "track set".
struct Noun {
  const char* name;
  const char* verbs;  // as the help lists them, "list|set"
  const char* summary;
};

/// Commands of one word that the overview shows in one line.
struct Topic {
  const char* names;  // "save|verify|diff"
  const char* summary;
};

/// A command with what the user gave it.
struct Invocation {
  const Command* command = nullptr;
  std::vector<std::string> arguments;
  std::vector<std::pair<std::string_view, std::string>> options;  // by name, in the order given

  /// `option` is a name without its dashes.
  bool has(std::string_view option) const;

  /// The last value given for an option; empty when there is none.
  std::string_view value(std::string_view option) const;
};

/// Every command, and every topic and noun in the order the help lists them. A command of one word
/// belongs to a topic, one of two words to a noun.
std::span<const Command> commands();
std::span<const Topic> topics();
std::span<const Noun> nouns();

/// The command or noun of that name, null when there is none.
const Command* find_command(std::string_view name);
const Noun* find_noun(std::string_view name);

/// The options of a command, those for several movies behind its own.
std::vector<Option> options_of(const Command& command);

/// Whether a command begins with that noun.
bool is_verb_of(const Command& command, const Noun& noun);

/// Sorts `argv` (the words behind the command's name) into arguments and options. False when
/// something is wrong, which has then been reported on standard error.
bool parse_arguments(const Command& command, std::span<char*> words, Invocation& invocation);

/// Prints "krz: message" on standard error.
void report(std::string_view message);

}  // namespace cli
