// A movie: its header and its tracks, over the file they were read from.
#pragma once

#include <memory>
#include <vector>

#include "atoms/movie_header.h"
#include "file/movie_file.h"
#include "memory/tokens.h"
#include "metadata/annotations.h"
#include "movie/atom_changes.h"
#include "movie/external_files.h"
#include "movie/fragment_samples.h"
#include "movie/pending_data.h"
#include "movie/track.h"

namespace toolbox {

/// What a movie knows only as long as it is open.
struct SessionProperties {
  bool preserves_pitch = false;            // when the rate changes
  float pitch_cents = 0;                   // how much higher the sound is played
  bool copies_samples = false;             // of other movies that are put into this one
  FourCC aperture_mode = four_cc("clas");  // which size tracks report
  std::optional<int64_t> time;             // movie ticks; nothing until somebody moves it
};

/// Owns the file, its tracks and everything below. Does not move, so that references to it stay
/// right.
class Movie {
 public:
  /// Reads the movie of an opened file: headers, edits and references, but no sample table.
  /// Fails: badPublicMovieAtom, featureUnsupported (the text names file, atom path and offset),
  /// memFullErr, ioErr, eofErr.
  static Result<std::unique_ptr<Movie>> load(OpenedMovie opened);

  /// A new movie without tracks, in the classic flavour; its file is a little memory without a name
  /// until it is saved. REQUIRES: time_scale > 0. Fails: memFullErr.
  static Result<std::unique_ptr<Movie>> create(uint32_t time_scale);

  Movie(const Movie&) = delete;
  Movie& operator=(const Movie&) = delete;

  const OpenedMovie& opened() const { return opened_; }
  const MovieHeaderAtom& header() const { return header_; }

  /// Units a second, never 0.
  uint32_t time_scale() const { return header_.time_scale; }

  /// The largest end of any track, movie ticks.
  int64_t duration() const;

  /// Where the movie stands: where it was moved to, else where it was when it was saved; from 0 to
  /// duration(), movie ticks.
  int64_t current_time() const;

  const std::vector<std::unique_ptr<Track>>& tracks() const { return tracks_; }

  /// The first track with that ID; null for 0 and when there is none.
  Track* find_track(uint32_t id) const;

  /// The samples in the fragments of the file, read when first asked; null when it has none.
  /// Fails: as FragmentSamples::read; each time again, without reading again.
  Result<const FragmentSamples*> fragments() const;

  /// The header, about to be changed.
  MovieHeaderAtom& change_header();
  bool header_changed() const { return header_changed_; }

  /// Children of the movie atom other than `mvhd`, the tracks and `mvex`: user data, metadata, ...
  AtomChanges& change_atoms();
  const AtomChanges& atom_changes() const { return atom_changes_; }

  /// User data and metadata, read when first asked for. Fails: as Annotations::read.
  Result<Annotations*> annotations();

  /// Puts what changed in them into atom_changes(); to be called before that is used to write.
  /// Fails: as Annotations::write.
  Status settle_annotations() const;

  /// Puts a track behind the last one; its ID is set to the next free one when it is 0.
  Track& add_track(std::unique_ptr<Track> track);

  /// Takes a track out; it dies, and references to it from other tracks stay in place as holes.
  void remove_track(Track& track);

  /// An ID that no track has and that none had since the file was opened.
  uint32_t next_track_id() const;

  /// Media data that was added and is not in the file yet.
  PendingData& pending() { return pending_; }
  const PendingData& pending() const { return pending_; }

  /// The files other than its own that data references of the movie lead to.
  ExternalFiles& external_files() const { return external_files_; }

  /// Notes that something in the movie is no longer as in its file, and sets the modification time.
  void touch();

  /// Whether anything changed since the movie was read, made or saved.
  bool is_modified() const { return modified_; }

  /// Takes the file that was just written from this movie in place of the one it was read from: the
  /// same objects, no longer modified. What was read of the old file is given up.
  /// REQUIRES: `saved` has the movie's tracks in their order. Fails: as load(); the movie is then
  /// as before.
  Status rebase(OpenedMovie saved);

  SessionProperties& session() { return session_; }
  const SessionProperties& session() const { return session_; }

  Token token() { return reference_.token(Kind::kMovie, this); }

  void check_invariants() const;

 private:
  explicit Movie(OpenedMovie opened) : opened_(std::move(opened)) {}

  OpenedMovie opened_;  // outlives what borrows from it
  MovieHeaderAtom header_;
  mutable std::unique_ptr<FragmentSamples> fragments_;  // so do these
  mutable Status fragments_failure_;
  std::vector<std::unique_ptr<Track>> tracks_;
  PendingData pending_;
  mutable ExternalFiles external_files_;  // opened when first asked
  mutable AtomChanges atom_changes_;
  std::unique_ptr<Annotations> annotations_;
  SessionProperties session_;
  bool header_changed_ = false;
  bool modified_ = false;
  uint32_t highest_track_id_ = 0;  // ever seen
  Reference reference_;
};

}  // namespace toolbox
