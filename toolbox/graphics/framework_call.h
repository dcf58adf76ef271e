// Marks the calls that a framework bundle exports, and names those between the two bundles.
#pragma once

#include <ApplicationServices/QuickDraw.h>

#define FRAMEWORK_CALL extern "C" __attribute__((visibility("default")))

/// Of ApplicationServices, for Carbon: fonts by name and number, as GetFNum and GetFontName.
FRAMEWORK_CALL SInt16 FrameworkFontNumber(ConstStr255Param name);
FRAMEWORK_CALL void FrameworkFontName(SInt16 fontNumber, Str255 name);
