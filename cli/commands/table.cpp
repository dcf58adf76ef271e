// Every command of krz: its words, options, help and program.
#include "command.h"
#include "commands/actions.h"
#include "commands/scripts.h"

namespace cli {

namespace {

constexpr Option kInfoOptions[] = {
    {"json", 0, nullptr, "one JSON document; an array of them for several movies"},
};

constexpr Option kClassesOptions[] = {
    {"json", 0, nullptr, "an array with every member's declaration"},
};

constexpr Command kCommands[] = {
    {.name = "info",
     .synopsis = "FILE… [--json]",
     .summary = "show what is in a movie",
     .examples = "  krz info clip.mov               tracks, sizes, durations, formats\n"
                 "  krz info --json *.mov | jq .    the same for a program\n",
     .options = kInfoOptions,
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kInfoScript,
     .json_script = kInfoJSONScript,
     .run = nullptr},
    {.name = "run",
     .synopsis = "SCRIPT [ARG…]",
     .summary = "run a script",
     .examples = "  krz run report.bas clip.mov     Args(0) is \"clip.mov\" in the script\n"
                 "  krz run - < report.bas          the script comes from standard input\n",
     .options = {},
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = true,
     .script = nullptr,
     .json_script = nullptr,
     .run = run_script},
    {.name = "classes",
     .synopsis = "[NAME] [--json]",
     .summary = "list the classes that scripts can use",
     .examples = "  krz classes                     every class in one line\n"
                 "  krz classes QTTrackKRZ          its members, as they are declared\n",
     .options = kClassesOptions,
     .least_arguments = 0,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = nullptr,
     .json_script = nullptr,
     .run = list_classes},
    {.name = "demo",
     .synopsis = "[DIR]",
     .summary = "make a small demonstration movie and inspect it",
     .examples = "  krz demo                        writes krz-demo.mov here and shows it\n"
                 "  krz demo /tmp                   writes it there\n",
     .options = {},
     .least_arguments = 0,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = nullptr,
     .json_script = nullptr,
     .run = make_demonstration},
};

}  // namespace

std::span<const Command> commands() { return kCommands; }

const Command* find_command(std::string_view name) {
  for (const Command& command : kCommands) {
    if (name == command.name) return &command;
  }
  return nullptr;
}

}  // namespace cli
