// Finds where something happens in a track: a sample appears, an edit begins.
#pragma once

#include <optional>

#include "movie/edit_timeline.h"
#include "movie/sample_table.h"

namespace toolbox {

/// What to look for.
enum class Interest {
  kSample,      // samples as they appear through the edits
  kSyncSample,  // those of them that are sync
  kMediaEdit,   // edits that show media
  kTrackEdit,   // all edits, and the end of the track
};

/// A stretch of movie time that begins with something of interest. Longer than 0, save at the
/// track's end.
struct InterestingTime {
  int64_t time = 0;      // movie ticks
  int64_t duration = 0;  // movie ticks
};

/// Searches one track. Borrows both parts; costs a few binary searches, however long the tables
/// are.
///
/// A sample that began before its edit appears where the edit starts. Starts are rounded up to
/// movie ticks; of samples that share a tick the last is meant. A held edit shows one sample for
/// its whole length.
class InterestingTimes {
 public:
  InterestingTimes(const EditTimeline& timeline, const SampleTable& samples)
      : timeline_(&timeline), samples_(&samples) {}

  /// The first at `at_least` or later, and the last at `at_most` or before. Movie ticks, negative
  /// ones too. Fails: as SampleTable.
  Result<std::optional<InterestingTime>> next(Interest interest, int64_t at_least) const;
  Result<std::optional<InterestingTime>> previous(Interest interest, int64_t at_most) const;

 private:
  using Set = SampleTable::Set;
  using Found = std::optional<InterestingTime>;

  Found next_edit(Interest interest, int64_t at_least) const;
  Found previous_edit(Interest interest, int64_t at_most) const;
  Result<Found> next_sample(Set set, int64_t at_least) const;
  Result<Found> previous_sample(Set set, int64_t at_most) const;
  Result<Found> next_in(const EditSpan& span, Set set, int64_t at_least) const;
  Result<Found> previous_in(const EditSpan& span, Set set, int64_t at_most) const;

  Result<bool> appears_at_start(const EditSpan& span, Set set) const;
  Result<Found> from_tick(const EditSpan& span, int64_t tick) const;

  const EditTimeline* timeline_;
  const SampleTable* samples_;
};

}  // namespace toolbox
