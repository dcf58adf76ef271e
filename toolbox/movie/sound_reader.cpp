#include "movie/sound_reader.h"

#include <algorithm>

#include "movie/media.h"
#include "movie/media_data.h"
#include "movie/track.h"

namespace toolbox {

namespace {

constexpr uint64_t kMostBytes = 64 * 1024;
constexpr uint32_t kMostSamples = 65536;

}  // namespace

Result<SoundReader> SoundReader::make(const Media& media, int64_t time) {
  TRY_ASSIGN(const SampleTable* table, media.samples());
  uint32_t first = 0;
  if (time > 0) {
    TRY_ASSIGN(const std::optional<uint32_t> found, table->sample_at_decode_time(time));
    first = found.value_or(table->sample_count());
  }
  TRY_ASSIGN(const SampleWalk walk, SampleWalk::make(media, first));
  return SoundReader(media, walk);
}

Result<bool> SoundReader::take_piece() {
  TRY_ASSIGN(const std::optional<SamplePiece> piece, walk_.next(kMostSamples));
  if (!piece) return false;
  piece_ = *piece;
  unit_ = packets_done_ = 0;
  units_ = piece_.packet_count();
  if (piece_.description == format_of_) return true;
  format_of_ = piece_.description;
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, media_->descriptions());
  format_.reset();
  channels_ = 0;
  if (format_of_ == 0 || format_of_ > descriptions->size()) return true;
  format_ = sound_format_of((*descriptions)[format_of_ - 1]);
  channels_ = sound_channels_of((*descriptions)[format_of_ - 1]);
  return true;
}

// A piece is a row of units of one size, each some packets and perhaps bytes that make none:
//
//   | packet packet packet .. | packet packet packet .. |
//
// Without such bytes the packets of the whole piece lie one behind the other and are read together.
Result<bool> SoundReader::next(SoundBlock& block, uint64_t most_frames) {
  if (unit_ >= units_) {
    TRY_ASSIGN(const bool is_there, take_piece());
    if (!is_there) return false;
  }
  const double unit_ticks = double{1} * piece_.packet.frames * piece_.times.delta;
  const double begin = static_cast<double>(piece_.times.decode);
  block.frames.clear();
  block.channels = channels_;
  block.is_decoded = format_.has_value();
  const uint64_t packet_bytes = format_ ? format_->packet_bytes() : 0;
  const uint64_t packets_in_unit = format_ ? piece_.packet.bytes / packet_bytes : 0;
  if (packets_in_unit == 0) {
    block.begin = begin + static_cast<double>(unit_) * unit_ticks;
    block.ticks_per_frame = 0;
    unit_ = units_;
    return true;
  }
  const bool is_gapless = piece_.packet.bytes % packet_bytes == 0;
  const uint64_t units_in_run = is_gapless ? units_ : 1;
  const uint64_t packets_in_run = units_in_run * packets_in_unit;
  const uint64_t most_packets =
      std::min(kMostBytes / packet_bytes, most_frames / format_->packet_frames());
  const uint64_t count =
      std::min(packets_in_run - packets_done_, std::max<uint64_t>(most_packets, 1));

  const double frames_in_unit = static_cast<double>(packets_in_unit) * format_->packet_frames();
  block.ticks_per_frame = unit_ticks / frames_in_unit;
  block.begin =
      begin + static_cast<double>(unit_) * unit_ticks +
      static_cast<double>(packets_done_ * format_->packet_frames()) * block.ticks_per_frame;
  buffer_.resize(static_cast<size_t>(count * packet_bytes));
  const uint64_t offset =
      piece_.offset + unit_ * piece_.packet.bytes + packets_done_ * packet_bytes;
  TRY(read_media_data(*media_, piece_.description, offset, buffer_)
          .in_context("sound of track " + std::to_string(media_->track().id()) + ": "));
  decode_sound(*format_, buffer_, block.frames);
  packets_done_ += count;
  if (packets_done_ == packets_in_run) {
    packets_done_ = 0;
    unit_ += units_in_run;
  }
  return true;
}

}  // namespace toolbox
