#include "saving/used_data.h"

#include <algorithm>

#include "saving/chunk_walk.h"

namespace toolbox {

namespace {

struct UsedSpan {
  uint64_t begin = 0;
  uint64_t end = 0;
};

Status add_chunks(const Media& media, std::vector<UsedSpan>& used) {
  const uint64_t size = media.track().movie().opened().file->size();
  return for_each_chunk(
      media, [&](const SampleTable& table, const SampleChunk& chunk, uint16_t reference) -> Status {
        if (reference != 0 || PendingData::is_pending(chunk.offset)) return {};
        TRY_ASSIGN(const uint64_t bytes, chunk_bytes(media, table, chunk));
        if (chunk.offset > size || bytes > size - chunk.offset) {
          return {endOfDataReached, media.track().movie().opened().file->name() + ": track " +
                                        std::to_string(media.track().id()) +
                                        " has media data at byte " + std::to_string(chunk.offset) +
                                        ", behind the end of the file"};
        }
        // Most chunks of a track that is alone lie one behind the other.
        if (!used.empty() && used.back().end == chunk.offset) {
          used.back().end += bytes;
        } else if (bytes > 0) {
          used.push_back({chunk.offset, chunk.offset + bytes});
        }
        return {};
      });
}

}  // namespace

Result<std::vector<ByteRange>> used_media_data(const Movie& movie) {
  std::vector<UsedSpan> used;
  for (const auto& track : movie.tracks()) {
    if (track->media() != nullptr) TRY(add_chunks(*track->media(), used));
  }
  std::sort(used.begin(), used.end(),
            [](const UsedSpan& a, const UsedSpan& b) { return a.begin < b.begin; });
  std::vector<ByteRange> ranges;
  for (const UsedSpan& span : used) {
    const uint64_t reached = ranges.empty() ? 0 : ranges.back().offset + ranges.back().size;
    if (ranges.empty() || span.begin > reached) {
      ranges.push_back({movie.opened().file.get(), span.begin, span.end - span.begin});
    } else if (span.end > reached) {
      ranges.back().size += span.end - reached;
    }
  }
  return ranges;
}

}  // namespace toolbox
