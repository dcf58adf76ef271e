// The calls of QuickTime/MediaHandlers.h for sound media, and the levels of whole tracks.
#include <Toolbox/Toolbox.h>

#include <algorithm>
#include <cstring>

#include "calls/handler_guard.h"
#include "calls/references.h"
#include "handlers/spectrum.h"
#include "movie/movie.h"
#include "movie/sound_levels.h"

using namespace toolbox::calls;
using toolbox::Result;
using toolbox::SoundControls;
using toolbox::SoundWindow;
using toolbox::Status;

namespace {

template <class Body>
ComponentResult guarded_sound(MediaHandler mh, Body body) {
  return guarded_handler(mh, SoundMediaType, body);
}

/// Hands a value out, to nobody when no place is given.
template <class Value, class Place>
Status give(Value value, Place* place) {
  if (place != nullptr) *place = static_cast<Place>(value);
  return {};
}

Result<SoundWindow> sound_now(const toolbox::Media& media) {
  const toolbox::Track& track = media.track();
  return sound_around(track, track.movie().current_time());
}

/// The strongest of all channels, band by band.
std::vector<double> amplitudes_of(const SoundWindow& window, const std::vector<uint32_t>& bands) {
  std::vector<double> strongest(bands.size());
  for (const std::vector<float>& channel : window.by_channel) {
    if (channel.empty()) continue;
    const std::vector<double> amplitudes = toolbox::band_amplitudes(channel, window.rate, bands);
    for (size_t i = 0; i < bands.size(); ++i) {
      strongest[i] = std::max(strongest[i], amplitudes[i]);
    }
  }
  return strongest;
}

}  // namespace

TOOLBOX_CALL ComponentResult MediaSetSoundBalance(MediaHandler mh, SInt16 balance) {
  return guarded_sound(mh,
                       [&](auto& handler) { return set_sound_balance(handler.media(), balance); });
}

TOOLBOX_CALL ComponentResult MediaGetSoundBalance(MediaHandler mh, SInt16* balance) {
  return guarded_sound(mh, [&](auto& handler) -> Status {
    TRY_ASSIGN(const int16_t found, sound_balance(handler.media()));
    return give(found, balance);
  });
}

TOOLBOX_CALL ComponentResult MediaGetEffectiveSoundBalance(MediaHandler mh, SInt16* balance) {
  return MediaGetSoundBalance(mh, balance);
}

TOOLBOX_CALL ComponentResult MediaGetEffectiveVolume(MediaHandler mh, SInt16* volume) {
  return guarded_sound(
      mh, [&](auto& handler) { return give(effective_volume(handler.media()), volume); });
}

TOOLBOX_CALL ComponentResult MediaSetSoundEqualizerBands(MediaHandler mh,
                                                         MediaEQSpectrumBandsRecord* spectrumInfo) {
  return guarded_sound(mh, [&](auto& handler) -> Status {
    if (spectrumInfo == nullptr || spectrumInfo->count < 1 || spectrumInfo->frequency == nullptr) {
      return {paramErr, "an equalizer has one band or more"};
    }
    std::vector<uint32_t> bands(static_cast<size_t>(spectrumInfo->count));
    // The caller's block need not be aligned.
    std::memcpy(bands.data(), spectrumInfo->frequency, bands.size() * sizeof bands[0]);
    handler.sound().bands = std::move(bands);
    return {};
  });
}

TOOLBOX_CALL ComponentResult MediaGetSoundEqualizerBandLevels(MediaHandler mh, UInt8* bandLevels) {
  return guarded_sound(mh, [&](auto& handler) -> Status {
    const SoundControls& sound = handler.sound();
    if (bandLevels == nullptr || sound.bands.empty()) return {};
    SoundWindow window;
    if (sound.is_metered) {
      TRY_ASSIGN(window, sound_now(handler.media()));
    }
    const std::vector<double> amplitudes = amplitudes_of(window, sound.bands);
    std::transform(amplitudes.begin(), amplitudes.end(), bandLevels, toolbox::level_byte);
    return {};
  });
}

TOOLBOX_CALL ComponentResult MediaSetSoundLevelMeteringEnabled(MediaHandler mh, Boolean enabled) {
  return guarded_sound(mh, [&](auto& handler) -> Status {
    handler.sound().is_metered = enabled != 0;
    return {};
  });
}

TOOLBOX_CALL ComponentResult MediaGetSoundLevelMeteringEnabled(MediaHandler mh, Boolean* enabled) {
  return guarded_sound(mh,
                       [&](auto& handler) { return give(handler.sound().is_metered, enabled); });
}

TOOLBOX_CALL ComponentResult MediaGetSoundLevelMeterInfo(MediaHandler mh,
                                                         LevelMeterInfo* levelInfo) {
  return guarded_sound(mh, [&](auto& handler) -> Status {
    LevelMeterInfo info{};
    if (handler.sound().is_metered) {
      TRY_ASSIGN(const SoundWindow window, sound_now(handler.media()));
      info.numChannels = static_cast<SInt16>(std::min(window.channels, 2u));
      info.leftMeter = toolbox::level_byte(window.peak(0));
      info.rightMeter = toolbox::level_byte(window.peak(1));
    }
    return give(info, levelInfo);
  });
}

TOOLBOX_CALL ComponentResult MediaSetSoundBassAndTreble(MediaHandler mh, SInt16 bass,
                                                        SInt16 treble) {
  return guarded_sound(mh, [&](auto& handler) -> Status {
    handler.sound().bass = bass;
    handler.sound().treble = treble;
    return {};
  });
}

TOOLBOX_CALL ComponentResult MediaGetSoundBassAndTreble(MediaHandler mh, SInt16* bass,
                                                        SInt16* treble) {
  return guarded_sound(mh, [&](auto& handler) -> Status {
    TRY(give(handler.sound().bass, bass));
    return give(handler.sound().treble, treble);
  });
}

TOOLBOX_CALL ComponentResult MediaSetSoundOutputComponent(MediaHandler mh,
                                                          Component outputComponent) {
  return guarded_sound(mh, [&](auto& handler) -> Status {
    handler.sound().output_component = reinterpret_cast<uintptr_t>(outputComponent);
    return {};
  });
}

TOOLBOX_CALL ComponentResult MediaGetSoundOutputComponent(MediaHandler mh,
                                                          Component* outputComponent) {
  return guarded_sound(mh, [&](auto& handler) {
    return give(reinterpret_cast<Component>(handler.sound().output_component), outputComponent);
  });
}

TOOLBOX_CALL OSErr ToolboxMeasureTrackSound(Track track, TimeValue from, TimeValue until,
                                            TimeValue every, ToolboxSoundLevelProc proc,
                                            void* context) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    if (proc == nullptr) return {paramErr, "somebody has to take the levels"};
    if (every < 1) return {paramErr, "an interval lasts a unit of the movie's time scale or more"};
    const auto take = [&](int64_t start, std::span<const float> peaks,
                          std::span<const float> means) -> Status {
      const OSErr answer =
          proc(start, static_cast<uint32_t>(peaks.size()), peaks.data(), means.data(), context);
      return answer == noErr ? Status() : Status(answer, "the levels were not taken");
    };
    return measure_sound(*found, {from, until, every}, take);
  });
}

TOOLBOX_CALL Boolean ToolboxCanMeasureSound(Track track) {
  return guarded_value<Boolean>(0, [&]() -> Result<Boolean> {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    TRY_ASSIGN(const bool can, can_measure_sound(*found));
    return Boolean{can};
  });
}
