// Completions for shells, made from the records of the commands.
#pragma once

#include <string>

namespace cli {

/// A function for bash; it needs no other package.
std::string bash_completion();

/// The function _krz for zsh.
std::string zsh_completion();

}  // namespace cli
