// The spans of media that make up a track, as the file states them.
#pragma once

#include <cstdint>
#include <vector>

#include "movie/time_math.h"

namespace toolbox {

/// One entry of an edit list.
struct Edit {
  int64_t duration = 0;      // movie ticks, >= 0
  int64_t media_start = -1;  // media ticks; negative is an empty edit
  int32_t rate = kRateOne;   // 16.16; 0 and below holds one frame for the whole duration

  bool is_empty() const { return media_start < 0; }
};

/// Entries in playing order, kept as read. A track without entries plays its whole media (see
/// EditTimeline).
class EditList {
 public:
  EditList() = default;
  explicit EditList(std::vector<Edit> edits) : edits_(std::move(edits)) {}

  /// The list of a track that shows nothing of its media: one empty edit of no duration.
  static EditList nothing() { return EditList({Edit{}}); }

  const std::vector<Edit>& edits() const { return edits_; }
  bool is_implicit() const { return edits_.empty(); }

  void check_invariants() const;

 private:
  std::vector<Edit> edits_;
};

}  // namespace toolbox
