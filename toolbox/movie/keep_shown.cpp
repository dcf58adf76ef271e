#include "movie/keep_shown.h"

#include <algorithm>
#include <array>

#include "movie/edit_splice.h"
#include "movie/growing_tables.h"
#include "movie/share_samples.h"
#include "movie/shown_samples.h"

namespace toolbox {

namespace {

/// Whether the edits show the first sample, the last, and all between.
Result<bool> shows_all(const Track& track, std::span<const Edit> edits) {
  const Media& media = *track.media();
  TRY_ASSIGN(const SampleTable* table, media.samples());
  std::vector<ShownSamples> all;
  for (const Edit& edit : edits) {
    if (edit.is_empty()) continue;
    const EditSpan span{0, edit.duration, edit.media_start, edit.rate};
    const TimeScales scales{track.movie().time_scale(), media.time_scale()};
    const int64_t last =
        span.is_held() ? edit.media_start : span.media_time(edit.duration - 1, scales);
    TRY_ASSIGN(const std::optional<ShownSamples> shown,
               samples_shown(media, edit.media_start, std::max(last, edit.media_start) + 1));
    if (shown) all.push_back(*shown);
  }
  std::sort(all.begin(), all.end(),
            [](const ShownSamples& a, const ShownSamples& b) { return a.first < b.first; });
  uint64_t reached = 0;
  for (const ShownSamples& shown : all) {
    if (shown.first > reached) return false;
    reached = std::max(reached, uint64_t{shown.last} + 1);
  }
  return reached >= table->sample_count();
}

/// Tables beside the samples that would have to be cut along.
Status check_auxiliary(const Track& track) {
  const AtomTree& tree = track.movie().opened().tree;
  const Media& media = *track.media();
  if (media.atom() == kNoAtom || media.samples_changed()) return {};
  for (const FourCC type : {four_cc("senc"), four_cc("saio")}) {
    const AtomIndex atom = tree.find_path(media.atom(), {four_cc("minf"), four_cc("stbl"), type});
    if (atom == kNoAtom) continue;
    return tree.failure(atom, featureUnsupported, "", tree.node(atom).offset,
                        "these samples have auxiliary data that cannot be cut; save without "
                        "leaving anything out");
  }
  return {};
}

}  // namespace

Status keep_shown_samples(Movie& movie) {
  for (const auto& track : movie.tracks()) {
    if (track->media() == nullptr) continue;
    const std::vector<Edit> edits = filled_edits(*track);
    TRY_ASSIGN(const bool is_whole, shows_all(*track, edits));
    if (is_whole) continue;
    TRY(check_auxiliary(*track));
    // What the track was until now gives its samples to what it becomes.
    TRY_ASSIGN(const std::unique_ptr<Track> whole, track->clone());
    track->media()->set_samples({}, nullptr);
    TRY_ASSIGN(std::vector<Edit> shown, share_samples(*whole, edits, *track));
    track->set_edits(explicit_list(std::move(shown)));
  }
  return {};
}

}  // namespace toolbox
