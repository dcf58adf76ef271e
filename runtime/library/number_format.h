// Numbers by pattern: "0" and "#" are digits, "." and "," as in "#,##0.00", "%" is hundredths, the
// rest stands for itself.
#pragma once

#include <string>
#include <string_view>

namespace krz {

/// A second pattern behind ";" is for negative numbers (which then show no sign of their own), a
/// third for zero.
std::string formatted_number(double number, std::string_view pattern);

}  // namespace krz
