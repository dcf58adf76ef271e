// What the built-in commands' scripts see of the command line: the class "CommandLine".
#pragma once

#include "command.h"
#include "runtime.h"

namespace cli {

/// Adds the class to a runtime. `invocation` must outlive it.
void register_command_line(krz::Runtime& runtime, const Invocation& invocation);

}  // namespace cli
