#include "handlers/sound_format.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "base/big_endian.h"
#include "base/four_cc.h"
#include "metadata/child_atoms.h"

namespace toolbox {

namespace {

using Kind = SoundFormat::Kind;

// Places in a sound description, from its start.
constexpr size_t kFormatAt = 4;
constexpr size_t kVersionAt = 16;
constexpr size_t kChannelsAt = 24;
constexpr size_t kBitsAt = 26;
constexpr size_t kWideChannelsAt = 48;  // version 2, as all below
constexpr size_t kWideBitsAt = 56;
constexpr size_t kFlagsAt = 60;
constexpr size_t kPacketBytesAt = 64;
constexpr size_t kBytesOfVersion[] = {36, 52, 72};

enum LinearFlags : uint32_t {
  kIsFloat = 1,
  kIsBigEndian = 2,
  kIsSigned = 4,
  kIsPacked = 8,
  kIsAlignedHigh = 0x10,
  kIsApart = 0x20,  // channel behind channel
};

constexpr uint32_t kIma4Frames = 64;
constexpr uint32_t kIma4Bytes = 34;  // of one channel

uint16_t number16(ByteView bytes, size_t at) { return load_big_endian<uint16_t>(&bytes[at]); }
uint32_t number32(ByteView bytes, size_t at) { return load_big_endian<uint32_t>(&bytes[at]); }

// Some formats say in an atom of their own, inside `wave`, that their numbers are little-endian.
bool says_little_endian(ByteView description) {
  const uint16_t version = number16(description, kVersionAt);
  const size_t begin = version <= 2 ? kBytesOfVersion[version] : kBytesOfVersion[0];
  if (description.size() < begin) return false;
  ByteView rest = description.subspan(begin);
  for (ChildAtom child; take_child(rest, child);) {
    ByteView inside = child.type == four_cc("wave") ? child.payload : ByteView();
    for (ChildAtom entry; take_child(inside, entry);) {
      if (entry.type != four_cc("enda") || entry.payload.size() < 2) continue;
      return load_big_endian<uint16_t>(entry.payload.data()) != 0;
    }
  }
  return false;
}

SoundFormat plain(Kind kind, uint8_t bytes, bool is_big_endian, uint32_t channels) {
  SoundFormat format;
  format.kind = kind;
  format.bytes_per_value = bytes;
  format.bits = static_cast<uint8_t>(bytes * 8);
  format.is_big_endian = is_big_endian;
  format.channels = channels;
  return format;
}

std::optional<SoundFormat> by_bits(FourCC code, uint16_t bits, uint32_t channels) {
  if (bits == 0 || bits > 32) return {};
  const auto bytes = static_cast<uint8_t>((bits + 7) / 8);
  // 8 bits are signed in `twos` and `sowt` and count from 128 in the others.
  const bool is_offset = bytes == 1 && code != four_cc("twos") && code != four_cc("sowt");
  return plain(is_offset ? Kind::kOffsetBinary : Kind::kInteger, bytes, code != four_cc("sowt"),
               channels);
}

std::optional<SoundFormat> linear(ByteView description, uint32_t channels) {
  if (number16(description, kVersionAt) != 2 || description.size() < kBytesOfVersion[2]) {
    return by_bits(four_cc("lpcm"), number16(description, kBitsAt), channels);
  }
  const uint32_t flags = number32(description, kFlagsAt);
  const uint32_t bits = number32(description, kWideBitsAt);
  const uint32_t packet = number32(description, kPacketBytesAt);
  if (channels == 0 || bits == 0 || bits > 64 || (flags & kIsApart) != 0) return {};
  const uint32_t bytes = packet != 0 ? packet / channels : (bits + 7) / 8;
  if (bytes == 0 || bytes > 8 || bits > bytes * 8 || packet % channels != 0) return {};
  const bool is_float = (flags & kIsFloat) != 0;
  if (is_float && !((bits == 32 || bits == 64) && bits == bytes * 8)) return {};
  const Kind kind = is_float                   ? Kind::kFloat
                    : (flags & kIsSigned) != 0 ? Kind::kInteger
                                               : Kind::kOffsetBinary;
  SoundFormat format =
      plain(kind, static_cast<uint8_t>(bytes), (flags & kIsBigEndian) != 0, channels);
  format.bits = static_cast<uint8_t>(bits);
  format.is_aligned_high = (flags & kIsAlignedHigh) != 0 || bits == bytes * 8;
  return format;
}

/// The bits of a value, the highest that counts on top of 64.
uint64_t aligned(const SoundFormat& format, const uint8_t* at) {
  uint64_t bits = 0;
  for (uint32_t i = 0; i < format.bytes_per_value; ++i) {
    bits = bits << 8 | at[format.is_big_endian ? i : format.bytes_per_value - 1u - i];
  }
  const uint32_t used = format.is_aligned_high ? format.bytes_per_value * 8u : format.bits;
  return bits << (64 - used);
}

constexpr float kFullScale = 9223372036854775808.0F;  // 2^63

float number_or_zero(double value) {
  return std::isfinite(value) ? static_cast<float>(std::clamp(value, -1e6, 1e6)) : 0.0F;
}

float from_mu_law(uint8_t code) {
  const uint8_t flipped = ~code;
  const int magnitude = (((flipped & 15) << 3) + 132) << (flipped >> 4 & 7);
  const int value = magnitude - 132;
  return static_cast<float>((flipped & 128) != 0 ? -value : value) / 32768.0F;
}

float from_a_law(uint8_t code) {
  const int flipped = code ^ 0x55;
  const int segment = flipped >> 4 & 7;
  int value = (flipped & 15) * 16 + 8;
  if (segment > 0) value = (value + 256) << (segment - 1);
  return static_cast<float>((flipped & 128) != 0 ? value : -value) / 32768.0F;
}

float value_at(const SoundFormat& format, const uint8_t* at) {
  switch (format.kind) {
    case Kind::kInteger:
      return static_cast<float>(static_cast<int64_t>(aligned(format, at))) / kFullScale;
    case Kind::kOffsetBinary:
      return static_cast<float>(static_cast<int64_t>(aligned(format, at) ^ (uint64_t{1} << 63))) /
             kFullScale;
    case Kind::kFloat: {
      const uint64_t bits = aligned(format, at);
      return format.bytes_per_value == 4
                 ? number_or_zero(std::bit_cast<float>(static_cast<uint32_t>(bits >> 32)))
                 : number_or_zero(std::bit_cast<double>(bits));
    }
    case Kind::kMuLaw:
      return from_mu_law(*at);
    case Kind::kALaw:
      return from_a_law(*at);
    case Kind::kIma4:
      break;
  }
  return 0;
}

constexpr int kIma4Steps[89] = {
    7,     8,     9,     10,    11,    12,    13,    14,    16,    17,    19,   21,    23,
    25,    28,    31,    34,    37,    41,    45,    50,    55,    60,    66,   73,    80,
    88,    97,    107,   118,   130,   143,   157,   173,   190,   209,   230,  253,   279,
    307,   337,   371,   408,   449,   494,   544,   598,   658,   724,   796,  876,   963,
    1060,  1166,  1282,  1411,  1552,  1707,  1878,  2066,  2272,  2499,  2749, 3024,  3327,
    3660,  4026,  4428,  4871,  5358,  5894,  6484,  7132,  7845,  8630,  9493, 10442, 11487,
    12635, 13899, 15289, 16818, 18500, 20350, 22385, 24623, 27086, 29794, 32767};
constexpr int kIma4Moves[8] = {-1, -1, -1, -1, 2, 4, 6, 8};

/// One channel of one packet: where it begins (nine upper bits) and its step (seven lower bits),
/// then half a byte a frame, the lower half first.
void decode_ima4(const uint8_t* packet, uint32_t stride, float* out) {
  const auto head = load_big_endian<uint16_t>(packet);
  int value = static_cast<int16_t>(head & 0xFF80);
  int step = std::min(head & 0x7F, 88);
  for (uint32_t i = 0; i < kIma4Frames; ++i) {
    const int code = packet[2 + i / 2] >> (i % 2 * 4) & 15;
    const int size = kIma4Steps[step];
    int change = size >> 3;
    if ((code & 4) != 0) change += size;
    if ((code & 2) != 0) change += size >> 1;
    if ((code & 1) != 0) change += size >> 2;
    value = std::clamp((code & 8) != 0 ? value - change : value + change, -32768, 32767);
    step = std::clamp(step + kIma4Moves[code & 7], 0, 88);
    out[size_t{i} * stride] = static_cast<float>(value) / 32768.0F;
  }
}

}  // namespace

uint32_t SoundFormat::packet_bytes() const {
  return channels * (kind == Kind::kIma4 ? kIma4Bytes : bytes_per_value);
}

uint32_t SoundFormat::packet_frames() const { return kind == Kind::kIma4 ? kIma4Frames : 1; }

uint32_t sound_channels_of(ByteView description) {
  if (description.size() < kBytesOfVersion[0]) return 0;
  if (number16(description, kVersionAt) != 2) return number16(description, kChannelsAt);
  return description.size() < kBytesOfVersion[2] ? 0 : number32(description, kWideChannelsAt);
}

std::optional<SoundFormat> sound_format_of(ByteView description) {
  const uint32_t channels = sound_channels_of(description);
  if (channels == 0 || channels > SoundFormat::kMostChannels) return {};
  const FourCC code = number32(description, kFormatAt);
  const auto in_order_said = [&](Kind kind, uint8_t bytes) {
    return plain(kind, bytes, !says_little_endian(description), channels);
  };
  switch (code) {
    case 0:
    case four_cc("NONE"):
    case four_cc("raw "):
    case four_cc("twos"):
    case four_cc("sowt"):
      return by_bits(code, number16(description, kBitsAt), channels);
    case four_cc("in24"):
      return in_order_said(Kind::kInteger, 3);
    case four_cc("in32"):
      return in_order_said(Kind::kInteger, 4);
    case four_cc("fl32"):
      return in_order_said(Kind::kFloat, 4);
    case four_cc("fl64"):
      return in_order_said(Kind::kFloat, 8);
    case four_cc("lpcm"):
      return linear(description, channels);
    case four_cc("ulaw"):
      return plain(Kind::kMuLaw, 1, true, channels);
    case four_cc("alaw"):
      return plain(Kind::kALaw, 1, true, channels);
    case four_cc("ima4"):
      return plain(Kind::kIma4, 1, true, channels);
    default:
      return {};
  }
}

void decode_sound(const SoundFormat& format, ByteView packets, std::vector<float>& frames) {
  const size_t count = packets.size() / format.packet_bytes();
  const size_t begin = frames.size();
  frames.resize(begin + count * format.packet_frames() * format.channels);
  float* out = frames.data() + begin;
  const uint8_t* in = packets.data();
  if (format.kind == Kind::kIma4) {
    for (size_t packet = 0; packet < count; ++packet) {
      for (uint32_t channel = 0; channel < format.channels; ++channel, in += kIma4Bytes) {
        decode_ima4(in, format.channels, out + channel);
      }
      out += size_t{kIma4Frames} * format.channels;
    }
    return;
  }
  for (size_t i = 0; i < count * format.channels; ++i, in += format.bytes_per_value) {
    out[i] = value_at(format, in);
  }
}

}  // namespace toolbox
