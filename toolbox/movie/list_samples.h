// What a track's samples are, one by one, for those who list or copy them.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "base/bytes.h"
#include "movie/sample_walk.h"

namespace toolbox {

class Track;

/// One sample; in frame-counted sound one packet, which holds several of what the table counts.
struct ListedSample {
  int64_t time = 0;      // when it is displayed, media ticks
  int64_t duration = 0;  // media ticks
  uint64_t offset = 0;   // in the file that the description's data reference names
  uint32_t number = 0;   // from 1; the first of a packet
  uint32_t size = 0;     // bytes
  uint32_t description = 0;
  bool is_sync = true;
};

/// Media ticks from `begin` up to `end`.
struct MediaSpan {
  int64_t begin = 0;
  int64_t end = 0;
};

/// The parts of the media that a track shows between two movie times, ascending and apart.
std::vector<MediaSpan> shown_spans(const Track& track, int64_t from, int64_t until);

/// Calls `visit(const ListedSample&)`, which answers a Status, for every sample of the media in
/// decode order; costs no memory. Fails: as SampleWalk, and as `visit`.
template <class Visit>
Status visit_samples(const Media& media, Visit visit) {
  constexpr uint32_t kMany = UINT32_MAX;
  TRY_ASSIGN(SampleWalk walk, SampleWalk::make(media, 0));
  for (;;) {
    TRY_ASSIGN(const std::optional<SamplePiece> piece, walk.next(kMany));
    if (!piece) return {};
    ListedSample sample{.time = piece->times.display,
                        .duration = 0,
                        .offset = piece->offset,
                        .number = piece->first + 1,
                        .size = piece->packet.bytes,
                        .description = piece->description,
                        .is_sync = piece->is_sync};
    for (uint32_t left = piece->count; left != 0;) {
      const uint32_t frames = std::min(left, piece->packet.frames);
      sample.duration = int64_t{frames} * piece->times.delta;
      TRY(visit(sample));
      sample.time += sample.duration;
      sample.offset += sample.size;
      sample.number += frames;
      left -= frames;
    }
  }
}

/// Takes bytes of the sample with that number (from 1).
using SampleBytesSink = std::function<Status(ByteView bytes, uint32_t number)>;

/// Hands out the bytes of the samples `first` to `last` (from 1, both included) in decode order, in
/// pieces of at most a mebibyte. Frame-counted sound comes in whole packets.
/// Fails: invalidSampleNum, endOfDataReached for a sample that claims more than its file has, as
/// SampleWalk and read_media_data(), and as `sink`; what came before was handed out.
Status read_sample_bytes(const Media& media, uint32_t first, uint32_t last,
                         const SampleBytesSink& sink);

}  // namespace toolbox
