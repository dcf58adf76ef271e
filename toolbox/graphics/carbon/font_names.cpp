// All that the framework Carbon holds: fonts by name and number.
#include "graphics/framework_call.h"

FRAMEWORK_CALL void GetFNum(ConstStr255Param name, SInt16* fontNumber) {
  if (name != nullptr && fontNumber != nullptr) *fontNumber = FrameworkFontNumber(name);
}

FRAMEWORK_CALL void GetFontName(SInt16 fontNumber, Str255 name) {
  if (name != nullptr) FrameworkFontName(fontNumber, name);
}
