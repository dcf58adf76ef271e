#include "movie/load_samples.h"

#include "atoms/read_atom.h"
#include "atoms/sample_tables.h"

namespace toolbox {

namespace {

// The head of a table, with damage called by its name.
template <class Atom>
Result<std::optional<Atom>> read_table(const AtomTree& tree, AtomIndex stbl) {
  Result<std::optional<Atom>> atom = read_child<Atom>(tree, stbl);
  if (atom.ok() || atom.status().code() != badPublicMovieAtom) return atom;
  return Status(invalidSampleTable, atom.status().message());
}

// The rows of a table; an empty view when the atom is missing.
template <class Atom>
Result<TableView> read_rows(const AtomTree& tree, AtomIndex stbl) {
  TRY_ASSIGN(std::optional<Atom> atom, read_table<Atom>(tree, stbl));
  return atom ? std::move(atom->rows) : TableView();
}

Status read_sizes(const AtomTree& tree, AtomIndex stbl, SampleTables& tables) {
  TRY_ASSIGN(std::optional<SampleSizeAtom> sizes, read_table<SampleSizeAtom>(tree, stbl));
  if (sizes) {
    tables.times.sample_count = sizes->sample_count;
    tables.sizes = {sizes->uniform_size, 32, std::move(sizes->rows)};
    return {};
  }
  TRY_ASSIGN(std::optional<CompactSampleSizeAtom> packed,
             read_table<CompactSampleSizeAtom>(tree, stbl));
  if (packed) {
    tables.times.sample_count = packed->sample_count;
    tables.sizes = {0, packed->field_size, std::move(packed->packed)};
  }
  return {};
}

}  // namespace

Result<SampleTables> load_sample_tables(const AtomTree& tree, AtomIndex stbl) {
  SampleTables tables;
  TRY(read_sizes(tree, stbl, tables));
  TRY_ASSIGN(tables.times.deltas, read_rows<TimeToSampleAtom>(tree, stbl));
  TRY_ASSIGN(tables.times.offsets, read_rows<CompositionOffsetAtom>(tree, stbl));
  tables.has_sync = tree.find_child(stbl, four_cc("stss")) != kNoAtom;
  TRY_ASSIGN(tables.sync, read_rows<SyncSampleAtom>(tree, stbl));
  TRY_ASSIGN(tables.chunk_runs, read_rows<SampleToChunkAtom>(tree, stbl));
  if (tree.find_child(stbl, four_cc("stco")) != kNoAtom) {
    TRY_ASSIGN(tables.chunk_offsets, read_rows<ChunkOffsetAtom>(tree, stbl));
  } else {
    TRY_ASSIGN(tables.chunk_offsets, read_rows<WideChunkOffsetAtom>(tree, stbl));
  }
  return tables;
}

}  // namespace toolbox
