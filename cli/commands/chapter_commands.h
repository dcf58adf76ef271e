// The commands for chapters, one record each.
#pragma once

#include <span>

#include "command.h"

namespace cli {

std::span<const Command> chapter_commands();

}  // namespace cli
