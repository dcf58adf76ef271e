#include "commands/sample_commands.h"

#include "commands/scripts.h"

namespace cli {

namespace {

constexpr Option kListOptions[] = {
    {"from", 0, "TIME", "only samples that the track shows from there on"},
    {"to", 0, "TIME", "and before that time"},
    {"json", 0, nullptr, "a JSON array"},
    {"csv", 0, nullptr, "comma-separated, a line of names first"},
};

constexpr Option kExtractOptions[] = {
    {"samples", 's', "A-B", "only these, counted from 1: 7, 3-9, 3- or -9"},
    {"output", 'o', "OUT", "the new file; - for standard output"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"},
    {"allow-external", 0, nullptr, "read media data outside of the movie's folder too"},
    {"quiet", 'q', nullptr, "say only what is wrong"},
};

constexpr Command kCommands[] = {
    {.name = "describe",
     .synopsis = "FILE",
     .summary = "sample descriptions, field by field and byte by byte",
     .examples = "  krz describe clip.mov            every description of every track\n"
                 "  krz describe clip.mov | less     the same, page by page\n",
     .options = {},
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kDescribeScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "samples list",
     .synopsis = "FILE TRACK [--from TIME] [--to TIME] [--json|--csv]",
     .summary = "number, time, duration, size of every sample",
     .examples = "  krz samples list clip.mov video --from 10 --to 12\n"
                 "  krz samples list clip.mov sound:1 --csv > sizes.csv\n",
     .options = kListOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kSamplesListScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "samples extract",
     .synopsis = "FILE TRACK [--samples A-B] -o OUT",
     .summary = "copy the bytes of samples, one behind the other",
     .examples = "  krz samples extract clip.mov video --samples 1 -o first.jpg\n"
                 "  krz samples extract clip.mov sound:1 -o - | md5sum\n",
     .options = kExtractOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kSamplesExtractScript,
     .json_script = nullptr,
     .run = nullptr},
};

}  // namespace

std::span<const Command> sample_commands() { return kCommands; }

}  // namespace cli
