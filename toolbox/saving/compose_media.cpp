// Composes media: their headers, data references and what their type adds.
#include "atoms/data_references.h"
#include "movie/time_math.h"
#include "saving/compose_parts.h"

namespace toolbox::composing {

namespace {

Status compose_header(Composer& composer, const Media& media) {
  MediaHeaderAtom header = media.header();
  if (composer.composition.is_flat || media.samples_changed()) {
    TRY_ASSIGN(const int64_t duration, media.duration());
    header.duration = static_cast<uint64_t>(duration);
  }
  composer.pieces.atom(header);
  return {};
}

Status compose_data_references(Composer& composer, const Media& media, AtomIndex dinf) {
  DataReferenceAtom list;
  if (const auto* others = other_tables(composer, media)) {
    list.entries = others->data_references;
  } else {
    TRY_ASSIGN(const std::vector<Bytes>* entries, media.data_references());
    list.entries = *entries;
  }
  const auto mark = composer.pieces.begin(four_cc("dinf"));
  bool written = false;
  const auto visit = [&](AtomIndex, FourCC type, bool& done) -> Status {
    done = type == four_cc("dref") && !std::exchange(written, true);
    if (done) composer.pieces.atom(list);
    return {};
  };
  TRY(compose_children(composer, dinf, AtomChanges(), visit));
  if (!written) composer.pieces.atom(list);
  composer.pieces.end(mark);
  return {};
}

Status compose_info(Composer& composer, const Media& media, AtomIndex minf) {
  const AtomTree& tree = composer.movie.opened().tree;
  const bool is_new = minf == kNoAtom;
  const auto mark = composer.pieces.begin(four_cc("minf"));
  bool references_due = media.data_references_changed() || other_tables(composer, media) != nullptr;
  bool samples_due = is_new || tree.find_child(minf, four_cc("stbl")) == kNoAtom;
  const auto visit = [&](AtomIndex child, FourCC type, bool& done) -> Status {
    done = true;
    if (type == four_cc("dinf") && references_due) {
      references_due = false;
      return compose_data_references(composer, media, child);
    }
    if (type == four_cc("stbl")) return compose_samples(composer, media, child);
    done = false;
    return {};
  };
  TRY(compose_children(composer, minf, media.info_atom_changes(), visit));
  if (references_due) TRY(compose_data_references(composer, media, kNoAtom));
  if (samples_due) TRY(compose_samples(composer, media, kNoAtom));
  composer.pieces.end(mark);
  return {};
}

}  // namespace

Status compose_media(Composer& composer, const Media& media) {
  const AtomTree& tree = composer.movie.opened().tree;
  const AtomIndex mdia = media.atom();
  if (mdia != kNoAtom && !media.is_modified() && composer.copies_tables()) {
    copy_atom(composer, mdia);
    return {};
  }
  const auto mark = composer.pieces.begin(four_cc("mdia"));
  const auto has_child = [&](FourCC type) {
    return mdia != kNoAtom && tree.find_child(mdia, type) != kNoAtom;
  };
  if (!has_child(four_cc("mdhd"))) TRY(compose_header(composer, media));
  if (!has_child(four_cc("hdlr")) && (mdia == kNoAtom || media.handler_changed())) {
    composer.pieces.atom(media.handler_description());
  }
  const auto visit = [&](AtomIndex child, FourCC type, bool& done) -> Status {
    done = true;
    if (type == four_cc("mdhd") && (media.header_changed() || composer.composition.is_flat)) {
      return compose_header(composer, media);
    }
    if (type == four_cc("hdlr") && media.handler_changed()) {
      composer.pieces.atom(media.handler_description());
      return {};
    }
    if (type == four_cc("minf")) return compose_info(composer, media, child);
    done = false;
    return {};
  };
  TRY(compose_children(composer, mdia, AtomChanges(), visit));
  if (!has_child(four_cc("minf")) && mdia == kNoAtom) {
    TRY(compose_info(composer, media, kNoAtom));
  }
  composer.pieces.end(mark);
  return {};
}

}  // namespace toolbox::composing
