// Reads a track from the atoms of its file.
#include <algorithm>

#include "atoms/edit_list.h"
#include "atoms/read_atom.h"
#include "movie/movie.h"
#include "movie/track.h"

namespace toolbox {

namespace {

Result<EditList> load_edits(const AtomTree& tree, AtomIndex trak) {
  const AtomIndex elst = tree.find_path(trak, {four_cc("edts"), four_cc("elst")});
  if (elst == kNoAtom) return EditList();
  TRY_ASSIGN(const EditListAtom atom, read_atom<EditListAtom>(tree, elst));
  std::vector<Edit> edits;
  edits.reserve(atom.entries.size());
  for (const EditListAtom::Entry& entry : atom.entries) {
    edits.push_back({.duration = clamped_unsigned_time(entry.length),
                     .media_start = std::min(entry.media_start, kTimeLimit),
                     .rate = entry.rate});
  }
  return EditList(std::move(edits));
}

Result<TrackReferences> load_references(const AtomTree& tree, AtomIndex trak) {
  TrackReferences references;
  const AtomIndex tref = tree.find_child(trak, four_cc("tref"));
  if (tref == kNoAtom) return references;
  for (AtomIndex child = tree.node(tref).first_child; child != kNoAtom;
       child = tree.node(child).next_sibling) {
    TRY_ASSIGN(TrackReferenceAtom atom, read_atom<TrackReferenceAtom>(tree, child));
    references.lists.push_back({tree.node(child).type, std::move(atom.track_ids)});
  }
  return references;
}

}  // namespace

Result<std::unique_ptr<Track>> Track::load(Movie& movie, const AtomTree& tree, AtomIndex trak) {
  std::unique_ptr<Track> track(new Track(movie, trak));
  TRY_ASSIGN(std::optional<TrackHeaderAtom> header, read_child<TrackHeaderAtom>(tree, trak));
  if (header) track->header_ = std::move(*header);
  TRY_ASSIGN(track->edits_, load_edits(tree, trak));
  TRY_ASSIGN(track->references_, load_references(tree, trak));
  if (const AtomIndex mdia = tree.find_child(trak, four_cc("mdia")); mdia != kNoAtom) {
    TRY_ASSIGN(track->media_, Media::load(*track, tree, mdia));
  }
  return track;
}

}  // namespace toolbox
