#include "movie/track.h"

#include <cassert>

#include "base/mac_time.h"
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

std::unique_ptr<Track> Track::create(Movie& movie) {
  std::unique_ptr<Track> track(new Track(movie, kNoAtom));
  TrackHeaderAtom& header = track->header_;
  header.flags = TrackHeaderAtom::kEnabled | TrackHeaderAtom::kInMovie |
                 TrackHeaderAtom::kInPreview | TrackHeaderAtom::kInPoster;
  header.creation_time = header.modification_time = current_mac_time();
  track->edits_ = EditList::nothing();
  track->header_changed_ = track->edits_changed_ = track->modified_ = true;
  return track;
}

TrackHeaderAtom& Track::change_header() {
  touch();
  return header_;
}

void Track::set_edits(EditList edits) {
  edits_ = std::move(edits);
  edits_changed_ = true;
  touch();
}

TrackReferences& Track::change_references() {
  references_changed_ = true;
  touch();
  return references_;
}

AtomChanges& Track::change_atoms() {
  touch();
  return atom_changes_;
}

void Track::set_media(std::unique_ptr<Media> media) {
  media_ = std::move(media);
  touch();
}

Result<Annotations*> Track::annotations() {
  if (!annotations_) {
    TRY_ASSIGN(annotations_, Annotations::read({movie_->opened().tree, atom_, atom_changes_}));
    annotations_->on_change([this] { touch(); });
  }
  return annotations_.get();
}

Status Track::settle_annotations() const {
  return annotations_ ? annotations_->write({movie_->opened().tree, atom_, atom_changes_})
                      : Status();
}

void Track::touch() {
  timeline_.reset();
  modified_ = true;
  header_changed_ = true;
  header_.modification_time = current_mac_time();
  movie_->touch();
}

void Track::check_invariants() const {
  edits_.check_invariants();
  if (media_) {
    assert(&media_->track() == this);
    media_->check_invariants();
  }
}

}  // namespace toolbox
