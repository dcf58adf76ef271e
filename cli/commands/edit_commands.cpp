#include "commands/edit_commands.h"

#include "commands/change_options.h"
#include "commands/scripts.h"

namespace cli {

namespace {

constexpr Option kChangeOptions[] = {KRZ_CHANGE_OPTIONS};

constexpr Option kEditOptions[] = {{"track", 't', "TRACK", "only one track, not all together"},
                                   KRZ_CHANGE_OPTIONS};

constexpr Option kInsertOptions[] = {{"at", 0, "TIME", "where a segment of another movie goes"},
                                     {"from", 0, "TIME", "where it begins there, else at 0"},
                                     {"to", 0, "TIME", "where it ends there, else at the end"},
                                     {"track", 't', "TRACK", "only one track, not all together"},
                                     KRZ_CHANGE_OPTIONS};

constexpr Option kTrackSetOptions[] = {{"enable", 0, nullptr, "show or play the track"},
                                       {"disable", 0, nullptr, "do not"},
                                       {"layer", 0, "N", "lower is in front"},
                                       {"volume", 0, "V", "1 is full, negative is muted"},
                                       {"size", 0, "WxH", "the track's own size"},
                                       {"move", 0, "X,Y,W,H", "its rectangle in the movie"},
                                       {"matrix", 0, "A,B,C,D,X,Y", "its transformation"},
                                       {"offset", 0, "TIME", "when it begins"},
                                       KRZ_CHANGE_OPTIONS};

constexpr Option kQuietOption[] = {
    {"quiet", 'q', nullptr, "say only what is wrong"},
};

constexpr Option kVerifyOptions[] = {
    {"allow-external", 0, nullptr, "read media data outside of the movie's folder too"},
    {"quiet", 'q', nullptr, "say only what is wrong"},
};

constexpr Option kListOptions[] = {
    {"json", 0, nullptr, "a JSON array"},
};

constexpr Option kEditListOptions[] = {
    {"track", 't', "TRACK", "only these tracks"},
    {"json", 0, nullptr, "a JSON array"},
};

constexpr Option kSaveOptions[] = {
    {"output", 'o', "OUT", "the new file"},
    {"used-only", 0, nullptr, "leave out the media that no edit shows any more"},
    {"allow-external", 0, nullptr, "read media data outside of the movie's folder too"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"},
    {"quiet", 'q', nullptr, "say only what is wrong"},
};

constexpr Option kUndoOptions[] = {
    {"list", 'l', nullptr, "the saves that can be taken back, the latest first"},
    {"quiet", 'q', nullptr, "say only what is wrong"},
};

constexpr Option kDiffOptions[] = {
    {"samples", 0, nullptr, "compare the bytes of samples too"},
    {"allow-external", 0, nullptr, "read media data outside of the movie's folder too"},
    {"quiet", 'q', nullptr, "say only what differs"},
};

constexpr Command kCommands[] = {
    {.name = "save",
     .synopsis = "FILE -o OUT",
     .summary = "write a movie as a new file, movie atom first",
     .examples =
         "  krz save clip.mov -o fast.mov    players begin before the file is loaded\n"
         "  krz save parts.mp4 -o whole.mp4  joins a movie that is in fragments\n"
         "  krz save cut.mov -o small.mov --used-only\n"
         "Cutting leaves the media where it is: it can be shown again, and it can be read by\n"
         "anyone who has the file. --used-only leaves out what is shown no more, but for the\n"
         "pictures from a key picture on that decoding needs.\n",
     .options = kSaveOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kSaveScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "verify",
     .synopsis = "FILE…",
     .summary = "look a movie over: tables, references, samples",
     .examples = "  krz verify clip.mov              every sample inside the file?\n"
                 "  krz verify *.mov -q              says only what is wrong\n",
     .options = kVerifyOptions,
     .least_arguments = 1,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kVerifyScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kTogether},
    {.name = "diff",
     .synopsis = "A B",
     .summary = "in what two movies differ",
     .examples = "  krz diff before.mov after.mov    tracks, edits, properties\n"
                 "  krz diff a.mov b.mov --samples   and the bytes of their samples\n",
     .options = kDiffOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kDiffScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "undo",
     .synopsis = "FILE",
     .summary = "take the last save back",
     .examples = "  krz undo clip.mov                the movie before the last save\n"
                 "  krz undo clip.mov --list         what can be taken back\n",
     .options = kUndoOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kUndoScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "commit",
     .synopsis = "FILE",
     .summary = "make the last save final",
     .examples = "  krz commit clip.mov              overwrites what is kept for undo\n"
                 "  krz commit clip.mov -q           the same without a word\n",
     .options = kQuietOption,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kCommitScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "track list",
     .synopsis = "FILE",
     .summary = "list the tracks",
     .examples = "  krz track list clip.mov          sizes, places, volumes\n"
                 "  krz track list clip.mov --json   the same for a program\n",
     .options = kListOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kTrackListScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "track set",
     .synopsis = "FILE TRACK {-i | -o OUT | -n}",
     .summary = "change the properties of tracks",
     .examples = "  krz track set clip.mov sound --volume 0.5 -i      half as loud\n"
                 "  krz track set clip.mov video --move 0,0,640,360 -o small.mov\n",
     .options = kTrackSetOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kTrackSetScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "track clone",
     .synopsis = "FILE TRACK {-i | -o OUT | -n}",
     .summary = "add a copy of a track that shares its samples",
     .examples = "  krz track clone clip.mov video -i\n"
                 "  krz track clone clip.mov sound:1 -o two.mov\n",
     .options = kChangeOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kTrackCloneScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "track delete",
     .synopsis = "FILE TRACK {-i | -o OUT | -n}",
     .summary = "take tracks out",
     .examples = "  krz track delete clip.mov sound:2 -i\n"
                 "  krz track delete clip.mov id=7 -n   shows what would change\n",
     .options = kChangeOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kTrackDeleteScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "edit list",
     .synopsis = "FILE",
     .summary = "list the edits of tracks",
     .examples = "  krz edit list clip.mov           every track\n"
                 "  krz edit list clip.mov --track video --json\n",
     .options = kEditListOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kEditListScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "edit cut",
     .synopsis = "FILE RANGE… {-i | -o OUT | -n}",
     .summary = "take ranges out",
     .examples = "  krz edit cut clip.mov 10-20 -i   seconds 10 to 20 go\n"
                 "  krz edit cut clip.mov 0-5 end-3.5-end -o short.mov\n",
     .options = kEditOptions,
     .least_arguments = 2,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kEditCutScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "edit keep",
     .synopsis = "FILE RANGE… {-i | -o OUT | -n}",
     .summary = "leave nothing but some ranges",
     .examples = "  krz edit keep clip.mov 10-20 35-40 -o best.mov\n"
                 "  krz edit keep clip.mov 00:01:00-00:02:00 -i\n",
     .options = kEditOptions,
     .least_arguments = 2,
     .most_arguments = -1,
     .stops_at_argument = false,
     .script = kEditKeepScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "edit insert",
     .synopsis = "FILE {TIME RANGE | OTHER --at TIME} {-i | -o OUT | -n}",
     .summary = "show a range again, or one of another movie",
     .examples = "  krz edit insert clip.mov end 0-5 -i   the first five seconds once more\n"
                 "  krz edit insert clip.mov intro.mov --at 0 --from 2 --to 8.5 -o a.mov\n",
     .options = kInsertOptions,
     .least_arguments = 2,
     .most_arguments = 3,
     .stops_at_argument = false,
     .script = kEditInsertScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "edit insert-empty",
     .synopsis = "FILE TIME DURATION {-i | -o OUT | -n}",
     .summary = "put time in that shows nothing",
     .examples = "  krz edit insert-empty clip.mov 0 2.5 -i\n"
                 "  krz edit insert-empty clip.mov 10 1 --track sound:1 -o a.mov\n",
     .options = kEditOptions,
     .least_arguments = 3,
     .most_arguments = 3,
     .stops_at_argument = false,
     .script = kEditInsertEmptyScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "edit scale",
     .synopsis = "FILE RANGE DURATION {-i | -o OUT | -n}",
     .summary = "play a range slower or faster",
     .examples = "  krz edit scale clip.mov 10-12 8 -i    four times slower\n"
                 "  krz edit scale clip.mov 0-end 60 -o minute.mov\n",
     .options = kEditOptions,
     .least_arguments = 3,
     .most_arguments = 3,
     .stops_at_argument = false,
     .script = kEditScaleScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "refs show",
     .synopsis = "FILE",
     .summary = "show which track refers to which",
     .examples = "  krz refs show clip.mov\n"
                 "  krz refs show clip.mov -q\n",
     .options = kQuietOption,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kRefsShowScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "refs check",
     .synopsis = "FILE",
     .summary = "find references that lead nowhere",
     .examples = "  krz refs check clip.mov          status 1 when there are some\n"
                 "  krz refs check clip.mov -q\n",
     .options = kQuietOption,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kRefsCheckScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
    {.name = "refs prune",
     .synopsis = "FILE {-i | -o OUT | -n}",
     .summary = "take out references that lead nowhere",
     .examples = "  krz refs prune clip.mov -i\n"
                 "  krz refs prune clip.mov -n       shows what would change\n",
     .options = kChangeOptions,
     .least_arguments = 1,
     .most_arguments = 1,
     .stops_at_argument = false,
     .script = kRefsPruneScript,
     .json_script = nullptr,
     .run = nullptr,
     .movies = Movies::kFirst},
};

}  // namespace

std::span<const Command> edit_commands() { return kCommands; }

}  // namespace cli
