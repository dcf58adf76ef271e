// The movie atom of a movie as it is now: what did not change is copied as it stands in the file.
#pragma once

#include "movie/movie.h"
#include "saving/atom_pieces.h"
#include "saving/other_files.h"

namespace toolbox {

/// What a composed movie atom is for.
struct Composition {
  /// Where media data will lie. Borrowed by the pieces.
  const OffsetMap* map = nullptr;

  /// The samples in fragments become samples of the movie atom, and nothing is said of fragments
  /// any more.
  bool is_flat = false;

  /// What is written of media data in other files; null when its place stays. Borrowed likewise.
  const OtherFilesData* other_files = nullptr;
};

/// The whole `moov` atom. The pieces borrow the movie, its file and the map.
///
/// A movie that was not modified gives the very bytes of its file (those of the unpacked atom, if
/// it was compressed). In a changed container every child that did not change is copied in its
/// place; what has no place yet goes in front of the child that it belongs before, or behind the
/// last. Headers take the wide version only when a value needs it, or when they had it; so do
/// offset tables.
///
/// Fails: what reading the tables fails with; cantPutPublicMovieAtom when samples lie in a part of
/// the file that the map does not keep, or an atom would pass 4 GiB.
Result<AtomPieces> compose_movie(const Movie& movie, const Composition& composition);

}  // namespace toolbox
