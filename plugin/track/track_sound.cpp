// How the sound of a track is played: balance, volume, bass and treble, the device. The toolbox
// answers for media that is no sound.
#include "host/instance_data.h"
#include "track/track.h"

namespace krz {
namespace {

/// Runs `call(handler)`; its result is the track's error, -1 when there is no handler.
template <class Call>
ComponentResult with_handler(REALobject object, Call call) {
  QTTrackClassData& data = track_data(object);
  const MediaHandler handler = getMediaHandler(data);
  data.lasterror = handler ? call(handler) : -1;
  return data.lasterror;
}

/// A value that `get(handler, &value)` gives, 0 when it does not.
template <class Value>
Value value_of(REALobject object, ComponentResult (*get)(MediaHandler, Value*)) {
  Value value = 0;
  with_handler(object, [&](MediaHandler handler) { return get(handler, &value); });
  return value;
}

struct Tone {
  SInt16 bass = 0;
  SInt16 treble = 0;
};

Tone tone_of(REALobject object) {
  Tone tone;
  with_handler(object, [&](MediaHandler handler) {
    return MediaGetSoundBassAndTreble(handler, &tone.bass, &tone.treble);
  });
  return tone;
}

/// Both are set at once, so that the other one is read first; what cannot be read is not set.
template <class Change>
void change_tone(REALobject object, Change change) {
  with_handler(object, [&](MediaHandler handler) {
    Tone tone;
    const ComponentResult read = MediaGetSoundBassAndTreble(handler, &tone.bass, &tone.treble);
    if (read != noErr) return read;
    change(tone);
    return MediaSetSoundBassAndTreble(handler, tone.bass, tone.treble);
  });
}

}  // namespace

int32_t rbSoundBalance(REALobject object) { return value_of<SInt16>(object, MediaGetSoundBalance); }

void rbSetSoundBalance(REALobject object, int32_t value) {
  with_handler(object, [&](MediaHandler handler) {
    return MediaSetSoundBalance(handler, static_cast<SInt16>(value));
  });
}

int32_t rbSoundEffectiveBalance(REALobject object) {
  return value_of<SInt16>(object, MediaGetEffectiveSoundBalance);
}

int32_t rbSoundEffectiveVolume(REALobject object) {
  return value_of<SInt16>(object, MediaGetEffectiveVolume);
}

int32_t rbSoundOutputComponent(REALobject object) {
  Component component = nullptr;
  with_handler(object, [&](MediaHandler handler) {
    return MediaGetSoundOutputComponent(handler, &component);
  });
  return to_token(component);
}

void rbSetSoundOutputComponent(REALobject object, int32_t value) {
  with_handler(object, [&](MediaHandler handler) {
    return MediaSetSoundOutputComponent(handler, to_reference<Component>(value));
  });
}

int32_t rbSoundBass(REALobject object) { return tone_of(object).bass; }
int32_t rbSoundTreble(REALobject object) { return tone_of(object).treble; }

void rbSetSoundBass(REALobject object, int32_t value) {
  change_tone(object, [&](Tone& tone) { tone.bass = static_cast<SInt16>(value); });
}

void rbSetSoundTreble(REALobject object, int32_t value) {
  change_tone(object, [&](Tone& tone) { tone.treble = static_cast<SInt16>(value); });
}

}  // namespace krz
