// The commands about the region that a track is cut to.
#pragma once

#include "command.h"

namespace cli {

std::span<const Command> clip_commands();

}  // namespace cli
