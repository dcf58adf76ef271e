#include "plugin/fake_drawing.h"

#include <gtest/gtest.h>

#include "plugin/fake_toolbox.h"

namespace fake_drawing {

using fake_toolbox::toolbox;

World drawn;

GWorldPtr some_world() { return reinterpret_cast<GWorldPtr>(uintptr_t{500}); }
CGrafPtr some_port() { return reinterpret_cast<CGrafPtr>(uintptr_t{400}); }

namespace {

std::string text(const Rect& rect) {
  return std::to_string(rect.top) + " " + std::to_string(rect.left) + " " +
         std::to_string(rect.bottom) + " " + std::to_string(rect.right);
}
std::string name(CGrafPtr port) { return port == some_world() ? "world" : "port"; }

template <class Function>
void* address(Function* function) {
  return reinterpret_cast<void*>(function);
}

}  // namespace

void provide_drawing() {
  drawn = World();
  toolbox().answers["CFBundleLoadExecutable"] = 1;
  auto& routines = toolbox().frameworks;
  static PixMapHandle pixels = reinterpret_cast<PixMapHandle>(&drawn.base);
  routines["GetPortBounds"] = address(+[](CGrafPtr, Rect* bounds) {
    *bounds = drawn.bounds;
    return bounds;
  });
  routines["GetGWorldPixMap"] = address(+[](GWorldPtr) { return pixels; });
  routines["GetPortPixMap"] = address(+[](CGrafPtr) { return pixels; });
  routines["GetPixDepth"] = address(+[](PixMapHandle) { return drawn.depth; });
  routines["LockPixels"] = address(+[](PixMapHandle) {
    drawn.calls.push_back("lock");
    return drawn.locks;
  });
  routines["UnlockPixels"] = address(+[](PixMapHandle) { drawn.calls.push_back("unlock"); });
  routines["GetPixBaseAddr"] = address(+[](PixMapHandle) { return drawn.base; });
  routines["GetPixRowBytes"] = address(+[](PixMapHandle) { return drawn.row_bytes; });
  routines["DisposeGWorld"] = address(+[](GWorldPtr) { drawn.calls.push_back("dispose"); });
  routines["GetGWorld"] = address(+[](CGrafPtr* port, GDHandle* device) {
    *port = some_port();
    *device = reinterpret_cast<GDHandle>(uintptr_t{9});
  });
  routines["SetGWorld"] =
      address(+[](CGrafPtr port, GDHandle) { drawn.calls.push_back("set " + name(port)); });
  routines["NewGWorld"] = address(+[](GWorldPtr* world, SInt16 depth, const Rect* bounds,
                                      CTabHandle, GDHandle, GWorldFlags) -> QDErr {
    drawn.calls.push_back("new " + std::to_string(depth) + ": " + text(*bounds));
    if (drawn.new_error == noErr) *world = some_world();
    return drawn.new_error;
  });
  routines["UpdateGWorld"] = address(+[](GWorldPtr*, SInt16 depth, const Rect* bounds, CTabHandle,
                                         GDHandle, GWorldFlags flags) -> GWorldFlags {
    drawn.calls.push_back("update " + std::to_string(depth) + ": " + text(*bounds) + " flags " +
                          std::to_string(flags >> 28));
    return 0;
  });
  routines["RGBForeColor"] = address(+[](const RGBColor* color) {
    drawn.calls.push_back("color " + std::to_string(color->green));
  });
  routines["FillRect"] = address(+[](const Rect* rect, const Pattern* pattern) {
    drawn.calls.push_back("fill " + text(*rect) + " with " + std::to_string(pattern->pat[7]));
  });
  routines["FillRgn"] = address(+[](RgnHandle region, const Pattern* pattern) {
    drawn.calls.push_back("fill region " + std::to_string(reinterpret_cast<uintptr_t>(region)) +
                          " with " + std::to_string(pattern->pat[0]));
  });
  routines["NewRgn"] = address(+[] {
    drawn.calls.push_back("new region");
    return reinterpret_cast<RgnHandle>(uintptr_t{600});
  });
  routines["DisposeRgn"] = address(+[](RgnHandle region) {
    drawn.calls.push_back("dispose region " + std::to_string(reinterpret_cast<uintptr_t>(region)));
  });
  routines["BitMapToRegion"] =
      address(+[](RgnHandle, const BitMap*) { return drawn.region_error; });
  routines["GetPortBitMapForCopyBits"] =
      address(+[](CGrafPtr port) { return reinterpret_cast<const BitMap*>(port); });
  routines["CopyBits"] =
      address(+[](const BitMap* source, const BitMap* destination, const Rect* from, const Rect* to,
                  SInt16 mode, RgnHandle mask) {
        EXPECT_EQ(reinterpret_cast<CGrafPtr>(const_cast<BitMap*>(source)), some_world());
        EXPECT_EQ(reinterpret_cast<CGrafPtr>(const_cast<BitMap*>(destination)), some_port());
        EXPECT_EQ(mode, 0);
        EXPECT_EQ(mask, nullptr);
        drawn.calls.push_back("copy " + text(*from) + " to " + text(*to));
      });
}

}  // namespace fake_drawing
