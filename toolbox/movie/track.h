// A track: its header, its edits, its references to other tracks, and the media that it shows.
#pragma once

#include <memory>
#include <optional>

#include "atoms/track_header.h"
#include "file/atom_tree.h"
#include "memory/tokens.h"
#include "movie/edit_list.h"
#include "movie/edit_timeline.h"
#include "movie/media.h"
#include "movie/track_references.h"

namespace toolbox {

class Movie;

class Track {
 public:
  /// Reads the track of a `trak` atom. A missing header gives a track with ID 0, a missing `mdia`
  /// one without media. Fails: as Movie::load.
  static Result<std::unique_ptr<Track>> load(Movie& movie, const AtomTree& tree, AtomIndex trak);

  Track(const Track&) = delete;
  Track& operator=(const Track&) = delete;

  Movie& movie() const { return *movie_; }
  const TrackHeaderAtom& header() const { return header_; }
  AtomIndex atom() const { return atom_; }

  /// 0 in damaged files, and not always unique there.
  uint32_t id() const { return header_.track_id; }
  bool enabled() const { return (header_.flags & TrackHeaderAtom::kEnabled) != 0; }

  /// Null for a track without media.
  Media* media() const { return media_.get(); }

  const EditList& edits() const { return edits_; }
  const TrackReferences& references() const { return references_; }

  /// The edits in their places; worked out when first asked.
  const EditTimeline& timeline() const;

  /// Movie ticks, leading empty time included.
  int64_t duration() const { return timeline().duration(); }

  Token token() { return reference_.token(Kind::kTrack, this); }

  void check_invariants() const;

 private:
  Track(Movie& movie, AtomIndex atom) : movie_(&movie), atom_(atom) {}

  Movie* movie_;
  AtomIndex atom_;
  TrackHeaderAtom header_;
  EditList edits_;
  TrackReferences references_;
  std::unique_ptr<Media> media_;
  mutable std::optional<EditTimeline> timeline_;
  Reference reference_;
};

}  // namespace toolbox
