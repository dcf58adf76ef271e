#include "movie/read_samples.h"

#include <algorithm>

#include "movie/insert_media.h"
#include "movie/media_data.h"

namespace toolbox {

namespace {

constexpr uint64_t kMostBytes = INT32_MAX;  // what callers can count

Status outside(int64_t time) {
  return {timeNotInMedia, "no sample of the media is shown at time " + std::to_string(time)};
}

// The sample shown at a time. Display offsets may move the samples away from 0: before the first is
// shown it stands for its time, and the last counts until it is over.
Result<uint32_t> sample_shown_at(const Media& media, int64_t time) {
  TRY_ASSIGN(const SampleTable* table, media.samples());
  if (time < 0 || table->sample_count() == 0) return outside(time);
  using Set = SampleTable::Set;
  TRY_ASSIGN(std::optional<DisplayPoint> point, table->previous_displayed(Set::kAll, time));
  if (!point) {
    TRY_ASSIGN(point, table->next_displayed(Set::kAll, time));
    if (!point) return outside(time);
  }
  TRY_ASSIGN(const int64_t end, media_end(media));
  if (time >= end) return outside(time);
  return point->sample;
}

// Data that cannot be is refused before memory is asked for.
Status read_piece(const Media& media, const SamplePiece& piece, uint64_t most, Bytes& data) {
  if (piece.bytes() > most) {
    return {endOfDataReached, "sample " + std::to_string(uint64_t{piece.first} + 1) + " claims " +
                                  std::to_string(piece.bytes()) + " bytes, more than its file has"};
  }
  const size_t begin = data.size();
  data.resize(begin + static_cast<size_t>(piece.bytes()));
  return read_media_data(media, piece.description, piece.offset, std::span(data).subspan(begin));
}

// How many samples of a piece have their bytes among so many, in whole packets.
uint32_t fitting_samples(const SamplePiece& piece, uint64_t bytes) {
  if (piece.bytes() <= bytes) return piece.count;
  return static_cast<uint32_t>(bytes / piece.packet.bytes) * piece.packet.frames;
}

}  // namespace

Result<ReadSamples> read_samples(const Media& media, const SampleRequest& request) {
  TRY_ASSIGN(const uint32_t sample, sample_shown_at(media, request.time));
  TRY_ASSIGN(SampleWalk walk, SampleWalk::make(media, sample));
  uint32_t most = request.most_samples;
  if (most == 0) {
    TRY_ASSIGN(const SampleTable* table, media.samples());
    const bool is_even_sound =
        media.type() == four_cc("soun") && table->tables().sizes.uniform_size != 0;
    most = is_even_sound ? walk.chunk_end() - sample : 1;
  }

  ReadSamples read;
  std::vector<SamplePiece> pieces;
  uint64_t data_bytes = kMostBytes;
  while (pieces.empty() || read.count < most) {
    TRY_ASSIGN(std::optional<SamplePiece> piece, walk.next(most - read.count));
    if (!piece) break;
    if (pieces.empty()) {
      read.first = *piece;
      if (request.wants_data) {
        TRY_ASSIGN(data_bytes, data_bytes_at(media, piece->description, piece->offset));
        data_bytes = std::min(data_bytes, kMostBytes);
      }
    } else if (!piece->is_like(read.first)) {
      break;
    }
    // Samples that all lie in the same bytes could otherwise ask for any amount.
    const uint32_t fitting = fitting_samples(*piece, data_bytes - std::min(read.bytes, data_bytes));
    const bool is_cut = fitting < piece->count;
    if (is_cut && !pieces.empty() && fitting == 0) break;
    if (is_cut) piece->count = std::max(fitting, std::min(piece->count, piece->packet.frames));
    read.count += piece->count;
    read.bytes += piece->bytes();
    pieces.push_back(*piece);
    if (is_cut) break;
  }
  if (!request.wants_data || (request.most_bytes != 0 && read.bytes > request.most_bytes)) {
    return read;
  }
  for (const SamplePiece& piece : pieces) {
    TRY(read_piece(media, piece, data_bytes, read.data));
  }
  return read;
}

}  // namespace toolbox
