#include "movie/sound_packets.h"

#include <algorithm>
#include <iterator>

#include "atoms/atom_type.h"
#include "base/big_endian.h"
#include "movie/media.h"

namespace toolbox {

namespace {

// Places in a sound description, from its start.
constexpr size_t kFormatAt = 4;
constexpr size_t kVersionAt = 16;
constexpr size_t kChannelsAt = 24;
constexpr size_t kBitsAt = 26;
constexpr size_t kFramesInPacketAt = 36;  // version 1
constexpr size_t kBytesInFrameAt = 44;    // version 1: of a packet, all channels
constexpr size_t kConstantBytesAt = 64;   // version 2
constexpr size_t kConstantFramesAt = 68;  // version 2
constexpr size_t kBytesOfVersion[] = {36, 52, 72};

/// What a code makes of one channel.
struct FixedRatio {
  FourCC format;
  uint32_t frames;
  uint32_t bytes;
};
constexpr FixedRatio kRatios[] = {
    {four_cc("MAC3"), 6, 2}, {four_cc("MAC6"), 6, 1}, {four_cc("ima4"), 64, 34},
    {four_cc("ulaw"), 1, 1}, {four_cc("alaw"), 1, 1}, {four_cc("GSM "), 160, 33},
    {four_cc("in24"), 1, 3}, {four_cc("in32"), 1, 4}, {four_cc("fl32"), 1, 4},
    {four_cc("fl64"), 1, 8},
};

bool is_plain(FourCC format) {
  constexpr FourCC kPlain[] = {four_cc("twos"), four_cc("sowt"), four_cc("raw "),
                               four_cc("NONE"), four_cc("lpcm"), 0};
  return std::find(std::begin(kPlain), std::end(kPlain), format) != std::end(kPlain);
}

}  // namespace

std::optional<SoundPacket> sound_packet_of(ByteView description) {
  if (description.size() < kBytesOfVersion[0]) return {};
  const auto number16 = [&](size_t at) { return load_big_endian<uint16_t>(&description[at]); };
  const auto number32 = [&](size_t at) { return load_big_endian<uint32_t>(&description[at]); };
  const uint16_t version = number16(kVersionAt);
  if (version > 2 || description.size() < kBytesOfVersion[version]) return {};

  SoundPacket packet;
  if (version == 2) {
    packet = {number32(kConstantFramesAt), number32(kConstantBytesAt)};
  } else if (version == 1) {
    packet = {number32(kFramesInPacketAt), number32(kBytesInFrameAt)};
  } else {
    const uint32_t channels = number16(kChannelsAt);
    const FourCC format = number32(kFormatAt);
    const auto* ratio = std::find_if(std::begin(kRatios), std::end(kRatios),
                                     [&](const FixedRatio& each) { return each.format == format; });
    if (ratio != std::end(kRatios)) {
      packet = {ratio->frames, ratio->bytes * channels};
    } else if (is_plain(format)) {
      packet = {1, (number16(kBitsAt) + 7u) / 8 * channels};
    }
  }
  // Numbers beyond these are damage, and would overflow where packets are counted.
  if (packet.frames == 0 || packet.bytes == 0) return {};
  if (packet.frames > UINT16_MAX || packet.bytes > (1u << 24)) return {};
  return packet;
}

Result<std::optional<SoundPacket>> frame_counted_packet(const Media& media,
                                                        const SampleTables& tables,
                                                        uint32_t description) {
  if (media.type() != four_cc("soun") || tables.sizes.uniform_size == 0) {
    return std::optional<SoundPacket>{};
  }
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, media.descriptions());
  if (description == 0 || description > descriptions->size()) return std::optional<SoundPacket>{};
  const std::optional<SoundPacket> packet = sound_packet_of((*descriptions)[description - 1]);
  if (!packet || tables.sizes.uniform_size >= packet->bytes) return std::optional<SoundPacket>{};
  return packet;
}

}  // namespace toolbox
