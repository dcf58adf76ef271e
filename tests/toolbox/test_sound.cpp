// Sound that is decoded without a codec, and its spectrum.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <numbers>

#include "atoms/atom_writer.h"
#include "base/big_endian.h"
#include "handlers/sound_format.h"
#include "handlers/spectrum.h"

namespace toolbox {
namespace {

Bytes description(FourCC format, uint16_t version, uint16_t bits, const Bytes& more = {}) {
  Bytes bytes(version == 2 ? 72 : version == 1 ? 52 : 36);
  store_big_endian(&bytes[4], format);
  store_big_endian(&bytes[16], version);
  store_big_endian(&bytes[24], uint16_t{1});
  store_big_endian(&bytes[26], bits);
  bytes.insert(bytes.end(), more.begin(), more.end());
  store_big_endian(bytes.data(), static_cast<uint32_t>(bytes.size()));
  return bytes;
}

Bytes linear(uint32_t flags, uint32_t bits, uint32_t packet, uint32_t channels = 1) {
  Bytes bytes = description(four_cc("lpcm"), 2, 16);
  store_big_endian(&bytes[48], channels);
  store_big_endian(&bytes[56], bits);
  store_big_endian(&bytes[60], flags);
  store_big_endian(&bytes[64], packet);
  return bytes;
}

const Bytes kLittleEndian = {0, 0, 0,  18,  'w', 'a', 'v', 'e', 0,
                             0, 0, 10, 'e', 'n', 'd', 'a', 0,   1};

std::vector<float> decoded(const Bytes& description, const Bytes& bytes) {
  const std::optional<SoundFormat> format = sound_format_of(description);
  std::vector<float> frames;
  if (format) decode_sound(*format, bytes, frames);
  return frames;
}

TEST(SoundFormat, MinusAHalfIsTheSameInEveryForm) {
  const struct {
    const char* name;
    Bytes description;
    Bytes value;
  } cases[] = {
      {"raw, from 128", description(four_cc("raw "), 0, 8), {0x40}},
      {"twos, 8 bits", description(four_cc("twos"), 0, 8), {0xC0}},
      {"twos", description(four_cc("twos"), 0, 16), {0xC0, 0}},
      {"sowt", description(four_cc("sowt"), 0, 16), {0, 0xC0}},
      {"NONE, 16 bits", description(four_cc("NONE"), 0, 16), {0xC0, 0}},
      {"in24", description(four_cc("in24"), 1, 16), {0xC0, 0, 0}},
      {"in24 little", description(four_cc("in24"), 1, 16, kLittleEndian), {0, 0, 0xC0}},
      {"in32", description(four_cc("in32"), 1, 16), {0xC0, 0, 0, 0}},
      {"fl32", description(four_cc("fl32"), 1, 16), {0xBF, 0, 0, 0}},
      {"fl32 little", description(four_cc("fl32"), 1, 16, kLittleEndian), {0, 0, 0, 0xBF}},
      {"fl64", description(four_cc("fl64"), 1, 16), {0xBF, 0xE0, 0, 0, 0, 0, 0, 0}},
      {"lpcm, signed big", linear(2 | 4 | 8, 16, 2), {0xC0, 0}},
      {"lpcm, unsigned little", linear(8, 16, 2), {0, 0x40}},
      {"lpcm, float little", linear(1 | 8, 32, 4), {0, 0, 0, 0xBF}},
      {"lpcm, 20 bits above", linear(2 | 4 | 0x10, 20, 3), {0xC0, 0, 0}},
      {"lpcm, 20 bits below", linear(2 | 4, 20, 3), {0x0C, 0, 0}},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.name);
    Bytes twice = one.value;
    twice.insert(twice.end(), one.value.begin(), one.value.end());
    twice.push_back(0);  // the rest of a packet
    if (one.value.size() == 1) twice.pop_back();
    EXPECT_EQ(decoded(one.description, twice), (std::vector{-0.5F, -0.5F}));
  }
  // The telephone laws: the loudest, and their silences.
  const std::vector<float> mu = decoded(description(four_cc("ulaw"), 0, 16), {0x00, 0x80, 0xFF});
  EXPECT_EQ(mu, (std::vector{-32124 / 32768.0F, 32124 / 32768.0F, 0.0F}));
  const std::vector<float> a = decoded(description(four_cc("alaw"), 0, 16), {0x2A, 0xAA, 0xD5});
  EXPECT_EQ(a, (std::vector{-32256 / 32768.0F, 32256 / 32768.0F, 8 / 32768.0F}));
}

TEST(SoundFormat, WhatCannotBeIsNotDecoded) {
  Bytes no_channels = description(four_cc("twos"), 0, 16);
  store_big_endian(&no_channels[24], uint16_t{0});
  const Bytes cases[] = {no_channels,
                         description(four_cc("twos"), 0, 0),
                         description(four_cc("twos"), 0, 33),
                         description(four_cc("mp4a"), 0, 16),
                         linear(2 | 4 | 0x20, 16, 2),  // channel behind channel
                         linear(1, 24, 3),             // no such floating point
                         linear(4, 65, 9),             // too wide
                         linear(4, 16, 3, 2),          // packets that are no frames
                         linear(4, 16, 2, 0),
                         linear(4, 16, 4, 0xFFFFFFFF),
                         Bytes(20)};
  for (const Bytes& each : cases) EXPECT_FALSE(sound_format_of(each));
  // What is no number, and infinities, count as silence.
  EXPECT_EQ(decoded(description(four_cc("fl32"), 1, 16), {0x7F, 0xC0, 0, 0, 0xFF, 0x80, 0, 0}),
            (std::vector{0.0F, 0.0F}));
}

TEST(Spectrum, BandsTogetherHoldThePowerOfWhatLiesBetweenThem) {
  std::vector<float> sound(4096);
  for (size_t i = 0; i < sound.size(); ++i) {
    const double time = static_cast<double>(i) / 48000;
    sound[i] = static_cast<float>(0.3 * std::sin(2 * std::numbers::pi * 440 * time) +
                                  0.4 * std::sin(2 * std::numbers::pi * 700 * time));
  }
  const auto hertz = [](uint32_t frequency) { return frequency << 16; };
  const std::vector<uint32_t> apart = {hertz(440), hertz(700)};
  const std::vector<double> two = band_amplitudes(sound, 48000, apart);
  EXPECT_NEAR(two[0], 0.3, 0.01);
  EXPECT_NEAR(two[1], 0.4, 0.01);
  const std::vector<uint32_t> together = {hertz(600), hertz(4800)};
  EXPECT_NEAR(band_amplitudes(sound, 48000, together)[0], 0.5, 0.01);
  EXPECT_EQ(level_byte(0.5), 128);
  EXPECT_EQ(level_byte(7), 255);
  EXPECT_TRUE(band_amplitudes({}, 48000, together)[0] == 0);
}

}  // namespace
}  // namespace toolbox
