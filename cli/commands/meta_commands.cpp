#include "commands/meta_commands.h"

#include "commands/change_options.h"
#include "commands/scripts.h"

namespace cli {

namespace {

constexpr Option kMetaListOptions[] = {{"track", 't', "TRACK", "of a track, not of the movie"},
                                       {"storage", 's', "STORE", "only mdta, itms or udta"},
                                       {"json", 0, nullptr, "a JSON array, as import takes it"}};

constexpr Option kMetaGetOptions[] = {
    {"track", 't', "TRACK", "of a track, not of the movie"},
    {"storage", 's', "STORE", "only mdta, itms or udta"},
    {"output", 'o', "OUT", "write the value, as it is, into a file"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"}};

constexpr Option kMetaChangeOptions[] = {
    {"track", 't', "TRACK", "of a track, not of the movie"},
    {"storage", 's', "STORE", "only mdta, itms or udta"},
    {"locale", 'l', "LOCALE", "language and country, such as en_GB"},
    KRZ_CHANGE_OPTIONS};

constexpr Option kMetaCopyOptions[] = {{"track", 't', "TRACK", "of a track, not of the movie"},
                                       {"from", 0, "STORE", "only items of that store"},
                                       {"to", 0, "STORE", "into that store"},
                                       {"replace", 0, nullptr, "let copies replace other values"},
                                       KRZ_CHANGE_OPTIONS};

constexpr Option kMetaWhereOptions[] = {{"storage", 's', "STORE", "only mdta, itms or udta"}};

constexpr Option kMetaExportOptions[] = {
    {"track", 't', "TRACK", "of a track, not of the movie"},
    {"storage", 's', "STORE", "only mdta, itms or udta"},
    {"output", 'o', "OUT", "write them into a file"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"}};

constexpr Option kMetaImportOptions[] = {{"track", 't', "TRACK", "of a track, not of the movie"},
                                         {"replace", 0, nullptr, "take out what is there"},
                                         KRZ_CHANGE_OPTIONS};

constexpr Option kUserDataListOptions[] = {{"track", 't', "TRACK", "of a track, not of the movie"},
                                           {"json", 0, nullptr, "a JSON array"}};

constexpr Option kUserDataGetOptions[] = {
    {"track", 't', "TRACK", "of a track, not of the movie"},
    {"output", 'o', "OUT", "write the value, as it is, into a file"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"}};

constexpr Option kUserDataAddOptions[] = {
    {"track", 't', "TRACK", "of a track, not of the movie"},
    {"file", 0, "DATA", "the bytes of the item"},
    {"region", 0, "NUMBER", "language of the text; UTF-8 of none without it"},
    KRZ_CHANGE_OPTIONS};

constexpr Option kUserDataChangeOptions[] = {
    {"track", 't', "TRACK", "of a track, not of the movie"}, KRZ_CHANGE_OPTIONS};

constexpr Option kUserDataExportOptions[] = {
    {"track", 't', "TRACK", "of a track, not of the movie"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"}};

constexpr Command kCommands[] = {
    {.name = "meta list",
     .synopsis = "FILE… [--json]",
     .summary = "show the metadata of movies",
     .examples = "  krz meta list clip.mov           store, name and value of every item\n"
                 "  krz meta list clip.mov --track sound --json\n",
     .options = kMetaListOptions,
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kMetaListScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAll},
    {.name = "meta get",
     .synopsis = "FILE… KEY[,KEY…]",
     .summary = "print values",
     .examples = "  krz meta get clip.mov title      in whichever store it is\n"
                 "  krz meta get song.m4a artwork -o cover.jpg\n",
     .options = kMetaGetOptions,
     .least_arguments = 2,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kMetaGetScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAllButLast},
    {.name = "meta set",
     .synopsis = "FILE… KEY=VALUE… {-i | -o OUT | -n}",
     .summary = "give keys their values, where they are kept already",
     .examples =
         "  krz meta set a.mov b.mov title=\"My film\" artist=Me -i\n"
         "  krz meta set song.m4a track=3/12 artwork=cover.png mdta:com.example.mood=calm -i\n",
     .options = kMetaChangeOptions,
     .least_arguments = 2,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kMetaSetScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAllButAssignments},
    {.name = "meta add",
     .synopsis = "FILE… KEY=VALUE… {-i | -o OUT | -n}",
     .summary = "add values beside those that are there",
     .examples = "  krz meta add clip.mov title=\"Mein Film\" --locale de -i\n"
                 "  krz meta add clip.mov comment=raw --storage udta -i\n",
     .options = kMetaChangeOptions,
     .least_arguments = 2,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kMetaAddScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAllButAssignments},
    {.name = "meta remove",
     .synopsis = "FILE… KEY[,KEY…] {-i | -o OUT | -n}",
     .summary = "take keys out of every store",
     .examples = "  krz meta remove clip.mov title,artist -i\n"
                 "  krz meta remove clip.mov location -i --final    leaves no trace of it\n",
     .options = kMetaChangeOptions,
     .least_arguments = 2,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kMetaRemoveScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAllButLast},
    {.name = "meta copy",
     .synopsis = "FROM [TO] {-i | -o OUT | -n}",
     .summary = "copy items to another movie or store",
     .examples = "  krz meta copy old.mov new.mp4 --to itms -i\n"
                 "  krz meta copy clip.mov --from udta --to mdta -i\n",
     .options = kMetaCopyOptions,
     .least_arguments = 1,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kMetaCopyScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "meta where",
     .synopsis = "FILE… KEY[,KEY…]",
     .summary = "show every place that holds a key",
     .examples = "  krz meta where clip.mov title    movie and tracks, all stores\n"
                 "  krz meta where *.mov location\n",
     .options = kMetaWhereOptions,
     .least_arguments = 2,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kMetaWhereScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kAllButLast},
    {.name = "meta export",
     .synopsis = "FILE [-o ITEMS]",
     .summary = "write all items as JSON",
     .examples = "  krz meta export clip.mov -o items.json\n"
                 "  krz meta export clip.mov --storage itms | jq .\n",
     .options = kMetaExportOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kMetaExportScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "meta import",
     .synopsis = "FILE ITEMS {-i | -o OUT | -n}",
     .summary = "add the items of a JSON array",
     .examples = "  krz meta import clip.mov items.json -i\n"
                 "  krz meta import clip.mov items.json --replace -o new.mov\n",
     .options = kMetaImportOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kMetaImportScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "userdata list",
     .synopsis = "FILE [--json]",
     .summary = "show a list of user data",
     .examples = "  krz userdata list clip.mov\n"
                 "  krz userdata list clip.mov --track video --json\n",
     .options = kUserDataListOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kUserdataListScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "userdata get",
     .synopsis = "FILE TYPE [INDEX]",
     .summary = "print an item, or write its bytes",
     .examples = "  krz userdata get clip.mov ©nam\n"
                 "  krz userdata get clip.mov WLOC 1 -o window.bin\n",
     .options = kUserDataGetOptions,
     .least_arguments = 2,
     .most_arguments = 3,
     .stops_at_argument = false,
     .script = kUserdataGetScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "userdata add",
     .synopsis = "FILE TYPE [TEXT] {-i | -o OUT | -n}",
     .summary = "add a text, or the bytes of a file",
     .examples = "  krz userdata add clip.mov ©nam \"My film\" -i\n"
                 "  krz userdata add clip.mov TAGS --file tags.bin -i\n",
     .options = kUserDataAddOptions,
     .least_arguments = 2,
     .most_arguments = 3,
     .stops_at_argument = false,
     .script = kUserdataAddScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "userdata remove",
     .synopsis = "FILE TYPE [INDEX] {-i | -o OUT | -n}",
     .summary = "take an item out",
     .examples = "  krz userdata remove clip.mov ©cmt -i\n"
                 "  krz userdata remove clip.mov name --track 2 -i\n",
     .options = kUserDataChangeOptions,
     .least_arguments = 2,
     .most_arguments = 3,
     .stops_at_argument = false,
     .script = kUserdataRemoveScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "userdata export",
     .synopsis = "FILE OUT",
     .summary = "write the flattened list",
     .examples = "  krz userdata export clip.mov list.bin\n"
                 "  krz userdata export clip.mov list.bin --track 1 -f\n",
     .options = kUserDataExportOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kUserdataExportScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "userdata import",
     .synopsis = "FILE LIST {-i | -o OUT | -n}",
     .summary = "add the items of a flattened list",
     .examples = "  krz userdata import clip.mov list.bin -i\n"
                 "  krz userdata import clip.mov list.bin --track video -i\n",
     .options = kUserDataChangeOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kUserdataImportScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
};

}  // namespace

std::span<const Command> meta_commands() { return kCommands; }

}  // namespace cli
