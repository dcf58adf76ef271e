// The channel layout of a sound track.
#include "host/audio_layout.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "track/track.h"

namespace krz {

// Asks for the size twice and never for the value: the layout that scripts get has no tag, no
// bitmap and no descriptions. Scripts rely on no more than that there is one.
REALobject rbAudioChannelLayout(REALobject object) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return nullptr;
  const Track track = to_reference<Track>(data.track);
  OSType type = 0;
  ByteCount size = 0;
  UInt32 flags = 0;
  const auto ask = [&] {
    data.lasterror = QTGetTrackPropertyInfo(
        track, kQTPropertyClass_Audio, kQTAudioPropertyID_TrackChannelLayout, &type, &size, &flags);
    return data.lasterror == noErr;
  };
  if (!ask()) return nullptr;
  const Memory buffer(AllocateClearMemory(static_cast<int64_t>(size)));
  if (!buffer) {
    data.lasterror = memFullErr;
    return nullptr;
  }
  if (!ask()) return nullptr;
  return NewQTAudioChannelLayoutKRZ(static_cast<const AudioChannelLayout*>(buffer.get()));
}

void rbSetAudioChannelLayout(REALobject object, REALobject value) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track || !value) return;
  const Memory record(GetQTAudioChannelLayout(value));
  if (!record) {
    data.lasterror = memFullErr;
    return;
  }
  const auto* layout = static_cast<const AudioChannelLayout*>(record.get());
  const ByteCount size = ByteCount{layout->mNumberChannelDescriptions} * 20 + 12;
  data.lasterror = QTSetTrackProperty(to_reference<Track>(data.track), kQTPropertyClass_Audio,
                                      kQTAudioPropertyID_TrackChannelLayout, size, record.get());
}

}  // namespace krz
