// The calls of sound and graphics handlers, and those over aperture dimensions, answering what a
// test has written down.
#include <cstring>

#include "plugin/fake_calls.h"

using fake_toolbox::answer;
using fake_toolbox::toolbox;

namespace {

ComponentResult result(int64_t code) { return static_cast<ComponentResult>(code); }

/// What a getter hands out is answers[name of the value].
template <class Value>
Value value(const char* name) {
  return static_cast<Value>(toolbox().answers[name]);
}

}  // namespace

extern "C" {

ComponentResult MediaGetSoundBalance(MediaHandler mh, SInt16* balance) {
  const auto given = *balance;
  *balance = value<SInt16>("balance");
  return result(answer("MediaGetSoundBalance", mh, given));
}
ComponentResult MediaSetSoundBalance(MediaHandler mh, SInt16 balance) {
  return result(answer("MediaSetSoundBalance", mh, balance));
}
ComponentResult MediaGetEffectiveSoundBalance(MediaHandler mh, SInt16* balance) {
  *balance = value<SInt16>("balance");
  return result(answer("MediaGetEffectiveSoundBalance", mh));
}
ComponentResult MediaGetEffectiveVolume(MediaHandler mh, SInt16* volume) {
  *volume = value<SInt16>("volume");
  return result(answer("MediaGetEffectiveVolume", mh));
}
ComponentResult MediaSetSoundEqualizerBands(MediaHandler mh, MediaEQSpectrumBandsRecord* record) {
  std::string call = "bands";
  for (SInt16 i = 0; i < record->count; ++i) {
    UInt32 frequency = 0;
    std::memcpy(&frequency, record->frequency + i, sizeof frequency);
    call += " " + std::to_string(frequency);
  }
  toolbox().calls.push_back(call);
  return result(answer("MediaSetSoundEqualizerBands", mh, record->count));
}
ComponentResult MediaGetSoundEqualizerBandLevels(MediaHandler mh, UInt8* levels) {
  const auto count = value<UInt8>("bands");
  for (UInt8 i = 0; i < count; ++i) levels[i] = static_cast<UInt8>(i + 1);
  return result(answer("MediaGetSoundEqualizerBandLevels", mh));
}
ComponentResult MediaSetSoundLevelMeteringEnabled(MediaHandler mh, Boolean enabled) {
  return result(answer("MediaSetSoundLevelMeteringEnabled", mh, enabled));
}
ComponentResult MediaGetSoundLevelMeteringEnabled(MediaHandler mh, Boolean* enabled) {
  *enabled = value<Boolean>("metering");
  return result(answer("MediaGetSoundLevelMeteringEnabled", mh));
}
ComponentResult MediaGetSoundLevelMeterInfo(MediaHandler mh, LevelMeterInfo* info) {
  *info = {-2, 200, 255};
  return result(answer("MediaGetSoundLevelMeterInfo", mh));
}
ComponentResult MediaSetSoundBassAndTreble(MediaHandler mh, SInt16 bass, SInt16 treble) {
  return result(answer("MediaSetSoundBassAndTreble", mh, bass, treble));
}
ComponentResult MediaGetSoundBassAndTreble(MediaHandler mh, SInt16* bass, SInt16* treble) {
  *bass = value<SInt16>("bass");
  *treble = value<SInt16>("treble");
  return result(answer("MediaGetSoundBassAndTreble", mh));
}
ComponentResult MediaSetSoundOutputComponent(MediaHandler mh, Component component) {
  return result(answer("MediaSetSoundOutputComponent", mh, component));
}
ComponentResult MediaGetSoundOutputComponent(MediaHandler mh, Component* component) {
  *component = fake_toolbox::reference<Component>(toolbox().answers["component"]);
  return result(answer("MediaGetSoundOutputComponent", mh));
}
ComponentResult MediaSetGraphicsMode(MediaHandler mh, SInt32 mode, const RGBColor* color) {
  return result(answer("MediaSetGraphicsMode", mh, mode, color->red, color->green, color->blue));
}
ComponentResult MediaGetGraphicsMode(MediaHandler mh, SInt32* mode, RGBColor* color) {
  *mode = value<SInt32>("mode");
  *color = {0x1234, 0xABCD, 0xFFFF};
  return result(answer("MediaGetGraphicsMode", mh));
}

OSErr GenerateMovieApertureModeDimensions(Movie movie) {
  return static_cast<OSErr>(answer("GenerateMovieApertureModeDimensions", movie));
}
OSErr RemoveMovieApertureModeDimensions(Movie movie) {
  return static_cast<OSErr>(answer("RemoveMovieApertureModeDimensions", movie));
}
OSErr GenerateTrackApertureModeDimensions(Track track) {
  return static_cast<OSErr>(answer("GenerateTrackApertureModeDimensions", track));
}
OSErr RemoveTrackApertureModeDimensions(Track track) {
  return static_cast<OSErr>(answer("RemoveTrackApertureModeDimensions", track));
}
OSErr SetTrackApertureModeDimensionsUsingSampleDescription(Track track, Handle description) {
  return static_cast<OSErr>(
      answer("SetTrackApertureModeDimensionsUsingSampleDescription", track, description));
}

}  // extern "C"
