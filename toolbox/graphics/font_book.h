// Fonts by number and by name: the classic ones, and every family that is installed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace toolbox {

/// The number of a font (name in MacRoman, any case of letters); 0 when it is unknown. An installed
/// family has a number from 256 to 16383 that follows from its name, the same in every process on
/// machines with the same fonts.
int16_t number_of_font(std::string_view name);

/// The name (MacRoman, at most 255 bytes) of a font; empty when the number is unknown.
std::string name_of_font(int16_t number);

/// The family that fontconfig is asked for to measure or draw a font, UTF-8; never empty: an
/// unknown font is the application font.
std::string family_of_font(int16_t number);

}  // namespace toolbox
