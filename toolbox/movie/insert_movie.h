// Puts a segment of one movie into another.
#pragma once

#include "movie/movie.h"

namespace toolbox {

/// Shows a segment of a movie, all tracks of it, at `at` of another movie. The n-th track of a type
/// goes into the n-th of that type of the target if the two fit: in size, or for sound in rate,
/// channels and time scale. Else a track is made for it that has its properties and no references.
/// Tracks of the target that get nothing get empty time, so that everything behind `at` moves
/// together; beyond the end, empty time comes first. `start` and `duration` are ticks of the
/// source, `at` those of the target. REQUIRES: two movies.
/// Fails: invalidTime, invalidDuration, and as share_samples(); nothing is shown otherwise then.
Status insert_movie_segment(const Movie& source, int64_t start, int64_t duration, Movie& target,
                            int64_t at);

}  // namespace toolbox
