// Every command of krz: its words, options, help and program.
#include <array>
#include <span>
#include <vector>

#include "command.h"
#include "commands/actions.h"
#include "commands/chapter_commands.h"
#include "commands/clip_commands.h"
#include "commands/edit_commands.h"
#include "commands/meta_commands.h"
#include "commands/sample_commands.h"
#include "commands/scripts.h"
#include "commands/sound_commands.h"
#include "commands/timecode_commands.h"

namespace cli {

namespace {

constexpr Option kInfoOptions[] = {
    {"json", 0, nullptr, "one JSON document; an array of them for several movies"},
};

constexpr Option kCheckOptions[] = {
    {"json", 0, nullptr, "an array of objects with file, line, column and message"},
};

constexpr Option kReplOptions[] = {
    {"write", 'w', nullptr, "open the movie for changes, too"},
};

constexpr Option kClassesOptions[] = {
    {"json", 0, nullptr, "an array with every member's declaration"},
};

constexpr Option kMapOptions[] = {
    {"output", 'o', "OUT", "an .svg or .png file; - for SVG on standard output"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"},
};

constexpr Command kGeneralCommands[] = {
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
     .run = nullptr,
     .movies = Movies::kTogether},
    {.name = "map",
     .synopsis = "FILE -o OUT",
     .summary = "draw a picture of a movie: tracks, edits, chapters",
     .examples = "  krz map clip.mov -o clip.svg    text stays text, details under the pointer\n"
                 "  krz map clip.mov -o clip.png    the same in pixels\n",
     .options = kMapOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kMapScript,
     .json_script = nullptr,
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
    {.name = "check",
     .synopsis = "SCRIPT… [--json]",
     .summary = "find the mistakes in scripts without running them",
     .examples = "  krz check report.bas            every mistake with its place\n"
                 "  krz check --json *.bas          the same for an editor\n",
     .options = kCheckOptions,
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = nullptr,
     .json_script = nullptr,
     .run = check_scripts},
    {.name = "repl",
     .synopsis = "[MOVIE]",
     .summary = "try out the script language, line by line",
     .examples =
         "  krz repl clip.mov               the movie is m: type m.TrackCountKRZ, or m. and Tab\n"
         "  echo '1 + 2' | krz repl         pieces from a pipe, values on standard output\n",
     .options = kReplOptions,
     .least_arguments = 0,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = nullptr,
     .json_script = nullptr,
     .run = run_session},
    {.name = "classes",
     .synopsis = "[NAME[.MEMBER]] [--json]",
     .summary = "look up the classes that scripts can use",
     .examples = "  krz classes                     every class in one line\n"
                 "  krz classes QTTrackKRZ          its members as they are declared, explained\n"
                 "  krz classes Movie.Save          one member\n",
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

constexpr Topic kTopics[] = {
    {"info|map|describe FILE…", "what is in a movie; a picture of it; its descriptions"},
    {"save|verify|diff FILE…", "write as a new file; look over; compare"},
    {"undo|commit FILE", "take the last save back; make it final"},
    {"run|check SCRIPT…", "run a script; find the mistakes in scripts"},
    {"repl [MOVIE], classes [NAME]", "try out the script language; look up its classes"},
    {"demo [DIR]", "make a small demonstration movie and inspect it"},
};

constexpr Noun kNouns[] = {
    {"track", "list|set|clone|delete", "tracks and their properties"},
    {"edit", "list|cut|keep|insert|…", "cut, keep, repeat, stretch parts of a movie"},
    {"chapters", "list|import|export|…", "the chapters of a movie"},
    {"timecode", "show|list|add|…", "time codes of a movie, and their arithmetic"},
    {"meta", "list|get|set|add|…", "titles, artists, pictures, locations, …"},
    {"userdata", "list|get|add|…", "the classic lists of movies and tracks"},
    {"samples", "list|extract", "list samples, copy their bytes"},
    {"clip", "get|set|clear", "what tracks are cut to, as PNG"},
    {"refs", "show|check|prune", "which track refers to which"},
    {"sound", "show|set|levels", "volume, balance, channels; levels over time"},
    {"aperture", "show|set|generate|…", "the sizes of pictures in the aperture modes"},
};

}  // namespace

namespace {

std::array<std::span<const Command>, 8> groups() {
  return {kGeneralCommands, edit_commands(),   chapter_commands(), timecode_commands(),
          meta_commands(),  sample_commands(), clip_commands(),    sound_commands()};
}

}  // namespace

std::span<const Command> commands() {
  static const std::vector<Command> all = [] {
    std::vector<Command> list;
    for (const std::span<const Command> group : groups())
      list.insert(list.end(), group.begin(), group.end());
    return list;
  }();
  return all;
}

std::span<const Topic> topics() { return kTopics; }

std::span<const Noun> nouns() { return kNouns; }

const Command* find_command(std::string_view name) {
  for (const std::span<const Command> group : groups()) {
    for (const Command& command : group) {
      if (name == command.name) return &command;
    }
  }
  return nullptr;
}

const Noun* find_noun(std::string_view name) {
  for (const Noun& noun : kNouns) {
    if (name == noun.name) return &noun;
  }
  return nullptr;
}

bool is_verb_of(const Command& command, const Noun& noun) {
  const std::string_view name = command.name;
  const std::string_view first = noun.name;
  return name.starts_with(first) && name.substr(first.size()).starts_with(' ');
}

}  // namespace cli
