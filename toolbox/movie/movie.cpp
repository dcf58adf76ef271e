#include "movie/movie.h"

#include <algorithm>
#include <cassert>

#include "base/mac_time.h"

namespace toolbox {

int64_t Movie::duration() const {
  int64_t longest = 0;
  for (const auto& track : tracks_) longest = std::max(longest, track->duration());
  return longest;
}

int64_t Movie::current_time() const {
  const int64_t time = session_.time.value_or(static_cast<int64_t>(header_.current_time));
  return std::clamp<int64_t>(time, 0, duration());
}

Track* Movie::find_track(uint32_t id) const {
  if (id == 0) return nullptr;
  const auto found = std::find_if(tracks_.begin(), tracks_.end(),
                                  [&](const auto& track) { return track->id() == id; });
  return found == tracks_.end() ? nullptr : found->get();
}

Result<const FragmentSamples*> Movie::fragments() const {
  if (!opened_.tree.first_fragment()) return nullptr;
  if (!fragments_ && fragments_failure_.ok()) {
    Result<std::unique_ptr<FragmentSamples>> samples = FragmentSamples::read(*this);
    if (samples.ok()) {
      fragments_ = samples.take();
    } else {
      fragments_failure_ = samples.take_status();
    }
  }
  if (fragments_failure_.ok()) return fragments_.get();
  return Status(fragments_failure_.code(), fragments_failure_.message());
}

MovieHeaderAtom& Movie::change_header() {
  touch();
  return header_;
}

AtomChanges& Movie::change_atoms() {
  touch();
  return atom_changes_;
}

Result<Annotations*> Movie::annotations() {
  if (!annotations_) {
    TRY_ASSIGN(annotations_,
               Annotations::read({opened_.tree, opened_.tree.movie(), atom_changes_}));
    annotations_->on_change([this] { touch(); });
  }
  return annotations_.get();
}

Status Movie::settle_annotations() const {
  return annotations_ ? annotations_->write({opened_.tree, opened_.tree.movie(), atom_changes_})
                      : Status();
}

void Movie::touch() {
  modified_ = true;
  header_changed_ = true;
  header_.modification_time = current_mac_time();
}

uint32_t Movie::next_track_id() const {
  uint32_t highest = highest_track_id_;
  for (const auto& track : tracks_) highest = std::max(highest, track->id());
  // The header's own idea of the next ID is often too small, or all ones.
  if (header_.next_track_id != UINT32_MAX && header_.next_track_id > highest) {
    return header_.next_track_id;
  }
  if (highest < UINT32_MAX - 1) return highest + 1;
  uint32_t id = 1;
  while (find_track(id) != nullptr) ++id;
  return id;
}

Track& Movie::add_track(std::unique_ptr<Track> track) {
  assert(&track->movie() == this);
  if (track->id() == 0) track->change_header().track_id = next_track_id();
  highest_track_id_ = std::max(highest_track_id_, track->id());
  MovieHeaderAtom& header = change_header();
  tracks_.push_back(std::move(track));
  header.next_track_id = highest_track_id_ < UINT32_MAX - 1 ? highest_track_id_ + 1 : UINT32_MAX;
  return *tracks_.back();
}

void Movie::remove_track(Track& track) {
  highest_track_id_ = std::max(highest_track_id_, track.id());
  const auto found = std::find_if(tracks_.begin(), tracks_.end(),
                                  [&](const auto& each) { return each.get() == &track; });
  assert(found != tracks_.end());
  tracks_.erase(found);
  touch();
}

void Movie::check_invariants() const {
  assert(header_.time_scale > 0);
  for ([[maybe_unused]] const auto& track : tracks_) {
    assert(&track->movie() == this);
    track->check_invariants();
  }
}

}  // namespace toolbox
