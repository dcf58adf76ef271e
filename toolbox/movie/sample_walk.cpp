#include "movie/sample_walk.h"

#include <algorithm>

#include "movie/media.h"

namespace toolbox {

bool SamplePiece::is_like(const SamplePiece& other) const {
  return description == other.description && times.delta == other.times.delta &&
         times.display - times.decode == other.times.display - other.times.decode &&
         is_sync == other.is_sync && packet.bytes == other.packet.bytes &&
         packet.frames == other.packet.frames;
}

Result<SampleWalk> SampleWalk::make(const Media& media, uint32_t first) {
  TRY_ASSIGN(const SampleTable* table, media.samples());
  SampleWalk walk(media, *table, first);
  if (first < table->sample_count()) TRY(walk.begin());
  return walk;
}

Status SampleWalk::begin() {
  TRY_ASSIGN(chunk_, table_->chunk_of(sample_));
  TRY(place_packet());
  uint64_t before = 0;
  if (packet_) {
    const uint32_t packets = (sample_ - chunk_.first_sample) / packet_->frames;
    sample_ = chunk_.first_sample + packets * packet_->frames;
    before = uint64_t{packets} * packet_->bytes;
  } else {
    TRY_ASSIGN(before, table_->bytes_between(chunk_.first_sample, sample_));
  }
  // A place that no file reaches is found out by who reads there.
  offset_ = chunk_.offset > UINT64_MAX - before ? UINT64_MAX : chunk_.offset + before;
  TRY_ASSIGN(behind_stretch_, table_->time_place_of(sample_));
  TRY(table_->take_stretch(behind_stretch_, stretch_));
  if (table_->tables().has_sync) {
    TRY_ASSIGN(sync_, table_->sync_from(sample_));
  }
  return {};
}

Status SampleWalk::enter_chunk() {
  const uint32_t description = chunk_.description;
  TRY(table_->go_behind(chunk_));
  offset_ = chunk_.offset;
  return chunk_.description == description ? Status() : place_packet();
}

Status SampleWalk::place_packet() {
  TRY_ASSIGN(packet_, frame_counted_packet(*media_, table_->tables(), chunk_.description));
  return {};
}

Result<std::optional<SamplePiece>> SampleWalk::next(uint32_t most) {
  if (sample_ >= table_->sample_count()) return std::optional<SamplePiece>{};
  if (sample_ >= chunk_.end_sample) TRY(enter_chunk());
  while (sample_ > stretch_.last_sample()) {
    TRY(table_->take_stretch(behind_stretch_, stretch_));
  }
  SamplePiece piece;
  piece.first = sample_;
  piece.times = {stretch_.decode_of(sample_), stretch_.display_of(sample_), stretch_.delta};
  TRY_ASSIGN(piece.is_sync, is_sync(sample_));
  piece.description = chunk_.description;
  piece.offset = offset_;
  const uint32_t left = std::min(chunk_.end_sample - sample_, stretch_.last_sample() - sample_ + 1);
  if (packet_) {
    // A last packet of a chunk may be cut short.
    piece.packet = *packet_;
    most = std::max(most - most % packet_->frames, packet_->frames);
    piece.count = std::min(left, most);
  } else {
    if (known_size_of_ != sample_) {
      TRY_ASSIGN(known_size_, table_->size(sample_));
    }
    piece.packet = {1, known_size_};
    TRY_ASSIGN(piece.count, count_alike(piece, sample_ + std::min(left, std::max(most, 1u))));
  }
  sample_ += piece.count;
  const uint64_t bytes = piece.bytes();
  offset_ = offset_ > UINT64_MAX - bytes ? UINT64_MAX : offset_ + bytes;
  return std::optional<SamplePiece>(piece);
}

// REQUIRES: asked of samples that ascend.
Result<bool> SampleWalk::is_sync(uint32_t sample) {
  if (!table_->tables().has_sync) return true;
  while (sync_.sample < sample) {
    TRY_ASSIGN(sync_, table_->sync_behind(sync_));
  }
  return sync_.sample == sample;
}

Result<uint32_t> SampleWalk::count_alike(const SamplePiece& piece, uint32_t end) {
  const bool one_size = table_->tables().sizes.uniform_size != 0;
  if (one_size && !table_->tables().has_sync) return end - piece.first;
  uint32_t sample = piece.first + 1;
  for (; sample < end; ++sample) {
    TRY_ASSIGN(known_size_, table_->size(sample));
    known_size_of_ = sample;
    if (known_size_ != piece.packet.bytes) break;
    TRY_ASSIGN(const bool sync, is_sync(sample));
    if (sync != piece.is_sync) break;
  }
  return sample - piece.first;
}

}  // namespace toolbox
