// The calls of ApplicationServices/QuickDraw.h about text: the settings of the current port and the
// measures of its font.
#include <new>

#include "graphics/font_book.h"
#include "graphics/font_measures.h"
#include "graphics/framework_call.h"
#include "graphics/world.h"

using toolbox::worlds::current;

FRAMEWORK_CALL void TextFont(SInt16 fontNumber) { current().text.font = fontNumber; }
FRAMEWORK_CALL void TextFace(SInt16 face) { current().text.face = face; }
FRAMEWORK_CALL void TextSize(SInt16 size) { current().text.size = size; }

FRAMEWORK_CALL void GetFontInfo(FontInfo* info) {
  if (info == nullptr) return;
  try {
    *info = toolbox::measure_font(current().text);
  } catch (const std::bad_alloc&) {
    *info = {};
  }
}

// What the other framework's calls about fonts are made of: the numbers are given in one place.
FRAMEWORK_CALL SInt16 FrameworkFontNumber(ConstStr255Param name) {
  try {
    return toolbox::number_of_font({reinterpret_cast<const char*>(name + 1), name[0]});
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

FRAMEWORK_CALL void FrameworkFontName(SInt16 fontNumber, Str255 name) {
  try {
    const std::string text = toolbox::name_of_font(fontNumber);
    name[0] = static_cast<UInt8>(text.copy(reinterpret_cast<char*>(name + 1), 255));
  } catch (const std::bad_alloc&) {
    name[0] = 0;
  }
}
