#include "movie/copy_track.h"

#include <algorithm>
#include <array>

#include "base/mac_time.h"
#include "movie/movie.h"
#include "movie/new_media.h"

namespace toolbox {

namespace {

/// Properties of a track that stand in atoms of their own and mean the same in any movie.
constexpr std::array kTrackAtoms = {four_cc("clip"), four_cc("tapt"), four_cc("load"),
                                    four_cc("udta"), four_cc("meta")};

/// Atoms beside the media's own header that say nothing of it.
constexpr std::array kNotOfHeader = {four_cc("hdlr"), four_cc("dinf"), four_cc("stbl")};

/// Calls visit(type, bytes) for the children of an atom as they are after their changes.
template <class Wants, class Visit>
Status for_each_child(const Movie& movie, AtomIndex parent, const AtomChanges& changes, Wants wants,
                      Visit visit) {
  const AtomTree& tree = movie.opened().tree;
  for (AtomIndex child = parent == kNoAtom ? kNoAtom : tree.node(parent).first_child;
       child != kNoAtom; child = tree.node(child).next_sibling) {
    const AtomNode& node = tree.node(child);
    const bool is_first = tree.find_child(parent, node.type) == child;
    if (!wants(node.type) || !is_first || changes.find(node.type) != nullptr) continue;
    const ByteRange whole = tree.whole(child);
    Bytes bytes(whole.size);
    TRY(whole.source->read(whole.offset, bytes));
    visit(node.type, std::move(bytes));
  }
  for (const AtomChanges::Change& change : changes.list()) {
    if (change.atom && wants(change.type)) visit(change.type, *change.atom);
  }
  return {};
}

void copy_header(const Track& source, Track& track) {
  TrackHeaderAtom& header = track.change_header();
  header = source.header();
  header.track_id = 0;
  header.duration = 0;
  // Which tracks stand for one another is a matter of the other movie.
  header.alternate_group = 0;
  header.creation_time = header.modification_time = current_mac_time();
}

Status copy_media_header(const Media& source, Media& media) {
  media.change_header().language = source.header().language;
  media.change_header().quality = source.header().quality;
  media.change_handler().set_name(source.handler_description().name());
  AtomChanges& atoms = media.change_info_atoms();
  // The header of the type that the source has takes the place of the one that new media get.
  for (const FourCC type : {four_cc("vmhd"), four_cc("smhd"), four_cc("gmhd")}) atoms.remove(type);
  const AtomTree& tree = source.track().movie().opened().tree;
  const AtomIndex minf =
      source.atom() == kNoAtom ? kNoAtom : tree.find_child(source.atom(), four_cc("minf"));
  const auto is_of_header = [](FourCC type) {
    return std::find(kNotOfHeader.begin(), kNotOfHeader.end(), type) == kNotOfHeader.end();
  };
  return for_each_child(source.track().movie(), minf, source.info_atom_changes(), is_of_header,
                        [&](FourCC type, Bytes bytes) { atoms.replace(type, std::move(bytes)); });
}

}  // namespace

Result<std::unique_ptr<Track>> copy_without_samples(const Track& source, Movie& movie) {
  std::unique_ptr<Track> track = Track::create(movie);
  copy_header(source, *track);
  const auto is_property = [](FourCC type) {
    return std::find(kTrackAtoms.begin(), kTrackAtoms.end(), type) != kTrackAtoms.end();
  };
  TRY(for_each_child(
      source.movie(), source.atom(), source.atom_changes(), is_property,
      [&](FourCC type, Bytes bytes) { track->change_atoms().replace(type, std::move(bytes)); }));
  const Media& media = *source.media();
  TRY_ASSIGN(Media * made, add_media(*track, media.type(), media.time_scale(), {}));
  TRY(copy_media_header(media, *made));
  return track;
}

}  // namespace toolbox
