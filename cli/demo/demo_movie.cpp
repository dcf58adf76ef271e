#include "demo/demo_movie.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "file/movie_builder.h"

namespace cli {

namespace {

using toolbox::Bytes;

constexpr uint16_t kWidth = 160;
constexpr uint16_t kHeight = 120;
constexpr uint32_t kTimeScale = 600;
constexpr uint32_t kPictures = 20;
constexpr uint32_t kPictureTicks = 300;
constexpr uint32_t kSoundRate = 8000;
constexpr uint32_t kSoundSeconds = 10;
constexpr uint8_t kLabelRate = 30;  // frames a second that time codes count
constexpr uint32_t kWrapsAtMidnight = 2;
constexpr uint64_t kMade = 3850070400;  // 2026-01-01, seconds since 1904

/// Eight colour bars, moved by a quarter of a bar from picture to picture.
Bytes pictures() {
  constexpr std::array<uint32_t, 8> kBars = {0xFFFFFF, 0xFFFF00, 0x00FFFF, 0x00FF00,
                                             0xFF00FF, 0xFF0000, 0x0000FF, 0x000000};
  constexpr uint32_t kBarWidth = kWidth / kBars.size();
  Bytes bytes;
  bytes.reserve(size_t{kPictures} * kWidth * kHeight * 3);
  for (uint32_t picture = 0; picture < kPictures; ++picture) {
    for (uint32_t pixel = 0; pixel < uint32_t{kWidth} * kHeight; ++pixel) {
      const uint32_t x = pixel % kWidth + picture * kBarWidth / 4;
      const uint32_t color = kBars[x / kBarWidth % kBars.size()];
      for (const int shift : {16, 8, 0}) bytes.push_back(static_cast<uint8_t>(color >> shift));
    }
  }
  return bytes;
}

/// One tone a second up a major scale, softly begun and ended, as 16-bit big-endian frames.
/// Triangle waves in whole numbers, so that the bytes are the same on every machine.
Bytes tones() {
  constexpr std::array<int, kSoundSeconds> kHertz = {262, 294, 330, 349, 392,
                                                     440, 494, 523, 587, 659};
  constexpr int kRate = kSoundRate;
  constexpr int kFade = kRate / 10;
  constexpr int kLoudest = 8000;
  Bytes bytes;
  bytes.reserve(size_t{kSoundSeconds} * kSoundRate * 2);
  for (const int hertz : kHertz) {
    for (int frame = 0; frame < kRate; ++frame) {
      const int phase = hertz * frame % kRate;                   // of one wave, 0 up to kRate
      const int wave = std::abs(2 * phase - kRate) * 2 - kRate;  // -kRate to kRate
      const int fade = std::min({frame, kRate - frame, kFade});  // 0 to kFade
      const int value = wave * kLoudest / kRate * fade / kFade;
      bytes.push_back(static_cast<uint8_t>(static_cast<uint32_t>(value) >> 8));
      bytes.push_back(static_cast<uint8_t>(value));
    }
  }
  return bytes;
}

}  // namespace

toolbox::Result<Bytes> demonstration_movie() {
  using toolbox::TrackHeaderAtom;

  toolbox::BuiltTrack video = toolbox::video_track(kWidth, kHeight, kPictures, kPictureTicks);
  video.data = pictures();
  video.references = {{toolbox::four_cc("chap"), {3}}, {toolbox::four_cc("tmcd"), {4}}};

  toolbox::BuiltTrack sound = toolbox::sound_track(1, kSoundRate * kSoundSeconds, kSoundRate);
  sound.data = tones();

  toolbox::BuiltTrack chapters =
      toolbox::text_track({{"Beginning", 1800}, {"Middle", 2400}, {"End", 1800}}, kTimeScale);
  chapters.header.flags &= ~uint32_t{TrackHeaderAtom::kEnabled};
  chapters.header.width = kWidth << 16;
  chapters.header.height = 20 << 16;

  constexpr uint32_t kOneHour = 3600 * kLabelRate;
  toolbox::BuiltTrack timecode =
      toolbox::timecode_track(kOneHour, kPictures * kPictureTicks, kTimeScale,
                              kTimeScale / kLabelRate, kLabelRate, kWrapsAtMidnight);
  timecode.header.flags &= ~uint32_t{TrackHeaderAtom::kEnabled};
  timecode.header.width = kWidth << 16;
  timecode.header.height = 20 << 16;

  toolbox::BuiltMovie movie;
  movie.place = toolbox::BuiltMovie::MoviePlace::kBeforeMedia;
  movie.header.time_scale = kTimeScale;
  movie.tracks = {std::move(video), std::move(sound), std::move(chapters), std::move(timecode)};
  movie.header.creation_time = movie.header.modification_time = kMade;
  for (toolbox::BuiltTrack& track : movie.tracks) {
    track.header.creation_time = track.header.modification_time = kMade;
    track.media.creation_time = track.media.modification_time = kMade;
  }
  return toolbox::build_movie(movie);
}

}  // namespace cli
