#include "commands/sound_commands.h"

#include "commands/change_options.h"
#include "commands/scripts.h"

namespace cli {

namespace {

constexpr Option kShowOptions[] = {{"json", 0, nullptr, "a JSON array"}};

constexpr Option kSoundSetOptions[] = {
    {"volume", 0, "V", "of the tracks: 1 is full, below 0 muted"},
    {"movie-volume", 0, "V", "of the whole movie"},
    {"balance", 0, "B", "from -128 (left) to 128 (right)"},
    {"layout", 0, "NAME", "mono, stereo, quad, 5.1, 7.1 or L,R,C,…"},
    KRZ_CHANGE_OPTIONS};

constexpr Option kLevelsOptions[] = {
    {"from", 0, "TIME", "only from there on"},
    {"to", 0, "TIME", "and before that time"},
    {"every", 0, "TIME", "how long an interval is; a second without it"},
    {"output", 'o', "OUT", "draw them as SVG into a file"},
    {"force", 'f', nullptr, "let OUT replace a file that is there"},
    {"json", 0, nullptr, "a JSON array, 1 for full scale"},
    {"csv", 0, nullptr, "comma-separated, a line of names first"},
    {"allow-external", 0, nullptr, "read media data outside of the movie's folder too"},
    {"quiet", 'q', nullptr, "say only what is wrong"},
};

constexpr Option kChangeOptions[] = {KRZ_CHANGE_OPTIONS};

constexpr Option kApertureSetOptions[] = {
    {"clean", 0, "WxH", "without the edges, in square pixels"},
    {"production", 0, "WxH", "whole, in square pixels"},
    {"encoded", 0, "WxH", "as the pictures are coded"},
    KRZ_CHANGE_OPTIONS};

constexpr Command kCommands[] = {
    {.name = "sound show",
     .synopsis = "FILE [TRACK] [--json]",
     .summary = "volume, balance and channels of sound tracks",
     .examples = "  krz sound show clip.mov\n"
                 "  krz sound show clip.mov sound:2 --json\n",
     .options = kShowOptions,
     .least_arguments = 1,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kSoundShowScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "sound set",
     .synopsis = "FILE [TRACK] {-i | -o OUT | -n}",
     .summary = "change volume, balance and channel layout",
     .examples = "  krz sound set clip.mov sound:1 --volume 0.8 --balance -32 -i\n"
                 "  krz sound set clip.mov --layout 5.1 -o surround.mov\n",
     .options = kSoundSetOptions,
     .least_arguments = 1,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kSoundSetScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "sound levels",
     .synopsis = "FILE [TRACK] [--every TIME] [-o OUT.svg]",
     .summary = "how loud it is over time, per channel (uncompressed, ulaw, alaw, ima4)",
     .examples = "  krz sound levels clip.mov --every 0.5      peak and mean in dB\n"
                 "  krz sound levels clip.mov -o levels.svg    the same as a picture\n",
     .options = kLevelsOptions,
     .least_arguments = 1,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kSoundLevelsScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "aperture show",
     .synopsis = "FILE [TRACK] [--json]",
     .summary = "the sizes of tracks in the aperture modes",
     .examples = "  krz aperture show clip.mov\n"
                 "  krz aperture show clip.mov video --json\n",
     .options = kShowOptions,
     .least_arguments = 1,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kApertureShowScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "aperture generate",
     .synopsis = "FILE [TRACK] {-i | -o OUT | -n}",
     .summary = "work them out from clean aperture and shape of pixels",
     .examples = "  krz aperture generate clip.mov -i\n"
                 "  krz aperture generate clip.mov video:2 -n\n",
     .options = kChangeOptions,
     .least_arguments = 1,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kApertureGenerateScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "aperture set",
     .synopsis = "FILE TRACK {-i | -o OUT | -n}",
     .summary = "give a track sizes of your choice",
     .examples = "  krz aperture set clip.mov video --clean 704x480 -i\n"
                 "  krz aperture set clip.mov video --production 654.5x480 -o out.mov\n",
     .options = kApertureSetOptions,
     .least_arguments = 2,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kApertureSetScript,
     .json_script = nullptr,
     .run = nullptr},
    {.name = "aperture remove",
     .synopsis = "FILE [TRACK] {-i | -o OUT | -n}",
     .summary = "take the sizes out",
     .examples = "  krz aperture remove clip.mov -i\n"
                 "  krz aperture remove clip.mov video:2 -i\n",
     .options = kChangeOptions,
     .least_arguments = 1,
     .most_arguments = 2,
     .stops_at_argument = false,
     .script = kApertureRemoveScript,
     .json_script = nullptr,
     .run = nullptr},
};

}  // namespace

std::span<const Command> sound_commands() { return kCommands; }

}  // namespace cli
