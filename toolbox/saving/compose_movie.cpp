#include <algorithm>

#include "saving/compose.h"
#include "saving/compose_parts.h"

namespace toolbox {

namespace {

using composing::Composer;

bool changed_timing(const Track& track) {
  return track.edits_changed() || track.atom() == kNoAtom ||
         (track.media() != nullptr && track.media()->samples_changed());
}

// Whether the movie's length may be another than its header says.
bool changed_timing(const Movie& movie) {
  const AtomTree& tree = movie.opened().tree;
  size_t in_file = 0;
  for (AtomIndex trak = tree.find_child(tree.movie(), four_cc("trak")); trak != kNoAtom;
       trak = tree.find_next(trak, four_cc("trak"))) {
    ++in_file;
  }
  return in_file != movie.tracks().size() ||
         std::any_of(movie.tracks().begin(), movie.tracks().end(),
                     [](const auto& track) { return changed_timing(*track); });
}

void compose_header(Composer& composer) {
  MovieHeaderAtom header = composer.movie.header();
  const bool is_known = composer.composition.is_flat || !header.duration_unknown();
  if (is_known && (composer.composition.is_flat || changed_timing(composer.movie))) {
    header.duration = static_cast<uint64_t>(composer.movie.duration());
  }
  composer.pieces.atom(header);
}

/// Writes the tracks in the movie's order: those that the file has stand in front, in the file's
/// order, new ones and clones behind them.
class TrackWriter {
 public:
  explicit TrackWriter(Composer& composer) : composer_(composer) {}

  /// The track that came from this atom; one that was removed leaves nothing.
  Status write_from(AtomIndex trak) {
    const auto& tracks = composer_.movie.tracks();
    if (next_ == tracks.size() || tracks[next_]->atom() != trak) return {};
    return composing::compose_track(composer_, *tracks[next_++]);
  }

  Status write_rest() {
    const auto& tracks = composer_.movie.tracks();
    while (next_ < tracks.size()) TRY(composing::compose_track(composer_, *tracks[next_++]));
    return {};
  }

 private:
  Composer& composer_;
  size_t next_ = 0;
};

}  // namespace

Result<AtomPieces> compose_movie(const Movie& movie, const Composition& composition) {
  Composer composer{movie, composition, {}};
  const AtomTree& tree = movie.opened().tree;
  const AtomIndex moov = tree.movie();
  if (!movie.is_modified() && composer.copies_tables()) {
    composing::copy_atom(composer, moov);
    return std::move(composer.pieces);
  }
  TRY(movie.settle_annotations());
  const auto mark = composer.pieces.begin(four_cc("moov"));
  if (tree.find_child(moov, four_cc("mvhd")) == kNoAtom) compose_header(composer);
  AtomIndex last_track = kNoAtom;
  for (AtomIndex trak = tree.find_child(moov, four_cc("trak")); trak != kNoAtom;
       trak = tree.find_next(trak, four_cc("trak"))) {
    last_track = trak;
  }
  TrackWriter tracks(composer);
  const auto visit = [&](AtomIndex child, FourCC type, bool& done) -> Status {
    done = true;
    if (type == four_cc("mvhd") && (movie.header_changed() || composition.is_flat)) {
      compose_header(composer);
      if (last_track == kNoAtom) TRY(tracks.write_rest());
    } else if (type == four_cc("trak")) {
      TRY(tracks.write_from(child));
      if (child == last_track) TRY(tracks.write_rest());
    } else if (type == four_cc("mvex") && composition.is_flat) {
      return {};
    } else {
      done = false;
    }
    return {};
  };
  TRY(composing::compose_children(composer, moov, movie.atom_changes(), visit));
  TRY(tracks.write_rest());
  composer.pieces.end(mark);
  TRY(composer.pieces.take_status());
  return std::move(composer.pieces);
}

}  // namespace toolbox
