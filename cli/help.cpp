#include "help.h"

#include <Toolbox/Toolbox.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "runtime.h"

namespace cli {

namespace {

void pad_to(std::string& line, size_t column) {
  // Columns count characters: the dots of "FILE…" are three bytes and one column.
  size_t width = 0;
  for (const char c : line) width += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  line.append(width < column ? column - width : 2, ' ');
}

void append_row(std::string& text, const std::string& words, const char* summary) {
  std::string line = "  " + words;
  pad_to(line, 32);
  text += line + summary + "\n";
}

}  // namespace

void print_noun_help(const Noun& noun) {
  std::string text = std::string("krz ") + noun.name + ": " + noun.summary + "\n\n";
  for (const Command& command : commands()) {
    if (!is_verb_of(command, noun)) continue;
    text += std::string("krz ") + command.name + " " + command.synopsis + "\n  " + command.summary +
            "\n" + command.examples + "\n";
  }
  text += std::string("`krz help ") + noun.name + " VERB` lists the options of one.\n";
  std::fwrite(text.data(), 1, text.size(), stdout);
}

void print_help() {
  std::string text =
      "krz looks inside QuickTime-style movies (.mov .mp4 .m4a .m4v) and runs scripts over them.\n"
      "Usage: krz COMMAND [ARGUMENT…], where the commands are:\n";
  for (const Topic& topic : topics()) append_row(text, topic.names, topic.summary);
  for (const Noun& noun : nouns()) {
    append_row(text, std::string(noun.name) + " " + noun.verbs, noun.summary);
  }
  text +=
      "  help [COMMAND], --version     options and worked examples of a command; what is loaded\n"
      "\n"
      "Begin with `krz demo`, which makes a movie, or with `krz info clip.mov`.\n";
  std::fwrite(text.data(), 1, text.size(), stdout);
}

void print_first_steps() {
  constexpr char kSteps[] =
      "krz looks inside QuickTime-style movies (.mov .mp4 .m4a .m4v) and edits them. Type next:\n"
      "\n"
      "  krz demo                 makes a small movie to try things on, and shows what is in it\n"
      "  krz info clip.mov        what is in a movie of yours\n"
      "  krz repl clip.mov        ask it in the script language, line by line\n"
      "  krz --help               all commands; krz help chapters shows examples of one\n";
  std::fputs(kSteps, stdout);
}

void print_command_help(const Command& command) {
  std::string text =
      std::string("krz ") + command.name + " " + command.synopsis + "\n\n" + command.summary + "\n";
  const std::vector<Option> options = options_of(command);
  if (!options.empty()) text += "\nOptions:\n";
  for (const Option& option : options) {
    std::string line = "  ";
    if (option.letter) line += std::string("-") + option.letter + ", ";
    line += std::string("--") + option.name;
    if (option.value_name)
      line += (option.value_name[0] == '[' ? "" : " ") + std::string(option.value_name);
    pad_to(line, 24);
    text += line + option.help + "\n";
  }
  text += std::string("\nExamples:\n") + command.examples;
  std::fwrite(text.data(), 1, text.size(), stdout);
}

int print_version() {
  const std::string module = krz::Runtime::default_module_path();
  const bool present = access(module.c_str(), R_OK) == 0;
  std::printf("krz %s\nplug-in %s%s\ntoolbox %s\n", KRZ_VERSION, module.c_str(),
              present ? "" : " (missing)", ToolboxVersion());
  // Without them everything but drawing works, so the status stays.
  const bool draws = ToolboxCheckFrameworks() == noErr;
  std::printf("frameworks %s\n", draws ? "present" : ToolboxErrorDetail());
  return present ? kDone : kFailed;
}

}  // namespace cli
