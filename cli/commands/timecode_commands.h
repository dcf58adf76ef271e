// The commands for timecode tracks and time codes.
#pragma once

#include "command.h"

namespace cli {

std::span<const Command> timecode_commands();

}  // namespace cli
