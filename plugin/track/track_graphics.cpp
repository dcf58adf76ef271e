// How the pictures of a track are drawn over those below: the graphics mode and its colour.
#include "host/instance_data.h"
#include "track/track.h"

namespace krz {
namespace {

/// A byte as a component of 16 bits: 0xFF becomes 0xFFFF.
constexpr uint32_t kWiden = 257;

}  // namespace

// Bits above the colour's 24 run over into red, which keeps the low 16 of what comes out.
void rbMediaSetGraphicsMode(REALobject object, int32_t Mode, uint32_t TheColor) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  const MediaHandler handler = getMediaHandler(data);
  if (!handler) return;
  const RGBColor color = {static_cast<UInt16>((TheColor >> 16) * kWiden),
                          static_cast<UInt16>((TheColor >> 8 & 0xFF) * kWiden),
                          static_cast<UInt16>((TheColor & 0xFF) * kWiden)};
  data.lasterror = MediaSetGraphicsMode(handler, Mode, &color);
}

void rbMediaGetGraphicsMode(REALobject object, int32_t* Mode, uint32_t* TheColor) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  *Mode = 0;
  *TheColor = 0;
  const MediaHandler handler = getMediaHandler(data);
  if (!handler) return;
  SInt32 mode = 0;
  RGBColor color = {0, 0, 0};
  data.lasterror = MediaGetGraphicsMode(handler, &mode, &color);
  if (data.lasterror != noErr) return;
  *Mode = mode;
  *TheColor = (color.red << 8 & 0xFF0000u) | (color.green & 0xFF00u) | (color.blue >> 8u);
}

}  // namespace krz
