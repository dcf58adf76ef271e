// A track: its header, its edits, its references to other tracks, and the media that it shows.
#pragma once

#include <memory>
#include <optional>

#include "atoms/track_header.h"
#include "file/atom_tree.h"
#include "memory/tokens.h"
#include "metadata/annotations.h"
#include "movie/atom_changes.h"
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

  /// A new track without media, which shows nothing: enabled, in the movie, its preview and its
  /// poster, dated now, of identity matrix, no size, no volume and no ID yet. Movie::add_track()
  /// puts it in place.
  static std::unique_ptr<Track> create(Movie& movie);

  /// A copy that shares the media's samples; it has no ID yet. Movie::add_track() puts it in place.
  /// Fails: as Media::samples().
  Result<std::unique_ptr<Track>> clone() const;

  Track(const Track&) = delete;
  Track& operator=(const Track&) = delete;

  Movie& movie() const { return *movie_; }
  const TrackHeaderAtom& header() const { return header_; }

  /// The `trak` atom that the track was read from and that gives what is not changed; kNoAtom for a
  /// new track. A clone has the atom of its original.
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

  /// The header, about to be changed; the modification time is set.
  TrackHeaderAtom& change_header();
  bool header_changed() const { return header_changed_; }

  /// Takes new edits in place of the old ones. Trailing empty edits are kept until the next
  /// save, which leaves them out.
  void set_edits(EditList edits);
  bool edits_changed() const { return edits_changed_; }

  TrackReferences& change_references();
  bool references_changed() const { return references_changed_; }

  /// Children of the `trak` atom other than `tkhd`, `edts`, `tref` and `mdia`: user data, metadata,
  /// clip, apertures, ...
  AtomChanges& change_atoms();
  const AtomChanges& atom_changes() const { return atom_changes_; }

  /// User data and metadata, read when first asked for. Fails: as Annotations::read.
  Result<Annotations*> annotations();

  /// Puts what changed in them into atom_changes(); to be called before that is used to write.
  /// Fails: as Annotations::write.
  Status settle_annotations() const;

  /// Gives the track a media, or none. The edits stay.
  void set_media(std::unique_ptr<Media> media);

  /// Notes that the track changed. What the media's duration decides (an implicit edit) is worked
  /// out anew.
  void touch();

  /// Whether anything of the track or its media differs from its atom.
  bool is_modified() const { return modified_; }

  Token token() { return reference_.token(Kind::kTrack, this); }

  void check_invariants() const;

 private:
  friend class Movie;

  /// Takes the state of the same track as read from a saved file.
  void rebase(Track& saved);

  Track(Movie& movie, AtomIndex atom) : movie_(&movie), atom_(atom) {}

  Movie* movie_;
  AtomIndex atom_;
  TrackHeaderAtom header_;
  EditList edits_;
  TrackReferences references_;
  std::unique_ptr<Media> media_;
  mutable std::optional<EditTimeline> timeline_;
  mutable AtomChanges atom_changes_;
  std::unique_ptr<Annotations> annotations_;
  bool header_changed_ = false;
  bool edits_changed_ = false;
  bool references_changed_ = false;
  bool modified_ = false;
  Reference reference_;
};

}  // namespace toolbox
