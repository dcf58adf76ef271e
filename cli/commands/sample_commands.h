// The commands that look into the media: samples and their descriptions.
#pragma once

#include "command.h"

namespace cli {

std::span<const Command> sample_commands();

}  // namespace cli
