// The call of ApplicationServices/TextDrawing.h.
#include <ApplicationServices/TextDrawing.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "graphics/framework_call.h"
#include "graphics/text_fonts.h"

namespace {

constexpr int kMostCharacters = 4096;
constexpr char kUsualFamily[] = "sans-serif";

/// The next character of UTF-8; a byte that is no part of one stands for what is missing.
char32_t next_character(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text.front());
  text.remove_prefix(1);
  if (first < 0x80) return first;
  const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
  if (more == 0 || first > 0xF7 || text.size() < static_cast<size_t>(more)) return 0xFFFD;
  char32_t character = first & (0x3F >> more);
  for (int i = 0; i < more; ++i) {
    const auto byte = static_cast<unsigned char>(text[static_cast<size_t>(i)]);
    if ((byte & 0xC0) != 0x80) return 0xFFFD;
    character = character << 6 | (byte & 0x3F);
  }
  text.remove_prefix(static_cast<size_t>(more));
  return character;
}

/// The fonts of that style: drawings mostly stay with one or two.
toolbox::TextFonts& fonts_of(const std::string& family, bool bold) {
  struct Kept {
    std::string family;
    bool bold = false;
    std::unique_ptr<toolbox::TextFonts> fonts;
  };
  static Kept kept[4];
  static size_t next = 0;
  for (Kept& one : kept) {
    if (one.fonts && one.family == family && one.bold == bold) return *one.fonts;
  }
  Kept& one = kept[next++ % std::size(kept)];
  one.fonts = std::make_unique<toolbox::TextFonts>(family, bold);
  one.family = family;
  one.bold = bold;
  return *one.fonts;
}

double draw(std::string_view text, const ToolboxTextStyle& style, ToolboxGlyphProc proc,
            void* context) {
  const bool named = style.family != nullptr && style.family[0] != '\0';
  toolbox::TextFonts& fonts = fonts_of(named ? style.family : kUsualFamily, style.bold);
  const int size = std::clamp<int>(style.size, 1, 1000);
  double pen = 0;
  for (int i = 0; i < kMostCharacters && !text.empty(); ++i) {
    const char32_t character = next_character(text);
    if (character < 0x20) continue;
    toolbox::DrawnGlyph drawn{};
    const double whole = std::floor(pen);
    if (!fonts.glyph(character, size, pen - whole, proc != nullptr, drawn)) continue;
    if (proc != nullptr && drawn.coverage != nullptr) {
      const ToolboxGlyph glyph{static_cast<SInt32>(whole) + drawn.left,
                               -drawn.above,
                               drawn.width,
                               drawn.height,
                               drawn.bytes_per_row,
                               drawn.coverage};
      proc(&glyph, context);
    }
    pen += drawn.advance;
  }
  return pen;
}

}  // namespace

FRAMEWORK_CALL double ToolboxDrawText(const char* text, size_t length,
                                      const ToolboxTextStyle* style, ToolboxGlyphProc proc,
                                      void* context) {
  if (text == nullptr || style == nullptr) return 0;
  try {
    return draw({text, length}, *style, proc, context);
  } catch (const std::bad_alloc&) {
    return 0;
  }
}
