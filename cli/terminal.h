// Colour, where somebody sees it.
#pragma once

#include <string>
#include <string_view>

namespace cli {

/// Whether what is written to a descriptor may be coloured: it is a terminal that knows how, and
/// NO_COLOR is not set.
bool is_coloured(int descriptor);

/// The heading of a table on standard output.
std::string heading(std::string_view text);

}  // namespace cli
