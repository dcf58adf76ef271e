// The call of QuickTime/Movies.h that finds where something happens in a track.
#include "calls/guard.h"
#include "calls/references.h"
#include "movie/interesting_times.h"

using namespace toolbox::calls;
using toolbox::Interest;
using toolbox::InterestingTime;
using toolbox::Result;
using toolbox::Status;

namespace {

constexpr unsigned kInterests =
    nextTimeMediaSample | nextTimeMediaEdit | nextTimeTrackEdit | nextTimeSyncSample | nextTimeStep;

Result<Interest> interest_of(unsigned flags) {
  switch (flags & kInterests) {
    case nextTimeMediaSample:
    case nextTimeStep:
      return Interest::kSample;
    case nextTimeMediaEdit:
      return Interest::kMediaEdit;
    case nextTimeTrackEdit:
      return Interest::kTrackEdit;
    case nextTimeSyncSample:
      return Interest::kSyncSample;
    default:
      return Status(paramErr, "exactly one kind of interesting time must be asked for");
  }
}

Result<std::optional<InterestingTime>> search(const toolbox::Track& track, Interest interest,
                                              bool backward, int64_t time, bool edge_counts) {
  // A track without media still has edits.
  static const toolbox::SampleTable kNoSamples;
  const toolbox::SampleTable* samples = &kNoSamples;
  const bool needs_samples = interest == Interest::kSample || interest == Interest::kSyncSample;
  if (needs_samples && track.media() != nullptr) {
    TRY_ASSIGN(samples, track.media()->samples());
  }
  const toolbox::InterestingTimes times(track.timeline(), *samples);
  const int64_t beyond = edge_counts ? 0 : 1;
  return backward ? times.previous(interest, time - beyond) : times.next(interest, time + beyond);
}

}  // namespace

TOOLBOX_CALL void GetTrackNextInterestingTime(Track track, SInt16 interestingTimeFlags,
                                              TimeValue time, Fixed rate,
                                              TimeValue* interestingTime,
                                              TimeValue* interestingDuration) {
  TimeValue found_time = -1;
  TimeValue found_duration = 0;
  guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    const auto flags = static_cast<unsigned>(interestingTimeFlags);
    TRY_ASSIGN(const Interest interest, interest_of(flags));
    TRY_ASSIGN(const std::optional<InterestingTime> result,
               search(*found, interest, rate < 0, time, (flags & nextTimeEdgeOK) != 0));
    // A time beyond 32 bits counts as none: cut to the largest, it would be found again and again.
    if (result && result->time <= INT32_MAX) {
      found_time = static_cast<TimeValue>(result->time);
      found_duration = to_time_value(result->duration);
    }
    return {};
  });
  if (interestingTime != nullptr) *interestingTime = found_time;
  if (interestingDuration != nullptr) *interestingDuration = found_duration;
}
