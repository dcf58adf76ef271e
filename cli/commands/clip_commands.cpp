#include "commands/clip_commands.h"

#include "commands/change_options.h"
#include "commands/scripts.h"

namespace cli {

namespace {

constexpr Option kGetOptions[] = {
    {"output", 'o', "OUT", "the new PNG file"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"},
    {"quiet", 'q', nullptr, "say only what is wrong"},
};

constexpr Option kChangeOptions[] = {KRZ_CHANGE_OPTIONS};

constexpr Command kCommands[] = {
    {.name = "clip get",
     .synopsis = "FILE TRACK -o MASK.png",
     .summary = "write what a track is cut to as a PNG, black inside",
     .examples = "  krz clip get clip.mov video -o mask.png\n"
                 "  krz clip get clip.mov video:2 -o mask.png -f\n",
     .options = kGetOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kClipGetScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "clip set",
     .synopsis = "FILE TRACK MASK.png {-i | -o OUT | -n}",
     .summary = "cut a track to the dark pixels of a PNG",
     .examples = "  krz clip set clip.mov video mask.png -i\n"
                 "  krz clip set clip.mov video mask.png -o cut.mov\n",
     .options = kChangeOptions,
     .least_arguments = 3,
     .most_arguments = 3,
     .stops_at_argument = false,
     .script = kClipSetScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "clip clear",
     .synopsis = "FILE TRACK {-i | -o OUT | -n}",
     .summary = "show tracks whole again",
     .examples = "  krz clip clear clip.mov video -i\n"
                 "  krz clip clear clip.mov all -n   shows which are cut\n",
     .options = kChangeOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kClipClearScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
};

}  // namespace

std::span<const Command> clip_commands() { return kCommands; }

}  // namespace cli
