// The commands that look at and change the structure of movies.
#pragma once

#include <span>

#include "command.h"

namespace cli {

/// Their records, in the order the help lists them.
std::span<const Command> edit_commands();

}  // namespace cli
