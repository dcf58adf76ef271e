// The commands about sound, and about the sizes of pictures.
#pragma once

#include "command.h"

namespace cli {

std::span<const Command> sound_commands();

}  // namespace cli
