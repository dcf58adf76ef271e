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

}  // namespace

void print_help() {
  std::string text =
      "krz looks inside QuickTime-style movies (.mov .mp4 .m4a .m4v) and runs scripts over them.\n"
      "\n"
      "Usage: krz COMMAND [ARGUMENT…]\n"
      "\n"
      "Commands:\n";
  for (const Command& command : commands()) {
    std::string line = std::string("  ") + command.name + " " + command.synopsis;
    pad_to(line, 32);
    text += line + command.summary + "\n";
  }
  text +=
      "\n"
      "  help [COMMAND]                options and worked examples of a command\n"
      "  --version                     versions of krz, the plug-in and the toolbox\n"
      "\n"
      "Begin with:  krz demo           makes a movie and shows what is in it\n"
      "             krz info clip.mov  shows what is in yours\n"
      "\n"
      "Exit status: 0 done, 1 failed, 2 wrong usage, 3 the input cannot be read.\n";
  std::fwrite(text.data(), 1, text.size(), stdout);
}

void print_command_help(const Command& command) {
  std::string text =
      std::string("krz ") + command.name + " " + command.synopsis + "\n\n" + command.summary + "\n";
  if (!command.options.empty()) text += "\nOptions:\n";
  for (const Option& option : command.options) {
    std::string line = "  ";
    if (option.letter) line += std::string("-") + option.letter + ", ";
    line += std::string("--") + option.name;
    if (option.value_name) line += std::string(" ") + option.value_name;
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
  return present ? kDone : kFailed;
}

}  // namespace cli
