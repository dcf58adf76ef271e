// Walks the samples of a media in pieces that are alike in everything and whose bytes lie one
// behind the other.
#pragma once

#include "movie/growing_tables.h"
#include "movie/sound_packets.h"

namespace toolbox {

class Media;

/// Samples of one chunk that are alike. What the table counts and what has a size of its own are
/// the same, except in frame-counted sound, where a packet holds `packet.frames` samples.
struct SamplePiece {
  uint32_t first = 0;  // from 0
  uint32_t count = 0;  // samples as the table counts them
  SampleTimes times;   // of the first
  bool is_sync = true;
  uint32_t description = 0;  // from 1; may point nowhere
  SoundPacket packet;        // outside of frame-counted sound: 1 sample, the sample's bytes
  uint64_t offset = 0;       // in the file that the description's data reference names

  uint32_t end() const { return first + count; }
  uint32_t packet_count() const { return (count + packet.frames - 1) / packet.frames; }
  uint64_t bytes() const { return uint64_t{packet_count()} * packet.bytes; }

  /// Whether the samples of another piece differ from these at most in time and place.
  bool is_like(const SamplePiece& other) const;
};

class SampleWalk {
 public:
  /// Begins at a sample, in frame-counted sound at the packet that holds it. Borrows the media,
  /// which must not change meanwhile. Fails: as Media::samples() and SampleTable::location().
  static Result<SampleWalk> make(const Media& media, uint32_t first);

  /// The next piece, of at most `most` samples (at least one packet); nothing at the end.
  /// Fails: as SampleTable::location().
  Result<std::optional<SamplePiece>> next(uint32_t most);

  /// Where the chunk at hand ends: that of the piece that is next.
  uint32_t chunk_end() const { return chunk_.end_sample; }

 private:
  SampleWalk(const Media& media, const SampleTable& table, uint32_t first)
      : media_(&media), table_(&table), sample_(first) {}

  Status begin();
  Status enter_chunk();
  Status place_packet();
  Result<uint32_t> count_alike(const SamplePiece& piece, uint32_t end);
  Result<bool> is_sync(uint32_t sample);

  const Media* media_;
  const SampleTable* table_;
  uint32_t sample_;
  SampleChunk chunk_;
  uint64_t offset_ = 0;  // of the sample
  std::optional<SoundPacket> packet_;
  Stretch stretch_;
  TimePlace behind_stretch_;
  SyncPlace sync_;                       // the sync sample that is next, or the sample at hand
  uint32_t known_size_of_ = UINT32_MAX;  // a sample whose size was looked up already
  uint32_t known_size_ = 0;
};

}  // namespace toolbox
