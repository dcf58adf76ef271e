#include "integration/sound_movies.h"

#include <cmath>
#include <numbers>

#include "base/big_endian.h"

namespace krz::test {
namespace {

using toolbox::BuiltMovie;
using toolbox::BuiltTrack;
using toolbox::Bytes;
using toolbox::four_cc;
using toolbox::store_big_endian;

constexpr uint32_t kRate = 48000;

Bytes tone(uint32_t frames, double left, double right) {
  Bytes data(size_t{frames} * 4);
  for (uint32_t i = 0; i < frames; ++i) {
    const double wave = std::sin(2 * std::numbers::pi * 1000 * i / kRate) * 32768;
    store_big_endian(&data[size_t{i} * 4], static_cast<int16_t>(std::lround(wave * left)));
    store_big_endian(&data[size_t{i} * 4 + 2], static_cast<int16_t>(std::lround(wave * right)));
  }
  return data;
}

Bytes numbers(std::initializer_list<uint32_t> values) {
  Bytes bytes(values.size() * 4);
  size_t at = 0;
  for (const uint32_t value : values) store_big_endian(&bytes[4 * at++], value);
  return bytes;
}

/// Puts atoms behind a track's description.
void extend(BuiltTrack& track, const Bytes& atoms) {
  Bytes& description = track.descriptions[0];
  description.insert(description.end(), atoms.begin(), atoms.end());
  store_big_endian(description.data(), static_cast<uint32_t>(description.size()));
}

Bytes clean_aperture(uint32_t width, uint32_t width_over, uint32_t height, uint32_t height_over) {
  return toolbox::atom_bytes(four_cc("clap"),
                             numbers({width, width_over, height, height_over, 0, 1, 0, 1}));
}

Bytes pixels(uint32_t horizontal, uint32_t vertical) {
  return toolbox::atom_bytes(four_cc("pasp"), numbers({horizontal, vertical}));
}

BuiltTrack pictures(uint16_t width, uint16_t height, std::initializer_list<Bytes> extensions) {
  BuiltTrack track = toolbox::video_track(width, height, 2, 300);
  for (const Bytes& each : extensions) extend(track, each);
  return track;
}

}  // namespace

BuiltMovie tone_movie() {
  BuiltTrack track = toolbox::sound_track(2, kRate + kRate / 2, kRate);
  track.data = tone(kRate, 0.4, 0.2);
  track.edits.emplace();
  track.edits->entries = {{300, -1, toolbox::kFixedOne}, {900, 0, toolbox::kFixedOne}};
  BuiltMovie movie;
  movie.tracks = {toolbox::video_track(16, 16, 2, 600), track};
  return movie;
}

BuiltMovie broken_sound_movie() {
  BuiltTrack no_channels = toolbox::sound_track(1, 4800, kRate);
  store_big_endian(&no_channels.descriptions[0][24], uint16_t{0});
  BuiltTrack cut = toolbox::sound_track(1, 4800, kRate);
  cut.stated_sample_size = 4000;
  BuiltTrack unknown = toolbox::sound_track(1, 4800, kRate);
  store_big_endian(&unknown.descriptions[0][4], four_cc("QDM2"));
  BuiltTrack fast = toolbox::sound_track(1, 4800, kRate);
  fast.media.time_scale = UINT32_MAX;
  BuiltTrack timeless = toolbox::sound_track(1, 4800, kRate);
  timeless.durations = toolbox::Rows::of({{4799, 0, 0}, {1, 4800, 0}});
  BuiltTrack short_description = toolbox::sound_track(1, 4800, kRate);
  short_description.descriptions[0].resize(20);
  store_big_endian(short_description.descriptions[0].data(), uint32_t{20});
  BuiltTrack bad_layout = toolbox::sound_track(1, 4800, kRate);
  Bytes wave = toolbox::atom_bytes(
      four_cc("wave"),
      toolbox::atom_bytes(four_cc("chan"), numbers({0, 0, 0, 0x80000000, 1, 2, 3})));
  store_big_endian(wave.data(), uint32_t{0x7FFFFFFF});
  extend(bad_layout, wave);
  BuiltMovie movie;
  movie.tracks = {no_channels, cut, unknown, fast, timeless, short_description, bad_layout};
  return movie;
}

BuiltMovie anamorphic_movie() {
  BuiltMovie movie;
  movie.tracks = {pictures(720, 480, {pixels(10, 11)}),
                  pictures(720, 576, {pixels(59, 54), clean_aperture(41472, 59, 576, 1)}),
                  pictures(1440, 1080, {clean_aperture(1416, 1, 1062, 1), pixels(4, 3)}),
                  pictures(640, 480, {}), toolbox::text_track({{"text", 600}})};
  return movie;
}

BuiltMovie bad_aperture_movie() {
  BuiltMovie movie;
  movie.tracks = {
      pictures(64, 48, {clean_aperture(60, 0, 40, 1)}),
      pictures(64, 48, {clean_aperture(65, 1, 48, 1)}),
      pictures(64, 48, {clean_aperture(60, 1, 0xFFFFFFF0, 1)}),
      pictures(64, 48, {toolbox::atom_bytes(four_cc("clap"), numbers({60, 1, 40}))}),
      pictures(64, 48, {pixels(0xFFFFFFFF, 1)}),
      pictures(64, 48, {toolbox::atom_bytes(four_cc("pasp"), numbers({4}))}),
      pictures(64, 48, {pixels(0, 0)}),
  };
  return movie;
}

}  // namespace krz::test
