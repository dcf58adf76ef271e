// Guessing what a mistyped word was meant to be.
#pragma once

#include <string_view>

#include "command.h"

namespace cli {

/// The command whose name is nearest to `word`, null when none is near.
const Command* nearest_command(std::string_view word);

}  // namespace cli
