#include "movie/media.h"

#include <cassert>

#include "atoms/data_references.h"
#include "atoms/read_atom.h"
#include "atoms/sample_description.h"
#include "base/mac_time.h"
#include "movie/appended_samples.h"
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

Media::Media(Track& track, const AtomTree* tree, AtomIndex atom)
    : track_(&track), tree_(tree), atom_(atom), handler_(*this) {}

Media::~Media() = default;

std::unique_ptr<Media> Media::create(Track& track, FourCC type, uint32_t time_scale) {
  assert(time_scale > 0);
  std::unique_ptr<Media> media(new Media(track, nullptr, kNoAtom));
  media->header_.time_scale = time_scale;
  media->header_.creation_time = media->header_.modification_time = current_mac_time();
  media->handler_atom_.subtype = type;
  media->samples_ = std::make_unique<SampleTable>();
  media->descriptions_.emplace();
  media->data_references_.emplace();
  media->header_changed_ = media->handler_changed_ = media->samples_changed_ = true;
  media->descriptions_changed_ = media->data_references_changed_ = media->modified_ = true;
  return media;
}

Result<const SampleTable*> Media::samples() const {
  if (!samples_ && appended_) {
    TRY_ASSIGN(SampleTables tables, appended_->tables());
    samples_ = std::make_unique<SampleTable>(std::move(tables));
  }
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
  if (appended_) return appended_->duration();
  TRY_ASSIGN(const SampleTable* table, samples());
  return table->duration();
}

int64_t Media::likely_duration() const {
  const int64_t stated = header_.duration_unknown() ? 0 : clamped_unsigned_time(header_.duration);
  const Result<const SampleTable*> table = samples();
  if (!table.ok() || table.value()->sample_count() == 0) return stated;
  // Headers of fragmented files state what the movie atom alone holds, or nothing.
  const bool is_fragmented = tree_ != nullptr && tree_->first_fragment().has_value();
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

MediaHeaderAtom& Media::change_header() {
  touch();
  return header_;
}

HandlerAtom& Media::change_handler() {
  handler_changed_ = true;
  touch();
  return handler_atom_;
}

void Media::set_samples(SampleTables tables, std::shared_ptr<const void> owner) {
  samples_ = std::make_unique<SampleTable>(std::move(tables));
  samples_owner_ = std::move(owner);
  appended_.reset();
  samples_changed_ = true;
  touch();
}

Status Media::prepare_for_samples(uint64_t samples, uint64_t pieces) {
  if (!appended_) {
    TRY_ASSIGN(appended_, AppendedSamples::make(*this));
  }
  return appended_->check_room(samples, pieces);
}

Status Media::append_samples(const EqualSamples& samples, uint64_t offset, uint32_t description) {
  TRY(prepare_for_samples(0, 0));
  TRY(appended_->append(samples, offset, description));
  samples_.reset();
  samples_owner_ = appended_;
  samples_changed_ = true;
  header_.duration = static_cast<uint64_t>(appended_->duration());
  touch();
  return {};
}

Result<std::vector<Bytes>*> Media::change_descriptions() {
  TRY(descriptions().take_status());
  descriptions_changed_ = true;
  touch();
  return &*descriptions_;
}

Result<std::vector<Bytes>*> Media::change_data_references() {
  TRY(data_references().take_status());
  data_references_changed_ = true;
  touch();
  return &*data_references_;
}

AtomChanges& Media::change_info_atoms() {
  touch();
  return info_atom_changes_;
}

void Media::touch() {
  modified_ = true;
  header_changed_ = true;
  header_.modification_time = current_mac_time();
  track_->touch();
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
