// #Include "other.bas": puts the text of other files where a script asks for them.
#pragma once

#include <string_view>

#include "language/source.h"

namespace krz {

/// Whether the "#" at `position` begins a line that includes a file.
bool is_include_line(std::string_view text, size_t position);

/// Reads the files that the source includes, and those that they include, each once. A path is
/// relative to the file that names it. What cannot be read is reported at the line that asks for
/// it.
void read_includes(SourceText& source, DiagnosticList& diagnostics);

}  // namespace krz
