#include "saving/offset_map.h"

#include <algorithm>
#include <cassert>

#include "movie/pending_data.h"

namespace toolbox {

OffsetMap OffsetMap::in_place(uint64_t pending_offset) {
  OffsetMap map;
  map.keeps_file_ = true;
  map.pending_offset_ = pending_offset;
  return map;
}

void OffsetMap::keep(uint64_t begin, uint64_t end, uint64_t new_begin) {
  assert(ranges_.empty() || ranges_.back().end <= begin);
  if (begin == end) return;
  greatest_ = std::max(greatest_, new_begin + (end - begin));
  if (!ranges_.empty() && ranges_.back().end == begin &&
      new_begin - ranges_.back().new_begin == begin - ranges_.back().begin) {
    ranges_.back().end = end;
    return;
  }
  ranges_.push_back({begin, end, new_begin});
}

uint64_t OffsetMap::at(uint64_t offset) const {
  if (PendingData::is_pending(offset)) {
    return pending_offset_ + (offset - PendingData::kPendingBase);
  }
  if (keeps_file_ || offset == kLost) return offset;
  if (knows_marks_ && offset >= kLeftBase) return offset - kLeftBase;
  if (knows_marks_ && offset >= kTakenBase) return taken_offset_ + (offset - kTakenBase);
  const auto behind =
      std::upper_bound(ranges_.begin(), ranges_.end(), offset,
                       [](uint64_t wanted, const Range& range) { return wanted < range.begin; });
  if (behind == ranges_.begin()) return kLost;
  const Range& range = *std::prev(behind);
  // An empty chunk may stand at the very end of its atom.
  if (offset <= range.end) return range.new_begin + (offset - range.begin);
  return behind == ranges_.end() ? offset : kLost;
}

}  // namespace toolbox
