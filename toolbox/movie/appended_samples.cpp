#include "movie/appended_samples.h"

#include <algorithm>

#include "movie/movie.h"
#include "movie/sound_packets.h"

namespace toolbox {

namespace {

constexpr uint64_t kMostChunkBytes = 1024 * 1024;

uint32_t fitting(uint64_t room, uint32_t each) {
  return each == 0 ? UINT32_MAX
                   : static_cast<uint32_t>(std::min<uint64_t>(room / each, UINT32_MAX));
}

// The true size of a frame where the table states another one for all samples; 0 elsewhere.
Result<uint32_t> true_frame_size(const Media& media, const SampleTables& tables) {
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, media.descriptions());
  std::optional<SoundPacket> known;
  for (uint32_t number = 1; number <= descriptions->size(); ++number) {
    TRY_ASSIGN(const std::optional<SoundPacket> packet,
               frame_counted_packet(media, tables, number));
    if (!packet) continue;
    if (packet->frames != 1 || (known && known->bytes != packet->bytes)) {
      return Status(featureUnsupported,
                    "the sound of this media is counted in frames that have no size of their own; "
                    "samples cannot be added to it");
    }
    known = packet;
  }
  return known ? known->bytes : 0;
}

}  // namespace

Result<std::shared_ptr<AppendedSamples>> AppendedSamples::make(const Media& media) {
  TRY_ASSIGN(const SampleTable* table, media.samples());
  const Movie& movie = media.track().movie();
  std::shared_ptr<AppendedSamples> appended(new AppendedSamples(
      media.time_scale(), movie.opened().file->name() + " (samples in memory)"));
  if (table->sample_count() == 0) return appended;
  TRY_ASSIGN(const uint32_t frame_size, true_frame_size(media, table->tables()));
  if (frame_size == 0) {
    TRY(appended->growing_.append_all(*table));
  } else {
    SampleTables tables = table->tables();
    tables.sizes.uniform_size = frame_size;
    TRY(appended->growing_.append_all(SampleTable(std::move(tables))));
  }
  return appended;
}

bool AppendedSamples::goes_on(uint64_t offset, uint32_t description) const {
  return growing_.is_chunk_open() && chunk_description_ == description && chunk_end_ == offset &&
         chunk_bytes_ < kMostChunkBytes && chunk_ticks_ < time_scale_;
}

uint32_t AppendedSamples::room_in_chunk(const EqualSamples& samples) const {
  const uint64_t ticks = time_scale_ - std::min<uint64_t>(chunk_ticks_, time_scale_);
  const uint64_t bytes = kMostChunkBytes - std::min(chunk_bytes_, kMostChunkBytes);
  return std::min(fitting(ticks, samples.delta), fitting(bytes, samples.size));
}

Status AppendedSamples::check_room(uint64_t samples, uint64_t pieces) const {
  if (growing_.has_room_for(samples, pieces)) return {};
  return {memFullErr, "the media gets too many samples: " +
                          std::to_string(uint64_t{growing_.sample_count()} + samples)};
}

Status AppendedSamples::append(const EqualSamples& samples, uint64_t offset, uint32_t description) {
  const uint32_t in_chunk = std::max(
      1u, std::min(fitting(time_scale_, samples.delta), fitting(kMostChunkBytes, samples.size)));
  TRY(check_room(samples.count, samples.count / in_chunk + 2));
  EqualSamples part = samples;
  for (uint32_t left = samples.count; left > 0; left -= part.count) {
    part.count = goes_on(offset, description) ? std::min(left, room_in_chunk(samples)) : 0;
    if (part.count == 0) {
      TRY(growing_.begin_chunk(offset, description));
      chunk_description_ = description;
      chunk_bytes_ = chunk_ticks_ = 0;
      part.count = std::min(left, in_chunk);
    }
    TRY(growing_.append(part));
    const uint64_t bytes = uint64_t{part.count} * part.size;
    chunk_bytes_ += bytes;
    chunk_ticks_ += uint64_t{part.count} * part.delta;
    offset += bytes;
    chunk_end_ = offset;
  }
  return {};
}

Result<SampleTables> AppendedSamples::tables() { return growing_.tables(name_); }

}  // namespace toolbox
