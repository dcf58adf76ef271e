// How loud the sound of a track is around the movie's current time: level meters and the bands of
// the equalizer.
#include <algorithm>

#include "host/encodings.h"
#include "host/entries.h"
#include "host/exceptions.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "track/track.h"

namespace krz {
namespace {

/// Hz, unsigned 16.16.
constexpr UInt32 kDefaultBands[] = {0x00C80000, 0x01900000, 0x03200000, 0x06400000,
                                    0x0C800000, 0x19000000, 0x32000000, 0x52080000};

/// The most bands that a record can count.
constexpr int64_t kMostBands = 0x7FFF;

}  // namespace

// The frequencies stay in the script's block and are not counted: `count` is the script's word.
int32_t rbSoundSetEqualizerBands(REALobject object, int32_t count, REALmemoryBlockStruct* values) {
  if (!values) {
    RaiseException("NilObjectException", "memoryblock is nil", kASCII);
    return 0;
  }
  if (count < 1) return -1;
  const MediaHandler handler = RBGetMediaHandler(object);
  if (!handler) return -1;
  MediaEQSpectrumBandsRecord record{};
  record.count = static_cast<SInt16>(count);
  record.frequency = static_cast<UInt32*>(REALMemoryBlockGetPtr(values));
  return MediaSetSoundEqualizerBands(handler, &record);
}

int32_t rbSoundSetDefaultEqualizerBands(REALobject object) {
  QTTrackClassData& data = track_data(object);
  const MediaHandler handler = getMediaHandler(data);
  UInt32 bands[std::size(kDefaultBands)];
  std::copy(std::begin(kDefaultBands), std::end(kDefaultBands), bands);
  MediaEQSpectrumBandsRecord record{};
  record.count = std::size(bands);
  record.frequency = bands;
  data.lasterror = handler ? MediaSetSoundEqualizerBands(handler, &record) : -1;
  return data.lasterror;
}

REALmemoryBlockStruct* rbSoundGetEqualizerBandLevels(REALobject object, int32_t count) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (count < 1) return nullptr;
  const MediaHandler handler = getMediaHandler(data);
  if (!handler) return nullptr;
  // The toolbox writes a byte for every band that was set, however few the script asks for.
  const Memory levels(AllocateClearMemory(std::max<int64_t>(count, kMostBands)));
  if (!levels) return nullptr;
  data.lasterror = MediaGetSoundEqualizerBandLevels(handler, static_cast<UInt8*>(levels.get()));
  return data.lasterror == noErr ? REALBuildMemoryblock(levels.get(), count) : nullptr;
}

bool rbSoundLevelMeteringEnabled(REALobject object) {
  QTTrackClassData& data = track_data(object);
  const MediaHandler handler = getMediaHandler(data);
  Boolean is_enabled = 0;
  data.lasterror = handler ? MediaGetSoundLevelMeteringEnabled(handler, &is_enabled) : -1;
  return is_enabled;
}

void rbSetSoundLevelMeteringEnabled(REALobject object, bool value) {
  QTTrackClassData& data = track_data(object);
  const MediaHandler handler = getMediaHandler(data);
  data.lasterror = handler ? MediaSetSoundLevelMeteringEnabled(handler, value) : -1;
}

void rbSoundLevelMeterInfo(REALobject object, int32_t* numChannels, int32_t* leftMeter,
                           int32_t* rightMeter) {
  *numChannels = *leftMeter = *rightMeter = 0;
  QTTrackClassData& data = track_data(object);
  const MediaHandler handler = getMediaHandler(data);
  LevelMeterInfo info{};
  data.lasterror = handler ? MediaGetSoundLevelMeterInfo(handler, &info) : -1;
  if (data.lasterror != noErr) return;
  *numChannels = info.numChannels;
  *leftMeter = info.leftMeter;
  *rightMeter = info.rightMeter;
}

}  // namespace krz
