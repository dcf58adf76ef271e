// Reads a movie from the atoms of its file.
#include "atoms/read_atom.h"
#include "movie/movie.h"

namespace toolbox {

Result<std::unique_ptr<Movie>> Movie::load(OpenedMovie opened) {
  std::unique_ptr<Movie> movie(new Movie(std::move(opened)));
  const AtomTree& tree = movie->opened_.tree;
  const AtomIndex moov = tree.movie();
  // A movie atom without a header is one that carries user data only; it opens as a movie without
  // tracks.
  TRY_ASSIGN(std::optional<MovieHeaderAtom> header, read_child<MovieHeaderAtom>(tree, moov));
  if (header) movie->header_ = std::move(*header);
  if (movie->header_.time_scale == 0) movie->header_.time_scale = 600;
  for (AtomIndex trak = tree.find_child(moov, four_cc("trak")); trak != kNoAtom;
       trak = tree.find_next(trak, four_cc("trak"))) {
    TRY_ASSIGN(std::unique_ptr<Track> track, Track::load(*movie, tree, trak));
    movie->tracks_.push_back(std::move(track));
  }
  movie->check_invariants();
  return movie;
}

}  // namespace toolbox
