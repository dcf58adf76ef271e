// Composes tracks: their headers, edits, references and media.
#include <algorithm>

#include "atoms/data_references.h"
#include "atoms/edit_list.h"
#include "saving/compose_parts.h"

namespace toolbox::composing {

namespace {

constexpr FourCC kEdits = four_cc("edts");
constexpr FourCC kReferences = four_cc("tref");
constexpr FourCC kMedia = four_cc("mdia");
constexpr FourCC kApertures = four_cc("tapt");

// Whether what the track shows, or how long, may have changed.
bool changed_timing(const Composer& composer, const Track& track) {
  return composer.composition.is_flat || track.edits_changed() || track.atom() == kNoAtom ||
         (track.media() != nullptr && track.media()->samples_changed());
}

void compose_header(Composer& composer, const Track& track) {
  TrackHeaderAtom header = track.header();
  const bool is_known = composer.composition.is_flat || !header.duration_unknown();
  if (is_known && changed_timing(composer, track)) {
    header.duration = static_cast<uint64_t>(track.duration());
  }
  composer.pieces.atom(header);
}

// Empty time behind the last shown edit is not part of the format. A list without entries would
// show the media whole, so that a track that shows nothing of it says so.
std::vector<Edit> edits_to_write(const Track& track) {
  std::vector<Edit> edits = track.edits().edits();
  while (!edits.empty() && edits.back().is_empty()) edits.pop_back();
  const bool shows_nothing = edits.empty() && !track.edits().is_implicit();
  const bool has_media = track.media() != nullptr && track.media()->likely_duration() > 0;
  return shows_nothing && has_media ? EditList::nothing().edits() : edits;
}

Status compose_edits(Composer& composer, const Track& track, AtomIndex edts) {
  const std::vector<Edit> edits = edits_to_write(track);
  EditListAtom list;
  const AtomTree& tree = composer.movie.opened().tree;
  const AtomIndex old = edts == kNoAtom ? kNoAtom : tree.find_child(edts, EditListAtom::kType.type);
  for (const Edit& edit : edits) {
    list.entries.push_back({.length = static_cast<uint64_t>(edit.duration),
                            .media_start = edit.media_start,
                            .rate = edit.rate});
  }
  const auto mark = composer.pieces.begin(kEdits);
  const auto visit = [&](AtomIndex child, FourCC, bool& done) -> Status {
    done = child == old;
    if (done) composer.pieces.atom(list);
    return {};
  };
  TRY(compose_children(composer, edts, AtomChanges(), visit));
  if (old == kNoAtom) composer.pieces.atom(list);
  composer.pieces.end(mark);
  return {};
}

void compose_references(Composer& composer, const Track& track) {
  const auto& lists = track.references().lists;
  if (std::all_of(lists.begin(), lists.end(),
                  [](const TrackReferenceList& list) { return list.track_ids.empty(); })) {
    return;
  }
  const auto mark = composer.pieces.begin(kReferences);
  for (const TrackReferenceList& list : lists) {
    if (list.track_ids.empty()) continue;
    TrackReferenceAtom atom;
    atom.track_ids = list.track_ids;
    composer.pieces.atom(list.type, atom);
  }
  composer.pieces.end(mark);
}

}  // namespace

Status compose_track(Composer& composer, const Track& track) {
  const AtomTree& tree = composer.movie.opened().tree;
  const AtomIndex trak = track.atom();
  if (trak != kNoAtom && !track.is_modified() && composer.copies_tables()) {
    copy_atom(composer, trak);
    return {};
  }
  TRY(track.settle_annotations());
  const bool header_written =
      track.header_changed() || composer.composition.is_flat || trak == kNoAtom;
  bool edits_due = track.edits_changed();
  bool references_due = track.references_changed();
  bool media_due = track.media() != nullptr;
  const auto mark = composer.pieces.begin(four_cc("trak"));
  // What stands in front of the media in every file.
  const auto write_due = [&]() -> Status {
    if (std::exchange(edits_due, false)) TRY(compose_edits(composer, track, kNoAtom));
    if (std::exchange(references_due, false)) compose_references(composer, track);
    return {};
  };
  const auto has_child = [&](FourCC type) {
    return trak != kNoAtom && tree.find_child(trak, type) != kNoAtom;
  };
  // New aperture dimensions stand right behind the header, where players look for them first.
  AtomChanges changes = track.atom_changes();
  const AtomChanges::Change* const apertures = track.atom_changes().find(kApertures);
  const bool apertures_due =
      apertures != nullptr && apertures->atom.has_value() && !has_child(kApertures);
  if (apertures_due) changes.forget(kApertures, 0);
  const auto write_header = [&] {
    compose_header(composer, track);
    if (apertures_due) composer.pieces.raw(*apertures->atom);
  };
  const bool has_header = has_child(four_cc("tkhd"));
  if (!has_header) write_header();
  const bool edits_have_place = has_child(kEdits);
  const bool references_have_place = has_child(kReferences);
  const auto visit = [&](AtomIndex child, FourCC type, bool& done) -> Status {
    done = true;
    if (type == four_cc("tkhd") && header_written) {
      write_header();
    } else if (type == kEdits && track.edits_changed()) {
      if (std::exchange(edits_due, false)) TRY(compose_edits(composer, track, child));
    } else if (type == kReferences && track.references_changed()) {
      if (std::exchange(references_due, false)) compose_references(composer, track);
    } else if (type == kMedia) {
      if (!edits_have_place && std::exchange(edits_due, false)) {
        TRY(compose_edits(composer, track, kNoAtom));
      }
      if (!references_have_place && std::exchange(references_due, false)) {
        compose_references(composer, track);
      }
      if (std::exchange(media_due, false)) TRY(compose_media(composer, *track.media()));
    } else {
      done = false;
    }
    return {};
  };
  if (trak == kNoAtom) {
    TRY(write_due());
    if (std::exchange(media_due, false)) TRY(compose_media(composer, *track.media()));
  }
  TRY(compose_children(composer, trak, changes, visit));
  TRY(write_due());
  if (media_due) TRY(compose_media(composer, *track.media()));
  composer.pieces.end(mark);
  return {};
}

}  // namespace toolbox::composing
