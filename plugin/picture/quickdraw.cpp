// The QuickDraw routines that the module calls, under their own names: each finds the routine of
// its framework when it is called, and answers as if nothing were there to draw on where it is
// missing.
#include <ApplicationServices/ApplicationServices.h>

#include "picture/framework_bundle.h"

namespace {

constinit krz::Framework ApplicationServicesFramework("ApplicationServices.framework");
constinit krz::Framework CarbonFramework("Carbon.framework");

constexpr OSErr kUnavailable = -1;

}  // namespace

// Calls the routine of that name, or answers `otherwise`; the pointer is kept in the wrapper.
#define CALL_OR(framework, otherwise, routine, ...)                                   \
  static constinit krz::LateBound<decltype(routine)> late_bound(framework, #routine); \
  if (auto* const found = late_bound.find()) return found(__VA_ARGS__);               \
  return otherwise

extern "C" {

// Fonts. Outputs are not written where the framework is missing.

void GetFNum(ConstStr255Param name, SInt16* fontNumber) {
  CALL_OR(CarbonFramework, void(), GetFNum, name, fontNumber);
}
void GetFontName(SInt16 fontNumber, Str255 name) {
  CALL_OR(CarbonFramework, void(), GetFontName, fontNumber, name);
}
void TextFont(SInt16 fontNumber) {
  CALL_OR(ApplicationServicesFramework, void(), TextFont, fontNumber);
}
void TextFace(SInt16 face) { CALL_OR(ApplicationServicesFramework, void(), TextFace, face); }
void TextSize(SInt16 size) { CALL_OR(ApplicationServicesFramework, void(), TextSize, size); }
void GetFontInfo(FontInfo* info) {
  CALL_OR(ApplicationServicesFramework, void(), GetFontInfo, info);
}

// Drawing.

void FillRect(const Rect* rect, const Pattern* pattern) {
  CALL_OR(ApplicationServicesFramework, void(), FillRect, rect, pattern);
}
void FillRgn(RgnHandle region, const Pattern* pattern) {
  CALL_OR(ApplicationServicesFramework, void(), FillRgn, region, pattern);
}
void RGBForeColor(const RGBColor* color) {
  CALL_OR(ApplicationServicesFramework, void(), RGBForeColor, color);
}
void CopyBits(const BitMap* source, const BitMap* destination, const Rect* sourceRect,
              const Rect* destinationRect, SInt16 mode, RgnHandle mask) {
  CALL_OR(ApplicationServicesFramework, void(), CopyBits, source, destination, sourceRect,
          destinationRect, mode, mask);
}

// Offscreen worlds.

QDErr NewGWorld(GWorldPtr* world, SInt16 depth, const Rect* bounds, CTabHandle colors,
                GDHandle device, GWorldFlags flags) {
  CALL_OR(ApplicationServicesFramework, kUnavailable, NewGWorld, world, depth, bounds, colors,
          device, flags);
}
GWorldFlags UpdateGWorld(GWorldPtr* world, SInt16 depth, const Rect* bounds, CTabHandle colors,
                         GDHandle device, GWorldFlags flags) {
  CALL_OR(ApplicationServicesFramework, 0, UpdateGWorld, world, depth, bounds, colors, device,
          flags);
}
void DisposeGWorld(GWorldPtr world) {
  CALL_OR(ApplicationServicesFramework, void(), DisposeGWorld, world);
}
void SetGWorld(CGrafPtr port, GDHandle device) {
  CALL_OR(ApplicationServicesFramework, void(), SetGWorld, port, device);
}
void GetGWorld(CGrafPtr* port, GDHandle* device) {
  CALL_OR(ApplicationServicesFramework, void(), GetGWorld, port, device);
}
Rect* GetPortBounds(CGrafPtr port, Rect* bounds) {
  // The one default that writes: an empty rectangle.
  CALL_OR(ApplicationServicesFramework, (*bounds = Rect{}, bounds), GetPortBounds, port, bounds);
}

// Their pixels.

PixMapHandle GetPortPixMap(CGrafPtr port) {
  CALL_OR(ApplicationServicesFramework, nullptr, GetPortPixMap, port);
}
PixMapHandle GetGWorldPixMap(GWorldPtr world) {
  CALL_OR(ApplicationServicesFramework, nullptr, GetGWorldPixMap, world);
}
const BitMap* GetPortBitMapForCopyBits(CGrafPtr port) {
  CALL_OR(ApplicationServicesFramework, nullptr, GetPortBitMapForCopyBits, port);
}
Boolean LockPixels(PixMapHandle pixels) {
  CALL_OR(ApplicationServicesFramework, false, LockPixels, pixels);
}
void UnlockPixels(PixMapHandle pixels) {
  CALL_OR(ApplicationServicesFramework, void(), UnlockPixels, pixels);
}
Ptr GetPixBaseAddr(PixMapHandle pixels) {
  CALL_OR(ApplicationServicesFramework, nullptr, GetPixBaseAddr, pixels);
}
SInt32 GetPixRowBytes(PixMapHandle pixels) {
  CALL_OR(ApplicationServicesFramework, 0, GetPixRowBytes, pixels);
}
SInt16 GetPixDepth(PixMapHandle pixels) {
  CALL_OR(ApplicationServicesFramework, 0, GetPixDepth, pixels);
}

// Regions.

RgnHandle NewRgn() { CALL_OR(ApplicationServicesFramework, nullptr, NewRgn); }
void DisposeRgn(RgnHandle region) {
  CALL_OR(ApplicationServicesFramework, void(), DisposeRgn, region);
}
OSErr BitMapToRegion(RgnHandle region, const BitMap* bits) {
  CALL_OR(ApplicationServicesFramework, kUnavailable, BitMapToRegion, region, bits);
}

}  // extern "C"
