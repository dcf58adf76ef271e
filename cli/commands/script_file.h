// The text of a script that the command line names.
#pragma once

#include <string>

namespace cli {

/// Reads a script file, or standard input for "-". False with errno set when it cannot be read or
/// is larger than a script may be.
bool read_script(const std::string& path, std::string& text);

/// What messages call a script: its path, or "standard input".
std::string script_name(const std::string& path);

}  // namespace cli
