#include "movie/shown_samples.h"

#include <algorithm>

#include "movie/insert_media.h"

namespace toolbox {

namespace {

using Set = SampleTable::Set;

/// Packets of compressed sound that a decoder may want in front: overlapping windows want one or
/// two, a reservoir of bits some more.
constexpr uint32_t kSoundPacketsBefore = 10;

// The samples of a stretch that are displayed behind `after` and before `until`.
void include_displayed(const Stretch& stretch, int64_t after, int64_t until, ShownSamples& shown) {
  const int64_t begin = stretch.display_of(stretch.first_sample);
  uint32_t first = stretch.first_sample;
  uint32_t last = stretch.last_sample();
  if (begin >= until || stretch.display_of(last) <= after) return;
  if (stretch.delta != 0) {
    if (begin <= after) first += static_cast<uint32_t>((after - begin) / stretch.delta + 1);
    const int64_t in_time = (until - 1 - begin) / stretch.delta;
    last = static_cast<uint32_t>(std::min<int64_t>(last, stretch.first_sample + in_time));
  }
  if (first > last) return;
  shown.first = std::min(shown.first, first);
  shown.last = std::max(shown.last, last);
}

// Where display offsets reorder samples, those shown in a span stand anywhere around it.
Status include_reordered(const SampleTable& table, int64_t until, ShownSamples& shown) {
  for (TimePlace place; place.sample < table.sample_count();) {
    Stretch stretch;
    TRY(table.take_stretch(place, stretch));
    include_displayed(stretch, shown.shown_first.time, until, shown);
  }
  return {};
}

}  // namespace

Result<std::optional<ShownSamples>> samples_shown(const Media& media, int64_t from, int64_t until) {
  TRY_ASSIGN(const SampleTable* table, media.samples());
  TRY_ASSIGN(const int64_t end, media_end(media));
  if (from >= end) return std::optional<ShownSamples>();
  TRY_ASSIGN(std::optional<DisplayPoint> begin, table->previous_displayed(Set::kAll, from));
  if (!begin) {
    // Before the first sample is displayed it stands for its time.
    TRY_ASSIGN(begin, table->next_displayed(Set::kAll, from));
  }
  if (!begin) return std::optional<ShownSamples>();
  ShownSamples shown{begin->sample, begin->sample, *begin};
  if (table->tables().times.offsets.row_count() != 0) {
    TRY(include_reordered(*table, until, shown));
  } else {
    TRY_ASSIGN(const std::optional<DisplayPoint> last,
               table->previous_displayed(Set::kAll, until - 1));
    if (last) shown.last = std::max(shown.last, last->sample);
  }
  if (table->tables().has_sync) {
    TRY_ASSIGN(const std::optional<DisplayPoint> sync,
               table->previous_displayed(Set::kSync, begin->time));
    shown.first = std::min(shown.first, sync ? sync->sample : 0);
  }
  const bool in_packets = media.type() == four_cc("soun") && begin->delta > 1;
  if (in_packets) shown.first -= std::min(shown.first, kSoundPacketsBefore);
  return std::optional(shown);
}

}  // namespace toolbox
