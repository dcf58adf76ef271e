#include "movie/clone_track.h"

#include "base/mac_time.h"
#include "movie/movie.h"

namespace toolbox {

Result<std::unique_ptr<Media>> Media::clone_for(Track& track) const {
  std::unique_ptr<Media> clone(new Media(track, tree_, atom_));
  clone->header_ = header_;
  clone->handler_atom_ = handler_atom_;
  clone->descriptions_ = descriptions_;
  clone->data_references_ = data_references_;
  clone->info_atom_changes_ = info_atom_changes_;
  clone->header_changed_ = header_changed_;
  clone->handler_changed_ = handler_changed_;
  clone->samples_changed_ = samples_changed_;
  clone->descriptions_changed_ = descriptions_changed_;
  clone->data_references_changed_ = data_references_changed_;
  clone->modified_ = modified_;
  // Tables that stand in the file are found there again; others are shared in memory.
  const bool in_fragments = tree_ != nullptr && tree_->first_fragment().has_value();
  if (samples_changed_ || in_fragments) {
    TRY_ASSIGN(const SampleTable* table, samples());
    clone->samples_ = std::make_unique<SampleTable>(table->tables());
    clone->samples_owner_ = appended_ ? std::shared_ptr<const void>(appended_) : samples_owner_;
  }
  return clone;
}

Result<std::unique_ptr<Track>> Track::clone() const {
  TRY(settle_annotations());
  std::unique_ptr<Track> clone(new Track(*movie_, atom_));
  clone->header_ = header_;
  clone->header_.track_id = 0;
  clone->header_.creation_time = clone->header_.modification_time = current_mac_time();
  clone->edits_ = edits_;
  clone->references_ = references_;
  clone->atom_changes_ = atom_changes_;
  clone->header_changed_ = clone->modified_ = true;
  clone->edits_changed_ = edits_changed_;
  clone->references_changed_ = references_changed_;
  if (media_ != nullptr) {
    TRY_ASSIGN(clone->media_, media_->clone_for(*clone));
  }
  return clone;
}

Result<Track*> clone_track(const Track& track, CloneEdits edits) {
  TRY_ASSIGN(std::unique_ptr<Track> clone, track.clone());
  if (edits == CloneEdits::kNone) clone->set_edits(EditList::nothing());
  return &track.movie().add_track(std::move(clone));
}

}  // namespace toolbox
