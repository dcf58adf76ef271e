// The calls of ApplicationServices/QuickDraw.h about offscreen worlds and their pixels.
#include <new>

#include "graphics/framework_call.h"
#include "graphics/world.h"

using toolbox::Box;
using toolbox::Copy;
using toolbox::World;
namespace worlds = toolbox::worlds;

namespace {

// What UpdateGWorld is asked for, and what it answers.
constexpr GWorldFlags kClipPixels = 1u << 28, kStretchPixels = 1u << 29, kDitherPixels = 1u << 30;
constexpr GWorldFlags kNewDepth = 1u << 17, kNewRowBytes = 1u << 19, kReallocated = 1u << 20;
constexpr GWorldFlags kFailed = 1u << 31;

constexpr int kDeepest = 32;

Box box_of(const Rect& rect) { return {rect.top, rect.left, rect.bottom, rect.right}; }

GWorldPtr reference_to(World& world) {
  return reinterpret_cast<GWorldPtr>(uintptr_t{world.token()});
}

std::unique_ptr<World> create(SInt16 depth, const Rect* bounds, OSErr& error) {
  error = paramErr;
  if (bounds == nullptr) return nullptr;
  try {
    return World::create(depth == 0 ? kDeepest : depth, box_of(*bounds), error);
  } catch (const std::bad_alloc&) {
    error = memFullErr;
    return nullptr;
  }
}

}  // namespace

FRAMEWORK_CALL QDErr NewGWorld(GWorldPtr* world, SInt16 depth, const Rect* bounds, CTabHandle,
                               GDHandle, GWorldFlags) {
  if (world == nullptr) return paramErr;
  *world = nullptr;
  OSErr error = noErr;
  std::unique_ptr<World> made = create(depth, bounds, error);
  if (!made) return error;
  *world = reference_to(*made);
  if (*world == nullptr) return memFullErr;
  // Owned by its reference from here on; DisposeGWorld ends it.
  static_cast<void>(made.release());
  return noErr;
}

FRAMEWORK_CALL GWorldFlags UpdateGWorld(GWorldPtr* world, SInt16 depth, const Rect* bounds,
                                        CTabHandle, GDHandle, GWorldFlags flags) {
  const auto failure = [](OSErr error) { return kFailed | static_cast<UInt16>(error); };
  World* const found = world == nullptr ? nullptr : worlds::find(*world);
  if (found == nullptr) return failure(paramErr);
  OSErr error = noErr;
  const std::unique_ptr<World> updated = create(depth, bounds, error);
  if (!updated) return failure(error);
  const toolbox::Pixels& before = found->pixels();
  const toolbox::Pixels& after = updated->pixels();
  GWorldFlags done = kReallocated;
  if (before.depth != after.depth) done |= kNewDepth;
  if (before.row_bytes != after.row_bytes) done |= kNewRowBytes;
  if ((flags & (kClipPixels | kStretchPixels)) != 0) {
    // Without stretching the top left corner stays where it is, and what has no room goes.
    Box from = before.bounds, to = after.bounds;
    if ((flags & kStretchPixels) == 0) {
      from.right = from.left + std::min(from.width(), to.width());
      from.bottom = from.top + std::min(from.height(), to.height());
      to.right = to.left + from.width();
      to.bottom = to.top + from.height();
    }
    Copy how{.from = from, .to = to};
    if ((flags & kDitherPixels) != 0) how.nearest = toolbox::Nearest::kDithered;
    try {
      copy(before, after, how);
    } catch (const std::bad_alloc&) {
      return failure(updPixMemErr);
    }
  }
  found->swap_pixels(*updated);
  return done;
}

FRAMEWORK_CALL void DisposeGWorld(GWorldPtr world) {
  World* const found = worlds::find(world);
  if (found != &worlds::default_port()) delete found;
}

FRAMEWORK_CALL void SetGWorld(CGrafPtr port, GDHandle) { worlds::set_current(worlds::find(port)); }

FRAMEWORK_CALL void GetGWorld(CGrafPtr* port, GDHandle* device) {
  if (port != nullptr) *port = reference_to(worlds::current());
  if (device != nullptr) *device = nullptr;
}

FRAMEWORK_CALL Rect* GetPortBounds(CGrafPtr port, Rect* bounds) {
  if (bounds == nullptr) return nullptr;
  World* const found = worlds::find(port);
  *bounds = found == nullptr ? Rect{} : found->bitmap()->bounds;
  return bounds;
}

FRAMEWORK_CALL PixMapHandle GetPortPixMap(CGrafPtr port) {
  World* const found = worlds::find(port);
  return found == nullptr || found->pixels().depth == 0 ? nullptr : found->pixel_map();
}

FRAMEWORK_CALL PixMapHandle GetGWorldPixMap(GWorldPtr world) { return GetPortPixMap(world); }

FRAMEWORK_CALL const BitMap* GetPortBitMapForCopyBits(CGrafPtr port) {
  World* const found = worlds::find(port);
  return found == nullptr ? nullptr : found->bitmap();
}

// Pixels never move, so that there is nothing to hold.
FRAMEWORK_CALL Boolean LockPixels(PixMapHandle pixels) { return worlds::find(pixels) != nullptr; }
FRAMEWORK_CALL void UnlockPixels(PixMapHandle) {}

FRAMEWORK_CALL Ptr GetPixBaseAddr(PixMapHandle pixels) {
  World* const found = worlds::find(pixels);
  return found == nullptr ? nullptr : reinterpret_cast<Ptr>(found->pixels().base);
}

FRAMEWORK_CALL SInt32 GetPixRowBytes(PixMapHandle pixels) {
  World* const found = worlds::find(pixels);
  return found == nullptr ? 0 : static_cast<SInt32>(found->pixels().row_bytes);
}

FRAMEWORK_CALL SInt16 GetPixDepth(PixMapHandle pixels) {
  World* const found = worlds::find(pixels);
  return found == nullptr ? SInt16{0} : static_cast<SInt16>(found->pixels().depth);
}

FRAMEWORK_CALL Boolean FrameworkPortPixels(CGrafPtr port, FrameworkPixels* pixels) {
  World* const found = worlds::find(port);
  if (found == nullptr || pixels == nullptr || found->pixels().depth == 0) return false;
  const toolbox::Pixels& of_port = found->pixels();
  *pixels = {of_port.base, static_cast<SInt32>(of_port.row_bytes), of_port.depth,
             of_port.bounds.width(), of_port.bounds.height()};
  return true;
}
