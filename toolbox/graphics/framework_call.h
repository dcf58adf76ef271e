// Marks the calls that a framework bundle exports, and names those between the bundles and
// libtoolbox.
#pragma once

#include <ApplicationServices/QuickDraw.h>

#define FRAMEWORK_CALL extern "C" __attribute__((visibility("default")))

/// Of ApplicationServices, for Carbon: fonts by name and number, as GetFNum and GetFontName.
FRAMEWORK_CALL SInt16 FrameworkFontNumber(ConstStr255Param name);
FRAMEWORK_CALL void FrameworkFontName(SInt16 fontNumber, Str255 name);

/// Of ApplicationServices, for libtoolbox: the pixels of a port, valid until it is disposed or
/// updated. Fails: false for a port without pixels.
struct FrameworkPixels {
  void* base;
  SInt32 row_bytes;
  SInt32 depth;  // bits a pixel
  SInt32 width;
  SInt32 height;
};
FRAMEWORK_CALL Boolean FrameworkPortPixels(CGrafPtr port, FrameworkPixels* pixels);
