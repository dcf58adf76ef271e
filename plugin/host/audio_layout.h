// Channel layouts of sound, between the toolbox's record and the host's two layout classes.
#pragma once

#include <CoreAudio/CoreAudioTypes.h>
#include <krz/abi.h>

namespace krz {

/// A new "QTAudioChannelLayoutKRZ" with the record's values and a description object for each of
/// its first 64 descriptions. The count is taken over as it stands. Nil for a null record and when
/// the host has no such class.
REALobject NewQTAudioChannelLayoutKRZ(const AudioChannelLayout* layout);

/// A new record with at most 64 descriptions, those of nil elements zeroed. The caller frees it
/// with FreeMemoryNow. Fails: null for nil and without memory.
AudioChannelLayout* GetQTAudioChannelLayout(REALobject object);

}  // namespace krz
