// Manual pages, made from the records of the commands.
#pragma once

#include <string>

#include "command.h"

namespace cli {

/// krz.1: the commands of one word, what all commands have in common, where to read on.
std::string man_page();

/// krz-NOUN.1: the verbs of a noun.
std::string man_page(const Noun& noun);

}  // namespace cli
