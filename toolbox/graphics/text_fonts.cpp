#include "graphics/text_fonts.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <vector>

namespace toolbox {

namespace {

// A font that is opened when a character of it is needed.
struct Font {
  std::string path;
  int index = 0;
  FcCharSet* characters = nullptr;  // the font set's
  FT_Face face = nullptr;
  bool tried = false;
};

}  // namespace

struct TextFonts::State {
  FT_Library library = nullptr;
  FcFontSet* set = nullptr;
  std::vector<Font> fonts;

  FT_Face open(Font& font) {
    if (!font.tried) {
      font.tried = true;
      if (FT_New_Face(library, font.path.c_str(), font.index, &font.face) != 0) font.face = nullptr;
    }
    return font.face;
  }

  /// The face for a character: of the first font that has it, else of the first that opens.
  FT_Face face_for(char32_t character) {
    for (Font& font : fonts) {
      if (font.characters == nullptr || !FcCharSetHasChar(font.characters, character)) continue;
      if (FT_Face face = open(font)) return face;
    }
    for (Font& font : fonts) {
      if (FT_Face face = open(font)) return face;
    }
    return nullptr;
  }
};

TextFonts::TextFonts(const std::string& family, bool bold) : state_(std::make_unique<State>()) {
  if (FT_Init_FreeType(&state_->library) != 0) {
    state_->library = nullptr;
    return;
  }
  const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> wanted(FcPatternCreate(),
                                                                       &FcPatternDestroy);
  if (!wanted) return;
  FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
  if (bold) FcPatternAddInteger(wanted.get(), FC_WEIGHT, FC_WEIGHT_BOLD);
  FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
  FcDefaultSubstitute(wanted.get());
  FcResult result = FcResultNoMatch;
  state_->set = FcFontSort(nullptr, wanted.get(), FcTrue, nullptr, &result);
  if (state_->set == nullptr) return;
  for (int i = 0; i < state_->set->nfont; ++i) {
    FcPattern* const pattern = state_->set->fonts[i];
    FcChar8* path = nullptr;
    FcBool scalable = FcFalse;
    Font font;
    if (FcPatternGetString(pattern, FC_FILE, 0, &path) != FcResultMatch) continue;
    if (FcPatternGetBool(pattern, FC_SCALABLE, 0, &scalable) != FcResultMatch || !scalable)
      continue;
    FcPatternGetInteger(pattern, FC_INDEX, 0, &font.index);
    FcPatternGetCharSet(pattern, FC_CHARSET, 0, &font.characters);
    font.path = reinterpret_cast<const char*>(path);
    state_->fonts.push_back(std::move(font));
  }
}

TextFonts::~TextFonts() {
  for (const Font& font : state_->fonts) {
    if (font.face != nullptr) FT_Done_Face(font.face);
  }
  if (state_->set != nullptr) FcFontSetDestroy(state_->set);
  if (state_->library != nullptr) FT_Done_FreeType(state_->library);
}

bool TextFonts::glyph(char32_t character, int size, double shift, bool draw, DrawnGlyph& glyph) {
  FT_Face const face = state_->face_for(character);
  if (face == nullptr || FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(size)) != 0) return false;
  // Shapes stay as they are designed: with fractions of pixels, hints would make gaps uneven.
  if (FT_Load_Char(face, character, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) != 0) return false;
  FT_GlyphSlot const slot = face->glyph;
  glyph = {};
  glyph.advance = static_cast<double>(slot->linearHoriAdvance) / 65536;
  if (!draw) return true;
  if (slot->format == FT_GLYPH_FORMAT_OUTLINE)
    FT_Outline_Translate(&slot->outline, static_cast<FT_Pos>(shift * 64), 0);
  if (FT_Render_Glyph(slot, FT_RENDER_MODE_NORMAL) != 0 ||
      slot->bitmap.pixel_mode != FT_PIXEL_MODE_GRAY || slot->bitmap.pitch < 0)
    return true;
  glyph.coverage = slot->bitmap.buffer;
  glyph.left = slot->bitmap_left;
  glyph.above = slot->bitmap_top;
  glyph.width = static_cast<int32_t>(slot->bitmap.width);
  glyph.height = static_cast<int32_t>(slot->bitmap.rows);
  glyph.bytes_per_row = slot->bitmap.pitch;
  return true;
}

}  // namespace toolbox
