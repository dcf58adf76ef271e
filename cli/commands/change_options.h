// The options of every command that changes a movie.
#pragma once

#include "command.h"

// Every command that changes a movie takes these.
#define KRZ_CHANGE_OPTIONS                                                     \
  {"in-place", 'i', nullptr, "change FILE itself"},                            \
      {"output", 'o', "OUT", "write a new file, leave FILE alone"},            \
      {"force", 'f', nullptr, "let OUT replace a file that is there"},         \
      {"dry-run", 'n', nullptr, "show what would change, write nothing"},      \
      {"backup", 0, "[=SUFFIX]", "with -i: keep a copy under that ending"},    \
      {"allow-external", 0, nullptr, "read media data outside of the folder"}, \
      {"prove", 0, nullptr, "compare every sample before and after"},          \
      {"final", 0, nullptr, "keep nothing for undo"}, {                        \
    "quiet", 'q', nullptr, "say only what is wrong"                            \
  }
