#include "movie/list_samples.h"

#include <algorithm>

#include "movie/media_data.h"
#include "movie/track.h"

namespace toolbox {

namespace {

constexpr uint64_t kMostAtOnce = 1 << 20;

// Spans that touch become one.
std::vector<MediaSpan> joined(std::vector<MediaSpan> spans) {
  std::sort(spans.begin(), spans.end(),
            [](const MediaSpan& a, const MediaSpan& b) { return a.begin < b.begin; });
  std::vector<MediaSpan> apart;
  for (const MediaSpan& span : spans) {
    if (!apart.empty() && span.begin <= apart.back().end) {
      apart.back().end = std::max(apart.back().end, span.end);
    } else {
      apart.push_back(span);
    }
  }
  return apart;
}

Status read_piece(const Media& media, const SamplePiece& piece, Bytes& buffer,
                  const SampleBytesSink& sink) {
  TRY_ASSIGN(const uint64_t room, data_bytes_at(media, piece.description, piece.offset));
  if (piece.packet.bytes > room) {
    return {endOfDataReached, "sample " + std::to_string(uint64_t{piece.first} + 1) + " claims " +
                                  std::to_string(piece.packet.bytes) +
                                  " bytes, more than its file has"};
  }
  for (uint64_t done = 0; done < piece.bytes();) {
    const uint64_t packet = done / piece.packet.bytes;
    const auto number = static_cast<uint32_t>(piece.first + packet * piece.packet.frames + 1);
    buffer.resize(static_cast<size_t>(std::min(piece.bytes() - done, kMostAtOnce)));
    TRY(read_media_data(media, piece.description, piece.offset + done, buffer)
            .in_context("samples from " + std::to_string(number) + " on: "));
    TRY(sink(buffer, number));
    done += buffer.size();
  }
  return {};
}

}  // namespace

std::vector<MediaSpan> shown_spans(const Track& track, int64_t from, int64_t until) {
  const EditTimeline& timeline = track.timeline();
  std::vector<MediaSpan> spans;
  for (const EditSpan& span : timeline.spans()) {
    const int64_t start = std::max(span.start, from);
    const int64_t end = std::min(span.end(), until);
    if (span.is_empty() || start >= end) continue;
    const int64_t begin = span.media_time(start, timeline.scales());
    spans.push_back({begin, std::max(span.media_time(end, timeline.scales()), begin + 1)});
  }
  return joined(std::move(spans));
}

Status read_sample_bytes(const Media& media, uint32_t first, uint32_t last,
                         const SampleBytesSink& sink) {
  TRY_ASSIGN(const SampleTable* table, media.samples());
  if (first == 0 || first > last || last > table->sample_count()) {
    return {invalidSampleNum, "samples " + std::to_string(first) + " to " + std::to_string(last) +
                                  " are not there; the track has " +
                                  std::to_string(table->sample_count())};
  }
  TRY_ASSIGN(SampleWalk walk, SampleWalk::make(media, first - 1));
  Bytes buffer;
  for (uint32_t sample = first - 1; sample < last;) {
    TRY_ASSIGN(const std::optional<SamplePiece> piece, walk.next(last - sample));
    if (!piece) return {};
    TRY(read_piece(media, *piece, buffer, sink));
    sample = piece->end();
  }
  return {};
}

}  // namespace toolbox
