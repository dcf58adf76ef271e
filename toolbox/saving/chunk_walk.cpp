#include "saving/chunk_walk.h"

#include "movie/sound_packets.h"

namespace toolbox {

Result<uint64_t> chunk_bytes(const Media& media, const SampleTable& table,
                             const SampleChunk& chunk) {
  TRY_ASSIGN(const std::optional<SoundPacket> packet,
             frame_counted_packet(media, table.tables(), chunk.description));
  if (!packet) return table.bytes_between(chunk.first_sample, chunk.end_sample);
  const uint64_t frames = chunk.end_sample - chunk.first_sample;
  return (frames + packet->frames - 1) / packet->frames * packet->bytes;
}

}  // namespace toolbox
