// The calls of ApplicationServices/QuickDraw.h that draw into the current port, and regions.
#include <algorithm>
#include <new>
#include <optional>

#include "graphics/framework_call.h"
#include "graphics/world.h"

using toolbox::Box;
using toolbox::Copy;
using toolbox::Nearest;
using toolbox::Pixels;
using toolbox::Region;
using toolbox::Transfer;
using toolbox::World;
namespace worlds = toolbox::worlds;

namespace {

constexpr SInt16 kTransparent = 36, kDitherCopy = 0x40;
constexpr uint16_t kRowBytesOfBitmap = 0x3FFF;

Box box_of(const Rect& rect) { return {rect.top, rect.left, rect.bottom, rect.right}; }

/// Runs `body`; drawing that runs out of memory leaves off.
template <class Body>
void drawing(Body body) {
  try {
    body();
  } catch (const std::bad_alloc&) {
  }
}

Handle handle_of(RgnHandle region) { return reinterpret_cast<Handle>(region); }

/// The region in a handle; its rectangle when the rows are damaged, nothing when it holds none.
std::optional<Region> region_in(RgnHandle region) {
  const auto size = static_cast<size_t>(GetHandleSize(handle_of(region)));
  if (size == 0) return std::nullopt;
  const toolbox::ByteView record(reinterpret_cast<const uint8_t*>(*handle_of(region)), size);
  std::optional<Region> read = Region::from_record(record);
  return read ? read : Region::bounds_of_record(record);
}

OSErr put_region(const Region& region, RgnHandle into) {
  const auto record = region.record();
  if (!record) return rgnTooBigErr;
  if (const OSErr error = SetHandleSize(handle_of(into), static_cast<Size>(record->size())))
    return error;
  std::copy(record->begin(), record->end(), *handle_of(into));
  return noErr;
}

/// The pixels of a bitmap: of its world, or one bit deep where the caller says.
Pixels pixels_of(const BitMap& bitmap) {
  if (const World* const world = worlds::find(&bitmap)) return world->pixels();
  const auto row_bytes = static_cast<uint16_t>(bitmap.rowBytes);
  return {reinterpret_cast<uint8_t*>(bitmap.baseAddr), row_bytes & kRowBytesOfBitmap, 1,
          box_of(bitmap.bounds)};
}

/// Whether the rows of a caller's own bitmap are as long as its bounds need them.
bool is_whole(const Pixels& pixels) {
  return pixels.base != nullptr && !pixels.bounds.empty() &&
         pixels.row_bytes * 8 >= int64_t{pixels.bounds.width()} * pixels.depth;
}

void fill_region(const Region& region, const Pattern* pattern) {
  const World& port = worlds::current();
  if (pattern == nullptr || port.pixels().base == nullptr) return;
  fill(port.pixels(), region, {.pattern = pattern->pat, .foreground = port.foreground});
}

}  // namespace

FRAMEWORK_CALL void RGBForeColor(const RGBColor* color) {
  if (color == nullptr) return;
  const auto high_byte = [](UInt16 component) { return toolbox::Color{component} >> 8; };
  worlds::current().foreground = toolbox::kBlack | high_byte(color->red) << 16 |
                                 high_byte(color->green) << 8 | high_byte(color->blue);
}

FRAMEWORK_CALL void FillRect(const Rect* rect, const Pattern* pattern) {
  if (rect == nullptr) return;
  drawing([&] { fill_region(Region::rectangle(box_of(*rect)), pattern); });
}

FRAMEWORK_CALL void FillRgn(RgnHandle region, const Pattern* pattern) {
  drawing([&] {
    if (const auto filled = region_in(region)) fill_region(*filled, pattern);
  });
}

FRAMEWORK_CALL void CopyBits(const BitMap* source, const BitMap* destination,
                             const Rect* sourceRect, const Rect* destinationRect, SInt16 mode,
                             RgnHandle mask) {
  if (source == nullptr || destination == nullptr || sourceRect == nullptr ||
      destinationRect == nullptr) {
    return;
  }
  drawing([&] {
    const Pixels from = pixels_of(*source), to = pixels_of(*destination);
    if (!is_whole(from) || !is_whole(to)) return;
    std::optional<Region> clip;
    if (mask != nullptr && !(clip = region_in(mask))) return;
    Copy how{.from = box_of(*sourceRect), .to = box_of(*destinationRect)};
    const int plain = mode & ~kDitherCopy;
    if (mode & kDitherCopy) how.nearest = Nearest::kDithered;
    if (plain == kTransparent) {
      how.transfer = Transfer::kTransparent;
    } else if (plain >= 0 && plain <= 7) {
      how.transfer = static_cast<Transfer>(plain);
    } else {
      return;
    }
    if (clip) how.mask = &*clip;
    if (const World* const world = worlds::find(destination)) how.foreground = world->foreground;
    copy(from, to, how);
  });
}

FRAMEWORK_CALL RgnHandle NewRgn() {
  const Handle made = NewHandle(0);
  if (made == nullptr) return nullptr;
  const auto region = reinterpret_cast<RgnHandle>(made);
  OSErr error = memFullErr;
  drawing([&] { error = put_region(Region(), region); });
  if (error == noErr) return region;
  DisposeHandle(made);
  return nullptr;
}

FRAMEWORK_CALL void DisposeRgn(RgnHandle region) { DisposeHandle(handle_of(region)); }

FRAMEWORK_CALL OSErr BitMapToRegion(RgnHandle region, const BitMap* bits) {
  if (GetHandleSize(handle_of(region)) == 0 || bits == nullptr) return paramErr;
  OSErr error = memFullErr;
  drawing([&] {
    const Pixels pixels = pixels_of(*bits);
    if (pixels.depth != 1) {
      error = pixMapTooDeepErr;
    } else if (!is_whole(pixels) && !pixels.bounds.empty()) {
      error = paramErr;
    } else {
      const auto made = Region::from_bits({pixels.base, pixels.row_bytes, pixels.bounds});
      error = made ? put_region(*made, region) : OSErr{rgnTooBigErr};
    }
  });
  return error;
}
