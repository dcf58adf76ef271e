// Puts a movie that was saved over the file it was saved to.
#include <cassert>

#include "movie/appended_samples.h"
#include "movie/movie.h"

namespace toolbox {

Status Movie::rebase(OpenedMovie saved) {
  TRY_ASSIGN(std::unique_ptr<Movie> fresh, Movie::load(std::move(saved)));
  if (fresh->tracks_.size() != tracks_.size()) {
    return {internalQuickTimeError, "the saved file does not have the tracks of the movie"};
  }
  // Members that borrow from the file come first, the file last.
  fragments_.reset();
  fragments_failure_ = {};
  std::swap(opened_, fresh->opened_);
  header_ = std::move(fresh->header_);
  for (size_t i = 0; i < tracks_.size(); ++i) tracks_[i]->rebase(*fresh->tracks_[i]);
  atom_changes_.clear();
  if (annotations_) annotations_->saved();
  pending_.clear();
  header_changed_ = false;
  modified_ = false;
  check_invariants();
  return {};
}

void Track::rebase(Track& saved) {
  atom_ = saved.atom_;
  header_ = std::move(saved.header_);
  edits_ = std::move(saved.edits_);
  references_ = std::move(saved.references_);
  timeline_.reset();
  atom_changes_.clear();
  if (annotations_) annotations_->saved();
  header_changed_ = edits_changed_ = references_changed_ = modified_ = false;
  assert((media_ == nullptr) == (saved.media_ == nullptr));
  if (media_ != nullptr && saved.media_ != nullptr) {
    media_->rebase(*saved.media_, movie_->opened().tree);
  }
}

void Media::rebase(Media& saved, const AtomTree& tree) {
  tree_ = &tree;
  atom_ = saved.atom_;
  header_ = std::move(saved.header_);
  handler_atom_ = std::move(saved.handler_atom_);
  samples_.reset();
  samples_owner_.reset();
  appended_.reset();
  descriptions_.reset();
  data_references_.reset();
  info_atom_changes_.clear();
  header_changed_ = handler_changed_ = samples_changed_ = false;
  descriptions_changed_ = data_references_changed_ = modified_ = false;
}

}  // namespace toolbox
