#include "graphics/font_measures.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <memory>
#include <optional>

#include "graphics/font_book.h"

namespace toolbox {

namespace {

enum Face : unsigned { kBold = 1, kItalic = 2, kCondense = 0x20, kExtend = 0x40 };
constexpr int kDefaultSize = 12;

struct FontFile {
  std::string path;
  int index = 0;
};

std::optional<FontFile> find_file(const TextSettings& settings) {
  const std::string family = family_of_font(settings.font);
  const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> wanted(FcPatternCreate(),
                                                                       &FcPatternDestroy);
  if (!wanted) return std::nullopt;
  const auto face = static_cast<unsigned>(settings.face);
  FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
  if (face & kBold) FcPatternAddInteger(wanted.get(), FC_WEIGHT, FC_WEIGHT_BOLD);
  if (face & kItalic) FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ITALIC);
  FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
  FcDefaultSubstitute(wanted.get());
  FcResult result = FcResultNoMatch;
  const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> found(
      FcFontMatch(nullptr, wanted.get(), &result), &FcPatternDestroy);
  FcChar8* path = nullptr;
  FontFile file;
  if (!found || FcPatternGetString(found.get(), FC_FILE, 0, &path) != FcResultMatch)
    return std::nullopt;
  FcPatternGetInteger(found.get(), FC_INDEX, 0, &file.index);
  file.path = reinterpret_cast<const char*>(path);
  return file;
}

// Font units in pixels, rounded up.
SInt16 pixels_up(FT_Long units, int size, FT_UShort units_per_em) {
  const int64_t scaled = int64_t{units} * size;
  const int64_t up =
      scaled > 0 ? (scaled + units_per_em - 1) / units_per_em : scaled / units_per_em;
  return static_cast<SInt16>(std::clamp<int64_t>(up, 0, INT16_MAX));
}

}  // namespace

FontInfo measure_font(const TextSettings& settings) {
  FontInfo info{};
  const std::optional<FontFile> file = find_file(settings);
  FT_Library library = nullptr;
  if (!file || FT_Init_FreeType(&library) != 0) return info;
  FT_Face face = nullptr;
  if (FT_New_Face(library, file->path.c_str(), file->index, &face) == 0) {
    const int size = settings.size > 0 ? settings.size : kDefaultSize;
    const FT_UShort em = face->units_per_EM;
    if (em > 0) {
      info.ascent = pixels_up(face->ascender, size, em);
      info.descent = pixels_up(-FT_Long{face->descender}, size, em);
      info.leading = pixels_up(FT_Long{face->height} - face->ascender + face->descender, size, em);
      // Every style moves the pen on by a pixel more or less.
      const auto style = static_cast<unsigned>(settings.face);
      const int widening =
          ((style & kBold) != 0) + ((style & kExtend) != 0) - ((style & kCondense) != 0);
      const int width = pixels_up(face->max_advance_width, size, em) + widening;
      info.widMax = static_cast<SInt16>(std::clamp(width, 0, INT16_MAX + 0));
    }
    FT_Done_Face(face);
  }
  FT_Done_FreeType(library);
  return info;
}

}  // namespace toolbox
