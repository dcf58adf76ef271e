// Edits of whole segments: inserted, deleted, scaled, in one track or in all tracks of a movie.
// Edit lists change; sample tables only where a segment goes to a track of another media.
//
// Times are movie ticks. Every call fails with invalidTime for a time before the movie or behind
// its end, with invalidDuration for a negative duration, and leaves everything as it was then.
#pragma once

#include "movie/movie.h"

namespace toolbox {

/// Takes a segment out; what lies behind it moves earlier. One that reaches beyond the end ends
/// there.
Status delete_segment(Track& track, int64_t start, int64_t duration);

/// Puts empty time in; what lies at or behind `start` moves later. Fails also: invalidTime at the
/// end of the track, where empty time cannot be.
Status insert_empty_segment(Track& track, int64_t start, int64_t duration);

/// Shows a segment in `new_duration` in place of `old_duration`: its edits become longer or
/// shorter, and slower or faster. Boundaries are rounded, not lengths, so that the sum is exact. A
/// new duration of 0 deletes the segment. A segment that reaches beyond the end is scaled up to
/// there. Fails also: invalidDuration for an old duration of 0.
Status scale_segment(Track& track, int64_t start, int64_t old_duration, int64_t new_duration);

/// Shows a segment of a track at `at` of a track, perhaps of the same one; a track of another media
/// gets the samples that the segment shows (see share_samples). `start` and `duration` are ticks of
/// the source's movie, `at` those of the target's. Beyond the end of the target, empty time comes
/// first. A segment that reaches beyond the end of its track ends there. Fails also:
/// mediaTypesDontMatch, and as share_samples().
Status insert_segment(const Track& source, int64_t start, int64_t duration, Track& target,
                      int64_t at);

/// The length of the empty time in front becomes `offset`.
Status set_offset(Track& track, int64_t offset);

/// As the calls for tracks, in every track that reaches that far. Fail also: invalidTime beyond the
/// end of the movie.
Status delete_movie_segment(Movie& movie, int64_t start, int64_t duration);
Status insert_empty_movie_segment(Movie& movie, int64_t start, int64_t duration);
Status scale_movie_segment(Movie& movie, int64_t start, int64_t old_duration, int64_t new_duration);

/// Shows a segment of the movie again at `at`: in each track its own part of it. Tracks that show
/// nothing there get empty time, so that everything behind `at` moves together.
Status repeat_movie_segment(Movie& movie, int64_t start, int64_t duration, int64_t at);

}  // namespace toolbox
