// How the bytes of sound lie whose table counts frames instead of samples with a size.
#pragma once

#include <optional>

#include "base/bytes.h"
#include "movie/sample_table.h"

namespace toolbox {

class Media;

/// The smallest run of bytes that can be decoded: of uncompressed sound one frame.
struct SoundPacket {
  uint32_t frames = 1;
  uint32_t bytes = 0;  // all channels
};

/// The packets of a sound description (whole entry); nothing when it does not say, or when they
/// differ in size.
std::optional<SoundPacket> sound_packet_of(ByteView description);

/// The packets of a media whose samples are the frames of sound and whose size table says nothing
/// of use: old files state a size of 1 byte. `description` from 1. Nothing for any other media,
/// where every sample has the size that the table states. Fails: as Media::descriptions().
Result<std::optional<SoundPacket>> frame_counted_packet(const Media& media,
                                                        const SampleTables& tables,
                                                        uint32_t description);

}  // namespace toolbox
