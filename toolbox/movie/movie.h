// A movie: its header and its tracks, over the file they were read from.
#pragma once

#include <memory>
#include <vector>

#include "atoms/movie_header.h"
#include "file/movie_file.h"
#include "memory/tokens.h"
#include "movie/fragment_samples.h"
#include "movie/track.h"

namespace toolbox {

/// Owns the file, its tracks and everything below. Does not move, so that references to it stay
/// right.
class Movie {
 public:
  /// Reads the movie of an opened file: headers, edits and references, but no sample table.
  /// Fails: badPublicMovieAtom, featureUnsupported (the text names file, atom path and offset),
  /// memFullErr, ioErr, eofErr.
  static Result<std::unique_ptr<Movie>> load(OpenedMovie opened);

  Movie(const Movie&) = delete;
  Movie& operator=(const Movie&) = delete;

  const OpenedMovie& opened() const { return opened_; }
  const MovieHeaderAtom& header() const { return header_; }

  /// Units a second, never 0.
  uint32_t time_scale() const { return header_.time_scale; }

  /// The largest end of any track, movie ticks.
  int64_t duration() const;

  const std::vector<std::unique_ptr<Track>>& tracks() const { return tracks_; }

  /// The first track with that ID; null for 0 and when there is none.
  Track* find_track(uint32_t id) const;

  /// The samples in the fragments of the file, read when first asked; null when it has none.
  /// Fails: as FragmentSamples::read; each time again, without reading again.
  Result<const FragmentSamples*> fragments() const;

  Token token() { return reference_.token(Kind::kMovie, this); }

  void check_invariants() const;

 private:
  explicit Movie(OpenedMovie opened) : opened_(std::move(opened)) {}

  OpenedMovie opened_;  // outlives what borrows from it
  MovieHeaderAtom header_;
  mutable std::unique_ptr<FragmentSamples> fragments_;  // so do these
  mutable Status fragments_failure_;
  std::vector<std::unique_ptr<Track>> tracks_;
  Reference reference_;
};

}  // namespace toolbox
