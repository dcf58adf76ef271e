#include "picture/clip_mask.h"

#include "host/entries.h"
#include "host/instance_data.h"
#include "picture/picture.h"
#include "track/track.h"

namespace krz {
namespace {

constexpr GWorldFlags kClipPixels = 0x10000000;
constexpr RGBColor kWhite = {0xFFFF, 0xFFFF, 0xFFFF};
constexpr RGBColor kBlack = {0, 0, 0};
constexpr Pattern kSolid = {{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}};

/// The whole pixels of a track; fractions are dropped.
Rect track_rect(Track track) {
  Fixed width = 0, height = 0;
  GetTrackDimensions(track, &width, &height);
  return {0, 0, static_cast<SInt16>(height >> 16), static_cast<SInt16>(width >> 16)};
}

REALpictureStruct* picture_of(RgnHandle region, const Rect& rect) {
  GWorldPtr world = nullptr;
  if (NewGWorld(&world, 32, &rect, nullptr, nullptr, 0) != noErr || !world) return nullptr;
  SetGWorld(world, nullptr);
  RGBForeColor(&kWhite);
  FillRect(&rect, &kSolid);
  RGBForeColor(&kBlack);
  FillRgn(region, &kSolid);
  return REALBuildPictureFromGWorld(world, true);
}

/// The pixels of a one-bit world that are set.
RgnHandle region_of(GWorldPtr world) {
  const PixMapHandle pixels = GetPortPixMap(world);
  if (!pixels || !LockPixels(pixels)) return nullptr;
  RgnHandle region = NewRgn();
  // A pixel map begins as a bitmap does.
  if (region && BitMapToRegion(region, reinterpret_cast<const BitMap*>(*pixels)) != noErr) {
    DisposeRgn(region);
    region = nullptr;
  }
  UnlockPixels(pixels);
  return region;
}

/// The dark pixels of a picture; nil for none.
RgnHandle GetMaskRegion(REALpictureStruct* picture) {
  const SavedGWorld saved;
  if (!picture) return nullptr;
  REALpictureDescription description = {};
  REALLockPictureDescription(picture, &description);
  const Rect rect = {0, 0, static_cast<SInt16>(description.height),
                     static_cast<SInt16>(description.width)};
  RgnHandle region = nullptr;
  GWorldPtr world = nullptr;
  if (NewGWorld(&world, 32, &rect, nullptr, nullptr, 0) == noErr && world) {
    SetGWorld(world, nullptr);
    REALDrawPicturePrimitive(picture, &rect, 0);
    // One bit a pixel: what is dark is set.
    UpdateGWorld(&world, 1, &rect, nullptr, nullptr, kClipPixels);
    region = region_of(world);
    DisposeGWorld(world);
  }
  REALUnlockPictureDescription(picture);
  return region;
}

}  // namespace

REALpictureStruct* rbGetTrackClipRgn(REALobject object) {
  const SavedGWorld saved;
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return nullptr;
  const Track track = to_reference<Track>(data.track);
  const RgnHandle region = GetTrackClipRgn(track);
  data.lasterror = GetMoviesError();
  if (!region) return nullptr;
  REALpictureStruct* const picture = picture_of(region, track_rect(track));
  DisposeRgn(region);
  return picture;
}

void rbSetTrackClipRgn(REALobject object, REALpictureStruct* picture) {
  const SavedGWorld saved;
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return;
  const RgnHandle region = GetMaskRegion(picture);
  SetTrackClipRgn(to_reference<Track>(data.track), region);
  data.lasterror = GetMoviesError();
  if (region) DisposeRgn(region);
}

}  // namespace krz
