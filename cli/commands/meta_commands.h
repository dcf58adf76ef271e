// The commands about metadata and user data.
#pragma once

#include <span>

#include "command.h"

namespace cli {

/// Their records, in the order the help lists them.
std::span<const Command> meta_commands();

}  // namespace cli
