// The fonts whose numbers never change, on any machine.
#pragma once

#include <cstdint>
#include <string_view>

namespace toolbox {

struct ClassicFont {
  int16_t number;
  std::string_view name;
  std::string_view substitute;  // the family or kind of font that is measured in its place
};

/// Geneva, the application font, is 1 as well as 3; by its name it is 3.
inline constexpr int16_t kApplicationFont = 1;

inline constexpr ClassicFont kClassicFonts[] = {
    {0, "Chicago", "sans-serif"},
    {3, "Geneva", "sans-serif"},
    {2, "New York", "serif"},
    {4, "Monaco", "monospace"},
    {5, "Venice", "cursive"},
    {6, "London", "serif"},
    {7, "Athens", "serif"},
    {8, "San Francisco", "fantasy"},
    {9, "Toronto", "serif"},
    {11, "Cairo", "sans-serif"},
    {12, "Los Angeles", "cursive"},
    {20, "Times", "Times"},
    {21, "Helvetica", "Helvetica"},
    {22, "Courier", "Courier"},
    {23, "Symbol", "Symbol"},
    {24, "Mobile", "sans-serif"},
    {kApplicationFont, "Geneva", "sans-serif"},
};

/// The classic font of that number; null when there is none.
constexpr const ClassicFont* find_classic_font(int16_t number) {
  for (const ClassicFont& font : kClassicFonts) {
    if (font.number == number) return &font;
  }
  return nullptr;
}

}  // namespace toolbox
