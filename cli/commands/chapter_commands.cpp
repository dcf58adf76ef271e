#include "commands/chapter_commands.h"

#include "commands/change_options.h"
#include "commands/scripts.h"

namespace cli {

namespace {

constexpr Option kListOptions[] = {
    {"track", 't', "TRACK", "the chapters of this track, not the movie's first"},
    {"json", 0, nullptr, "a JSON array, as --format json"},
};

constexpr Option kExportOptions[] = {
    {"format", 0, "FORM", "simple, ogm, webvtt, ffmetadata, csv or json"},
    {"track", 't', "TRACK", "the chapters of this track, not the movie's first"},
    {"output", 'o', "OUT", "a file; standard output without it"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"},
};

constexpr Option kImportOptions[] = {
    {"every", 0, "TIME", "no file: a chapter every 5m, 90s, 1h30m"},
    {"track", 't', "TRACK", "the track that the chapters belong to"},
    {"language", 0, "CODE", "their language, three letters as eng"},
    KRZ_CHANGE_OPTIONS};

constexpr Option kSetOptions[] = {{"title", 0, "TEXT", "its new title"},
                                  {"time", 0, "TIME", "when it begins"},
                                  {"track", 't', "TRACK", "the track that the chapters belong to"},
                                  KRZ_CHANGE_OPTIONS};

constexpr Option kRemoveOptions[] = {{"track", 't', "TRACK", "the chapters of this track"},
                                     KRZ_CHANGE_OPTIONS};

constexpr Option kConvertOptions[] = {
    {"to", 0, "short|track", "what to make: the short list in user data, or a chapter track"},
    {"track", 't', "TRACK", "the track that the chapters belong to"},
    {"allow-loss", 0, nullptr, "leave out what the short list has no room for"},
    KRZ_CHANGE_OPTIONS};

constexpr Option kCheckOptions[] = {
    {"quiet", 'q', nullptr, "say only what is wrong"},
};

constexpr Command kCommands[] = {
    {.name = "chapters list",
     .synopsis = "FILE",
     .summary = "list the chapters",
     .examples = "  krz chapters list clip.mov\n"
                 "  krz chapters list clip.mov --json | jq .\n",
     .options = kListOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kChaptersListScript,
     .json_script = kChaptersListJSONScript,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "chapters export",
     .synopsis = "FILE",
     .summary = "write the chapters in a form that other programs read",
     .examples = "  krz chapters export clip.mov > chapters.txt\n"
                 "  krz chapters export clip.mov --format webvtt -o chapters.vtt\n",
     .options = kExportOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kChaptersExportScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "chapters import",
     .synopsis = "FILE {LIST | --every TIME} {-i | -o OUT | -n}",
     .summary = "take chapters from a file of any of these forms",
     .examples = "  krz chapters import clip.mov chapters.txt -i\n"
                 "  krz chapters import clip.mov --every 5m -o out.mov\n",
     .options = kImportOptions,
     .least_arguments = 1,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kChaptersImportScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "chapters set",
     .synopsis = "FILE N {-i | -o OUT | -n}",
     .summary = "change a chapter, or add one behind the last",
     .examples = "  krz chapters set clip.mov 2 --title \"The hunt\" -i\n"
                 "  krz chapters set clip.mov 2 --time 00:01:30 -o out.mov\n",
     .options = kSetOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kChaptersSetScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "chapters remove",
     .synopsis = "FILE [N…] {-i | -o OUT | -n}",
     .summary = "remove chapters, all of them without numbers",
     .examples = "  krz chapters remove clip.mov 3 4 -i\n"
                 "  krz chapters remove clip.mov -o plain.mov\n",
     .options = kRemoveOptions,
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kChaptersRemoveScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "chapters convert",
     .synopsis = "FILE --to short|track {-i | -o OUT | -n}",
     .summary = "between the chapter track and the short list that some players read",
     .examples = "  krz chapters convert book.m4b --to short -i\n"
                 "  krz chapters convert book.m4b --to track -o out.m4b\n",
     .options = kConvertOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kChaptersConvertScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "chapters check",
     .synopsis = "FILE",
     .summary = "find what keeps players from showing the chapters",
     .examples = "  krz chapters check clip.mov       status 1 when something is missing\n"
                 "  krz chapters check clip.mov -q\n",
     .options = kCheckOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kChaptersCheckScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
};

}  // namespace

std::span<const Command> chapter_commands() { return kCommands; }

}  // namespace cli
