// Host pictures: made of offscreen worlds, copied, and drawn.
#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <krz/abi.h>

namespace krz {

inline REALobject as_object(REALpictureStruct* picture) {
  return reinterpret_cast<REALobject>(picture);
}

/// A new 32-bit picture with the pixels of a world of depth 32, 24 or 8 (as grey); with `dispose`
/// the world is disposed whatever comes of it. The caller owns the picture. Fails: nil.
REALpictureStruct* REALBuildPictureFromGWorldKRZ(GWorldPtr world, bool dispose);
REALpictureStruct* REALBuildPictureFromGWorld(GWorldPtr world, bool dispose);

/// A 32-bit copy, drawn by the host; blank where the host cannot draw. The caller owns it.
/// Fails: nil for nil and for a picture without pixels.
REALpictureStruct* ClonePicture(REALpictureStruct* picture);

/// Pixels; 0 for nil and where the host does not tell.
int32_t GetPictureWidth(REALpictureStruct* picture);
int32_t GetPictureHeight(REALpictureStruct* picture);

/// The part (sx, sy, sw, sh) of a picture drawn into (x, y, w, h), by the host's graphics or, where
/// they have no such method, by OwnCopy into the picture that they belong to.
/// Fails: false without graphics or source, and as OwnCopy.
bool GraphicsDrawPicture(REALgraphicsStruct* graphics, REALpictureStruct* destination,
                         REALpictureStruct* source, int32_t x, int32_t y, int32_t w, int32_t h,
                         int32_t sx, int32_t sy, int32_t sw, int32_t sh);

/// Copies the rows of one older pixel buffer to another. Fails: false for anything but whole
/// pictures of one size and pictures of another kind or with alpha.
bool OwnCopy(REALpictureStruct* destination, REALpictureStruct* source, int32_t x, int32_t y,
             int32_t w, int32_t h, int32_t sx, int32_t sy, int32_t sw, int32_t sh);

/// Draws a picture into a rectangle of the current port. The last number means nothing.
void REALDrawPicturePrimitive(REALpictureStruct* picture, const Rect* rect, int32_t ignored);

/// The current port, which is current again when this ends.
class SavedGWorld {
 public:
  SavedGWorld() { GetGWorld(&port_, &device_); }
  ~SavedGWorld() { restore(); }
  SavedGWorld(const SavedGWorld&) = delete;
  SavedGWorld& operator=(const SavedGWorld&) = delete;

  void restore() const { SetGWorld(port_, device_); }
  CGrafPtr port() const { return port_; }

 private:
  CGrafPtr port_ = nullptr;  // stays nil where there is nothing to draw with
  GDHandle device_ = nullptr;
};

}  // namespace krz
