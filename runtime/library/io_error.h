// How failed calls of the system become IOExceptions that name the file and the reason.
#pragma once

#include <string>
#include <string_view>

namespace krz {

/// Raises an IOException "cannot <action> "<path>": <reason>; <what to do>" for an errno value,
/// which becomes the exception's error number.
void raise_io_error(std::string_view action, std::string_view path, int error);

/// Whether a path can be handed to the system at all; if not, the exception is raised.
bool check_path(std::string_view path);

}  // namespace krz
