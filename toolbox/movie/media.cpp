#include "movie/media.h"

#include <cassert>

#include "atoms/data_references.h"
#include "atoms/read_atom.h"
#include "atoms/sample_description.h"
#include "movie/load_samples.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

// The entries of a list of atoms at the end of `path`, with damage called by its name.
template <class Atom>
Result<std::vector<Bytes>> load_entries(const AtomTree& tree, AtomIndex mdia,
                                        std::initializer_list<FourCC> path, OSErr damage) {
  const AtomIndex index = tree.find_path(mdia, path);
  if (index == kNoAtom) return std::vector<Bytes>();
  Result<Atom> atom = read_atom<Atom>(tree, index);
  if (atom.ok()) return std::move(atom.value().entries);
  if (atom.status().code() == badPublicMovieAtom) return Status(damage, atom.status().message());
  return atom.take_status();
}

}  // namespace

Result<const SampleTable*> Media::samples() const {
  if (!samples_) {
    const AtomIndex stbl = tree_->find_path(atom_, {four_cc("minf"), four_cc("stbl")});
    SampleTables tables;
    if (stbl != kNoAtom) {
      TRY_ASSIGN(tables, load_sample_tables(*tree_, stbl));
    }
    TRY_ASSIGN(const FragmentSamples* fragments, track_->movie().fragments());
    const SampleTables* joined = fragments == nullptr ? nullptr : fragments->find_tables(*track_);
    if (joined != nullptr) tables = *joined;
    samples_ = std::make_unique<SampleTable>(std::move(tables));
  }
  return samples_.get();
}

Result<int64_t> Media::duration() const {
  TRY_ASSIGN(const SampleTable* table, samples());
  return table->duration();
}

int64_t Media::likely_duration() const {
  const int64_t stated = header_.duration_unknown() ? 0 : clamped_unsigned_time(header_.duration);
  const Result<const SampleTable*> table = samples();
  if (!table.ok() || table.value()->sample_count() == 0) return stated;
  // Headers of fragmented files state what the movie atom alone holds, or nothing.
  const bool is_fragmented = tree_->first_fragment().has_value();
  if (stated != 0 && !is_fragmented && !table.value()->duration_is_cheap()) return stated;
  const Result<int64_t> sum = table.value()->duration();
  return sum.ok() ? sum.value() : stated;
}

Result<const std::vector<Bytes>*> Media::descriptions() const {
  if (!descriptions_) {
    TRY_ASSIGN(descriptions_,
               load_entries<SampleDescriptionAtom>(
                   *tree_, atom_, {four_cc("minf"), four_cc("stbl"), four_cc("stsd")},
                   invalidSampleDescription));
  }
  return &*descriptions_;
}

Result<const std::vector<Bytes>*> Media::data_references() const {
  if (!data_references_) {
    TRY_ASSIGN(
        data_references_,
        load_entries<DataReferenceAtom>(
            *tree_, atom_, {four_cc("minf"), four_cc("dinf"), four_cc("dref")}, invalidDataRef));
  }
  return &*data_references_;
}

Status Media::check() const {
  TRY(samples().take_status());
  TRY(descriptions().take_status());
  return data_references().take_status();
}

void Media::check_invariants() const {
  assert(header_.time_scale > 0);
  assert(&handler_.media() == this);
}

}  // namespace toolbox
