// Pictures drawn: into one another by the host, and into the current port.
#include <cstring>

#include "host/entries.h"
#include "host/resolver.h"
#include "picture/picture.h"

namespace krz {
namespace {

constexpr char kDrawPicture[] =
    "DrawPicture(Image as Picture, x as Integer, y as Integer, w as Integer, h as Integer, "
    "sx as Integer = 0, sy as Integer = 0, sw as Integer = -10000, sh as Integer = -10000)";

using DrawPicture = void(REALgraphicsStruct*, REALpictureStruct*, int32_t x, int32_t y, int32_t w,
                         int32_t h, int32_t sx, int32_t sy, int32_t sw, int32_t sh);

int32_t integer_property(REALpictureStruct* picture, const char* name) {
  int32_t value = 0;
  if (!picture || !REALGetPropValueInt32(as_object(picture), name, &value)) return 0;
  return value;
}

/// A picture's description of one kind, unlocked when this ends.
class LockedDescription {
 public:
  LockedDescription(REALpictureStruct* picture, REALpictureDescriptionType type)
      : picture_(picture),
        type_(type),
        locked_(REALLockPictureDescriptionX(picture, &description_, type)) {}
  ~LockedDescription() {
    if (locked_) REALUnlockPictureDescription(picture_);
  }
  LockedDescription(const LockedDescription&) = delete;
  LockedDescription& operator=(const LockedDescription&) = delete;

  /// Null when the picture is of another kind.
  void* data() const { return locked_ && description_.type == type_ ? description_.data : nullptr; }
  int32_t width() const { return description_.width; }
  int32_t height() const { return description_.height; }

 private:
  REALpictureStruct* picture_;
  int32_t type_;
  REALpictureDescription description_ = {};
  bool locked_;
};

bool copy_rows(const LockedDescription& to, const LockedDescription& from) {
  if (!to.data() || !from.data()) return false;
  if (to.width() != from.width() || to.height() != from.height()) return false;
  const auto& target = *static_cast<const REALpixelBuffer*>(to.data());
  const auto& source = *static_cast<const REALpixelBuffer*>(from.data());
  if (target.has_alpha != 0 || source.has_alpha != 0 || !target.rows || !source.rows) return false;
  for (int32_t y = 0; y < to.height(); ++y) {
    // A picture copied to itself has each row at one address.
    std::memmove(target.rows[y], source.rows[y], static_cast<size_t>(to.width()) * 4);
  }
  return true;
}

CGRect rect_of(int32_t x, int32_t y, int32_t width, int32_t height) {
  return {CGFloat(x), CGFloat(y), CGFloat(width), CGFloat(height)};
}

/// Draws an image into a rectangle of a port, whose rows run downward while the context's run
/// upward.
bool draw_image(CGrafPtr port, CGImageRef image, const Rect& rect) {
  CGContextRef context = nullptr;
  if (QDBeginCGContext(port, &context) != noErr) return false;
  Rect bounds;
  GetPortBounds(port, &bounds);
  CGContextDrawImage(context,
                     rect_of(rect.left, bounds.bottom - rect.bottom, rect.right - rect.left,
                             rect.bottom - rect.top),
                     image);
  CGContextFlush(context);
  QDEndCGContext(port, &context);
  return true;
}

/// For ports that no context can be had of: drawn beside them and copied.
void copy_image(const SavedGWorld& saved, CGImageRef image, const Rect& size, const Rect& rect) {
  GWorldPtr world = nullptr;
  if (NewGWorld(&world, 24, &size, nullptr, nullptr, 0) != noErr || !world) return;
  SetGWorld(world, nullptr);
  draw_image(world, image, size);
  saved.restore();
  CopyBits(GetPortBitMapForCopyBits(world), GetPortBitMapForCopyBits(saved.port()), &size, &rect, 0,
           nullptr);
  DisposeGWorld(world);
}

}  // namespace

int32_t GetPictureWidth(REALpictureStruct* picture) { return integer_property(picture, "Width"); }
int32_t GetPictureHeight(REALpictureStruct* picture) { return integer_property(picture, "Height"); }

REALpictureStruct* ClonePicture(REALpictureStruct* picture) {
  const int32_t width = GetPictureWidth(picture), height = GetPictureHeight(picture);
  if (width < 1 || height < 1) return nullptr;
  REALpictureStruct* const clone = REALNewPicture(width, height, 32);
  REALgraphicsStruct* const graphics = clone ? REALGetPictureGraphics(clone) : nullptr;
  if (!graphics) return clone;
  GraphicsDrawPicture(graphics, clone, picture, 0, 0, width, height, 0, 0, width, height);
  REALUnlockObject(reinterpret_cast<REALobject>(graphics));
  return clone;
}

bool GraphicsDrawPicture(REALgraphicsStruct* graphics, REALpictureStruct* destination,
                         REALpictureStruct* source, int32_t x, int32_t y, int32_t w, int32_t h,
                         int32_t sx, int32_t sy, int32_t sw, int32_t sh) {
  if (!graphics || !source) return false;
  const auto draw = reinterpret_cast<DrawPicture*>(
      REALLoadObjectMethod(reinterpret_cast<REALobject>(graphics), kDrawPicture));
  if (draw) {
    draw(graphics, source, x, y, w, h, sx, sy, sw, sh);
    return true;
  }
  // Hosts before 2012 are asked for an entry whose answer nobody uses.
  if (rbversion < kVersionWithTextData) gResolver("RuntimeGraphicsDrawPicture");
  return OwnCopy(destination, source, x, y, w, h, sx, sy, sw, sh);
}

bool OwnCopy(REALpictureStruct* destination, REALpictureStruct* source, int32_t x, int32_t y,
             int32_t w, int32_t h, int32_t sx, int32_t sy, int32_t sw, int32_t sh) {
  if (x != 0 || y != 0 || sx != 0 || sy != 0 || sw != w || sh != h) return false;
  if (!destination || !source) return false;
  bool copied = false;
  {
    const LockedDescription to(destination, kPicturePixelBuffer);
    const LockedDescription from(source, kPicturePixelBuffer);
    copied = copy_rows(to, from);
  }
  if (copied) REALPictureClearCache(destination);
  return copied;
}

void REALDrawPicturePrimitive(REALpictureStruct* picture, const Rect* rect, int32_t) {
  const SavedGWorld saved;
  if (!picture || !rect) return;
  const LockedDescription description(picture, kPictureBitmapContext);
  const auto context = static_cast<CGContextRef>(description.data());
  const CGImageRef image = context ? CGBitmapContextCreateImage(context) : nullptr;
  if (!image) return;
  if (!draw_image(saved.port(), image, *rect)) {
    const Rect size = {0, 0, static_cast<SInt16>(CGBitmapContextGetHeight(context)),
                       static_cast<SInt16>(CGBitmapContextGetWidth(context))};
    copy_image(saved, image, size, *rect);
  }
  CGImageRelease(image);
}

}  // namespace krz
