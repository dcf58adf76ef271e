// The calls of ApplicationServices/CoreGraphics.h that lend a port's pixels to a bitmap context.
// The ports live in a framework, which whoever has a port has loaded.
#include <ApplicationServices/CoreGraphics.h>

#include <map>
#include <mutex>
#include <new>

#include "calls/guard.h"
#include "foundation/frameworks.h"
#include "graphics/framework_call.h"

using namespace toolbox;

namespace {

/// The contexts that ports are lent to.
struct LentPorts {
  std::mutex mutex;
  std::map<CGrafPtr, CGContextRef> contexts;
};

LentPorts& lent_ports() {
  static LentPorts* const kPorts = new LentPorts;
  return *kPorts;
}

bool find_pixels(CGrafPtr port, FrameworkPixels* pixels) {
  static decltype(&FrameworkPortPixels) find = nullptr;
  if (find == nullptr) {
    find = reinterpret_cast<decltype(find)>(
        find_framework_function("ApplicationServices.framework", "FrameworkPortPixels"));
  }
  return find != nullptr && find(port, pixels);
}

CGContextRef context_over(const FrameworkPixels& pixels) {
  const auto make = [&](size_t bits_per_component, CGBitmapInfo info) {
    return CGBitmapContextCreate(pixels.base, static_cast<size_t>(pixels.width),
                                 static_cast<size_t>(pixels.height), bits_per_component,
                                 static_cast<size_t>(pixels.row_bytes), nullptr, info);
  };
  switch (pixels.depth) {
    case 32:
      // Worlds begin opaque, and what is drawn over opaque pixels is.
      return make(8, kCGImageAlphaPremultipliedFirst);
    case 24:
      return make(8, kCGImageAlphaNone);
    case 16:
      return make(5, CGBitmapInfo{kCGImageAlphaNoneSkipFirst} | kCGBitmapByteOrder16Big);
    default:
      return nullptr;
  }
}

}  // namespace

TOOLBOX_CALL OSStatus QDBeginCGContext(CGrafPtr port, CGContextRef* context) {
  if (context == nullptr) return paramErr;
  *context = nullptr;
  try {
    LentPorts& lent = lent_ports();
    const std::lock_guard lock(lent.mutex);
    FrameworkPixels pixels{};
    if (lent.contexts.contains(port) || !find_pixels(port, &pixels)) return paramErr;
    CGContextRef& made = lent.contexts[port];
    made = context_over(pixels);
    *context = made;
    if (made == nullptr) lent.contexts.erase(port);
    return *context == nullptr ? OSStatus{paramErr} : OSStatus{noErr};
  } catch (const std::bad_alloc&) {
    return memFullErr;
  }
}

TOOLBOX_CALL OSStatus QDEndCGContext(CGrafPtr port, CGContextRef* context) {
  LentPorts& lent = lent_ports();
  const std::lock_guard lock(lent.mutex);
  const auto found = lent.contexts.find(port);
  if (context == nullptr || found == lent.contexts.end() || found->second != *context)
    return paramErr;
  CGContextRelease(*context);
  lent.contexts.erase(found);
  *context = nullptr;
  return noErr;
}
