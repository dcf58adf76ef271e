#include "movie/track.h"

#include <cassert>

#include "movie/movie.h"

namespace toolbox {

const EditTimeline& Track::timeline() const {
  if (!timeline_) {
    TimeScales scales{.movie = movie_->time_scale(), .media = movie_->time_scale()};
    int64_t media_duration = 0;
    if (media_) {
      scales.media = media_->time_scale();
      media_duration = media_->likely_duration();
    }
    timeline_.emplace(edits_, scales, media_duration);
  }
  return *timeline_;
}

void Track::check_invariants() const {
  edits_.check_invariants();
  if (media_) {
    assert(&media_->track() == this);
    media_->check_invariants();
  }
}

}  // namespace toolbox
