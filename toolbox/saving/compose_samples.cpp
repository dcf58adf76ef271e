// Composes sample tables: copied where they stand, mapped where media data moves, written anew
// where samples changed.
#include <array>

#include "atoms/sample_description.h"
#include "atoms/sample_tables.h"
#include "saving/compose_parts.h"

namespace toolbox::composing {

namespace {

/// The tables that describe samples and that this program writes, in the order it writes them.
constexpr std::array kWritten = {four_cc("stsd"), four_cc("stts"), four_cc("ctts"), four_cc("stss"),
                                 four_cc("stsc"), four_cc("stsz"), four_cc("stco")};

/// Tables with something for each sample, which are wrong once there are other samples.
constexpr std::array kPerSample = {four_cc("stps"), four_cc("stsh"), four_cc("sdtp"),
                                   four_cc("stdp"), four_cc("padb"), four_cc("sbgp"),
                                   four_cc("csgp"), four_cc("subs"), four_cc("saiz"),
                                   four_cc("saio"), four_cc("cslg")};

template <size_t n>
bool is_among(const std::array<FourCC, n>& types, FourCC type) {
  return std::find(types.begin(), types.end(), type) != types.end();
}

/// The table that takes the place of another form of it.
FourCC written_form(FourCC type) {
  if (type == four_cc("co64")) return four_cc("stco");
  if (type == four_cc("stz2")) return four_cc("stsz");
  return type;
}

void begin_table(AtomPieces& pieces, FourCC type, uint64_t payload_bytes, uint32_t version = 0) {
  pieces.number(static_cast<uint32_t>(12 + payload_bytes));
  pieces.number(type);
  pieces.number(version << 24);
}

void compose_rows(AtomPieces& pieces, FourCC type, const TableView& rows, uint32_t version = 0) {
  begin_table(pieces, type, 4 + rows.row_count() * rows.row_size(), version);
  pieces.number(static_cast<uint32_t>(rows.row_count()));
  pieces.copy_rows(rows);
}

void compose_sizes(AtomPieces& pieces, const SampleTables& tables) {
  const SizeTable& sizes = tables.sizes;
  const uint64_t row_bytes = sizes.rows.row_count() * sizes.rows.row_size();
  const bool is_packed = sizes.uniform_size == 0 && sizes.bits != 32;
  begin_table(pieces, is_packed ? four_cc("stz2") : four_cc("stsz"), 8 + row_bytes);
  pieces.number(is_packed ? sizes.bits : sizes.uniform_size);
  pieces.number(tables.times.sample_count);
  if (sizes.uniform_size == 0) pieces.copy_rows(sizes.rows);
}

Status compose_descriptions(AtomPieces& pieces, const Media& media) {
  TRY_ASSIGN(const std::vector<Bytes>* entries, media.descriptions());
  SampleDescriptionAtom list;
  list.entries = *entries;
  pieces.atom(list);
  return {};
}

/// Whether offsets need 64 bits after mapping. Every offset is looked at, so that media data in a
/// part of the file that is not kept is noticed here.
Result<bool> needs_wide_offsets(const Composer& composer, const Media& media,
                                const TableView& rows) {
  bool wide = false;
  for (uint64_t i = 0; i < rows.row_count(); ++i) {
    TRY_ASSIGN(const uint8_t* row, rows.row(i));
    const uint64_t old =
        rows.row_size() == 8 ? load_big_endian<uint64_t>(row) : load_big_endian<uint32_t>(row);
    const uint64_t offset = composer.map().at(old);
    if (offset == OffsetMap::kLost && old != OffsetMap::kLost) {
      return Status(cantPutPublicMovieAtom,
                    composer.movie.opened().file->name() + ": track " +
                        std::to_string(media.track().id()) + " keeps media data at byte " +
                        std::to_string(old) +
                        ", inside an atom that is not media data; save in place instead");
    }
    wide = wide || offset > UINT32_MAX;
  }
  return wide;
}

Status compose_offsets(Composer& composer, const Media& media, const SampleTables& tables) {
  const auto* const others = other_tables(composer, media);
  const TableView& rows = others != nullptr ? others->chunk_offsets : tables.chunk_offsets;
  TRY_ASSIGN(const bool needs_wide, needs_wide_offsets(composer, media, rows));
  const AtomTree& tree = composer.movie.opened().tree;
  const bool was_wide =
      media.atom() != kNoAtom &&
      tree.find_path(media.atom(), {four_cc("minf"), four_cc("stbl"), four_cc("co64")}) != kNoAtom;
  const uint8_t width = needs_wide || was_wide ? 8 : 4;
  begin_table(composer.pieces, width == 8 ? four_cc("co64") : four_cc("stco"),
              4 + rows.row_count() * width);
  composer.pieces.number(static_cast<uint32_t>(rows.row_count()));
  composer.pieces.offsets(rows, composer.map(), width);
  return {};
}

/// Auxiliary data outside of chunks: offsets in a table of their own.
Status compose_auxiliary_offsets(Composer& composer, AtomIndex saio) {
  const AtomTree& tree = composer.movie.opened().tree;
  return tree.failure(saio, cantPutPublicMovieAtom, "", tree.node(saio).offset,
                      "the auxiliary data of samples cannot be moved; save in place instead");
}

bool offers(const SampleTables& tables, FourCC type) {
  if (type == four_cc("ctts")) return tables.times.offsets.row_count() > 0;
  if (type == four_cc("stss")) return tables.has_sync;
  return true;
}

Status compose_table(Composer& composer, const Media& media, const SampleTables& tables,
                     FourCC type) {
  AtomPieces& pieces = composer.pieces;
  if (!offers(tables, type)) return {};
  if (type == four_cc("stsd")) return compose_descriptions(pieces, media);
  if (type == four_cc("stts")) compose_rows(pieces, type, tables.times.deltas);
  // Offsets of either sign are read alike from both versions; only version 1 allows them.
  if (type == four_cc("ctts")) compose_rows(pieces, type, tables.times.offsets, 1);
  if (type == four_cc("stss")) compose_rows(pieces, type, tables.sync);
  if (type == four_cc("stsc")) compose_rows(pieces, type, tables.chunk_runs);
  if (type == four_cc("stsz")) compose_sizes(pieces, tables);
  if (type == four_cc("stco")) return compose_offsets(composer, media, tables);
  return {};
}

}  // namespace

Status compose_samples(Composer& composer, const Media& media, AtomIndex stbl) {
  const bool is_rewritten =
      stbl == kNoAtom || media.samples_changed() || composer.composition.is_flat;
  const bool is_moved = is_rewritten || !composer.map().keeps_file();
  if (!is_moved && !media.descriptions_changed()) {
    copy_atom(composer, stbl);
    return {};
  }
  const SampleTable* table = nullptr;
  if (is_moved) {
    TRY_ASSIGN(table, media.samples());
  }
  const auto mark = composer.pieces.begin(four_cc("stbl"));
  std::vector<FourCC> written;
  const auto visit = [&](AtomIndex child, FourCC type, bool& done) -> Status {
    const FourCC form = written_form(type);
    const bool is_description = form == four_cc("stsd");
    const bool is_due = is_description ? media.descriptions_changed() : is_rewritten;
    done = true;
    if (is_rewritten && is_among(kPerSample, type)) return {};
    if (is_among(kWritten, form) && is_due) {
      if (std::find(written.begin(), written.end(), form) != written.end()) return {};
      written.push_back(form);
      if (is_description) return compose_descriptions(composer.pieces, media);
      return compose_table(composer, media, table->tables(), form);
    }
    if (is_moved && form == four_cc("stco")) {
      return compose_offsets(composer, media, table->tables());
    }
    if (is_moved && type == four_cc("saio")) return compose_auxiliary_offsets(composer, child);
    done = false;
    return {};
  };
  TRY(compose_children(composer, stbl, AtomChanges(), visit));
  const AtomTree& tree = composer.movie.opened().tree;
  for (const FourCC type : kWritten) {
    const bool stands = stbl != kNoAtom && tree.find_child(stbl, type) != kNoAtom;
    if (!is_rewritten || (stands && type == four_cc("stsd"))) continue;
    if (std::find(written.begin(), written.end(), type) != written.end()) continue;
    TRY(compose_table(composer, media, table->tables(), type));
  }
  composer.pieces.end(mark);
  return {};
}

}  // namespace toolbox::composing
