#include "movie/edit_splice.h"

#include <algorithm>

#include "movie/track.h"

namespace toolbox {

namespace {

// The part of an edit between two ticks counted from its start.
Edit part_of(const Edit& edit, int64_t from, int64_t to, TimeScales scales) {
  Edit part = edit;
  part.duration = to - from;
  if (!edit.is_empty()) {
    const EditSpan span{0, edit.duration, edit.media_start, edit.rate};
    part.media_start = span.media_time(from, scales);
  }
  return part;
}

// Whether an edit shows exactly what follows the one before it.
bool goes_on(const Edit& before, const Edit& edit, TimeScales scales) {
  if (before.is_empty() || edit.is_empty()) return before.is_empty() && edit.is_empty();
  if (before.rate != edit.rate) return false;
  if (before.rate <= 0) return before.media_start == edit.media_start;
  return Int128{before.duration} * scales.media * before.rate ==
         Int128{edit.media_start - before.media_start} * scales.movie * kRateOne;
}

void append_joined(std::vector<Edit>& edits, const Edit& edit, TimeScales scales) {
  if (!edits.empty() && goes_on(edits.back(), edit, scales)) {
    edits.back().duration = advanced(edits.back().duration, static_cast<uint64_t>(edit.duration));
  } else {
    edits.push_back(edit);
  }
}

}  // namespace

std::vector<Edit> filled_edits(const Track& track) {
  std::vector<Edit> edits;
  for (const EditSpan& span : track.timeline().spans()) {
    if (span.duration > 0) edits.push_back({span.duration, span.media_start, span.rate});
  }
  return edits;
}

std::vector<Edit> edits_between(std::span<const Edit> edits, int64_t start, int64_t end,
                                TimeScales scales) {
  std::vector<Edit> between;
  int64_t at = 0;
  for (const Edit& edit : edits) {
    const int64_t from = std::max(start - at, int64_t{0});
    const int64_t to = std::min(end - at, edit.duration);
    if (from < to) between.push_back(part_of(edit, from, to, scales));
    at += edit.duration;
    if (at >= end) break;
  }
  return between;
}

void splice_edits(std::vector<Edit>& edits, int64_t at, std::span<const Edit> inserted,
                  TimeScales scales) {
  size_t place = 0;
  int64_t left = at;
  while (place < edits.size() && edits[place].duration <= left) left -= edits[place++].duration;
  std::vector<Edit> behind;
  if (place < edits.size()) {
    const Edit& split = edits[place];
    behind.push_back(part_of(split, left, split.duration, scales));
    behind.insert(behind.end(), edits.begin() + static_cast<ptrdiff_t>(place) + 1, edits.end());
    const Edit head = part_of(split, 0, left, scales);
    edits.resize(place);
    if (left > 0) edits.push_back(head);
  } else if (left > 0) {
    append_joined(edits, {.duration = left}, scales);
  }
  for (const Edit& edit : inserted) {
    if (edit.duration > 0) append_joined(edits, edit, scales);
  }
  edits.insert(edits.end(), behind.begin(), behind.end());
}

EditList explicit_list(std::vector<Edit> edits) {
  return edits.empty() ? EditList::nothing() : EditList(std::move(edits));
}

}  // namespace toolbox
