#include "commands/timecode_commands.h"

#include "commands/change_options.h"
#include "commands/scripts.h"

namespace cli {

namespace {

constexpr Option kShowOptions[] = {
    {"at", 0, "TIME", "at this time of the movie, not at its start"},
    {"track", 't', "TRACK", "this timecode track, not all of them"},
    {"json", 0, nullptr, "a JSON object, of the first track"},
};

constexpr Option kListOptions[] = {
    {"track", 't', "TRACK", "this timecode track, not all of them"},
    {"json", 0, nullptr, "a JSON array"},
};

constexpr Option kAddOptions[] = {
    {"start", 0, "TIMECODE", "the first one, else 00:00:00:00"},
    {"rate", 0, "RATE", "24, 23.976, 29.97df, 60 or N/D; else that of the pictures"},
    {"counter", 0, "N", "count frames from N on, without labels"},
    {"source", 0, "NAME", "where the pictures come from: a reel, a tape"},
    {"display", 0, nullptr, "show the time code below the pictures"},
    {"no-wrap", 0, nullptr, "go on behind 23:59:59"},
    {"replace", 0, nullptr, "take out the timecode tracks that are there"},
    KRZ_CHANGE_OPTIONS};

constexpr Option kRemoveOptions[] = {KRZ_CHANGE_OPTIONS};

constexpr Option kConvertOptions[] = {
    {"rate", 0, "RATE", "24, 23.976, 29.97df, 60 or N/D"},
    {"no-wrap", 0, nullptr, "go on behind 23:59:59"},
    {"json", 0, nullptr, "a JSON object"},
};

constexpr Command kCommands[] = {
    {.name = "timecode show",
     .synopsis = "FILE… [--at TIME] [--json]",
     .summary = "the time code, its rate, and what is wrong with it",
     .examples = "  krz timecode show clip.mov\n"
                 "  krz timecode show clip.mov --at end-2.0 --json | jq .string\n",
     .options = kShowOptions,
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kTimecodeShowScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAll},
    {.name = "timecode list",
     .synopsis = "FILE… [--json]",
     .summary = "the time code of every sample and edit",
     .examples = "  krz timecode list clip.mov\n"
                 "  krz timecode list clip.mov --track tmcd:2 --json\n",
     .options = kListOptions,
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kTimecodeListScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAll},
    {.name = "timecode add",
     .synopsis = "FILE… [--start TIMECODE] [--rate RATE] {-i | -o OUT | -n}",
     .summary = "add a timecode track",
     .examples =
         "  krz timecode add clip.mov --start '01:00:00;00' --rate 29.97df -i\n"
         "  krz timecode add clip.mov --start 10:00:00:00 --source A001 --display -o out.mov\n",
     .options = kAddOptions,
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kTimecodeAddScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAll},
    {.name = "timecode remove",
     .synopsis = "FILE… {-i | -o OUT | -n}",
     .summary = "take the timecode tracks out",
     .examples = "  krz timecode remove clip.mov -i\n"
                 "  krz timecode remove clip.mov -o plain.mov\n",
     .options = kRemoveOptions,
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kTimecodeRemoveScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAll},
    {.name = "timecode convert",
     .synopsis = "VALUE --rate RATE",
     .summary = "between time codes, frames and seconds; needs no movie",
     .examples = "  krz timecode convert 107892 --rate 29.97df          a frame\n"
                 "  krz timecode convert '01:00:00;02' --rate 29.97df   a time code\n"
                 "  krz timecode convert 3600.5 --rate 25               seconds\n"
                 "  krz timecode convert --rate 25 -- -00:00:10:00      a negative one\n",
     .options = kConvertOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kTimecodeConvertScript,
     .json_script = nullptr,
     .run = nullptr},
};

}  // namespace

std::span<const Command> timecode_commands() { return kCommands; }

}  // namespace cli
