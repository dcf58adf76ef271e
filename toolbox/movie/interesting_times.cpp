#include "movie/interesting_times.h"

#include <algorithm>

namespace toolbox {

namespace {

bool is_of_interest(const EditSpan& span, Interest interest) {
  return span.duration > 0 && (interest == Interest::kTrackEdit || !span.is_empty());
}

bool shows_media(const EditSpan& span) { return span.duration > 0 && !span.is_empty(); }

}  // namespace

Result<std::optional<InterestingTime>> InterestingTimes::next(Interest interest,
                                                              int64_t at_least) const {
  switch (interest) {
    case Interest::kSample:
      return next_sample(Set::kAll, at_least);
    case Interest::kSyncSample:
      return next_sample(Set::kSync, at_least);
    default:
      return next_edit(interest, at_least);
  }
}

Result<std::optional<InterestingTime>> InterestingTimes::previous(Interest interest,
                                                                  int64_t at_most) const {
  switch (interest) {
    case Interest::kSample:
      return previous_sample(Set::kAll, at_most);
    case Interest::kSyncSample:
      return previous_sample(Set::kSync, at_most);
    default:
      return previous_edit(interest, at_most);
  }
}

std::optional<InterestingTime> InterestingTimes::next_edit(Interest interest,
                                                           int64_t at_least) const {
  const auto spans = timeline_->spans();
  auto span = std::partition_point(spans.begin(), spans.end(),
                                   [&](const EditSpan& s) { return s.start < at_least; });
  for (; span != spans.end(); ++span) {
    if (is_of_interest(*span, interest)) return InterestingTime{span->start, span->duration};
  }
  // The end of the track counts as the start of an empty stretch.
  const int64_t end = timeline_->duration();
  if (interest == Interest::kTrackEdit && end > 0 && end >= at_least)
    return InterestingTime{end, 0};
  return std::nullopt;
}

std::optional<InterestingTime> InterestingTimes::previous_edit(Interest interest,
                                                               int64_t at_most) const {
  const int64_t end = timeline_->duration();
  if (interest == Interest::kTrackEdit && end > 0 && end <= at_most) return InterestingTime{end, 0};
  const auto spans = timeline_->spans();
  auto span = std::partition_point(spans.begin(), spans.end(),
                                   [&](const EditSpan& s) { return s.start <= at_most; });
  while (span != spans.begin()) {
    --span;
    if (is_of_interest(*span, interest)) return InterestingTime{span->start, span->duration};
  }
  return std::nullopt;
}

Result<std::optional<InterestingTime>> InterestingTimes::next_sample(Set set,
                                                                     int64_t at_least) const {
  const auto spans = timeline_->spans();
  auto span = std::partition_point(spans.begin(), spans.end(),
                                   [&](const EditSpan& s) { return s.end() <= at_least; });
  for (; span != spans.end(); ++span) {
    if (!shows_media(*span)) continue;
    TRY_ASSIGN(const Found found, next_in(*span, set, std::max(at_least, span->start)));
    if (found) return found;
  }
  return Found{};
}

Result<std::optional<InterestingTime>> InterestingTimes::previous_sample(Set set,
                                                                         int64_t at_most) const {
  const auto spans = timeline_->spans();
  auto span = std::partition_point(spans.begin(), spans.end(),
                                   [&](const EditSpan& s) { return s.start <= at_most; });
  while (span != spans.begin()) {
    --span;
    if (!shows_media(*span)) continue;
    TRY_ASSIGN(const Found found, previous_in(*span, set, std::min(at_most, span->end() - 1)));
    if (found) return found;
  }
  return Found{};
}

// REQUIRES: span.start <= at_least < span.end().
Result<std::optional<InterestingTime>> InterestingTimes::next_in(const EditSpan& span, Set set,
                                                                 int64_t at_least) const {
  if (at_least == span.start) {
    TRY_ASSIGN(const bool appears, appears_at_start(span, set));
    if (appears) return from_tick(span, span.start);
  }
  if (span.is_held()) return Found{};
  // A sample reaches `at_least` exactly when it begins after the media time of the tick before.
  const int64_t after =
      std::max(span.media_start, span.media_time(at_least - 1, timeline_->scales()));
  TRY_ASSIGN(const std::optional<DisplayPoint> point, samples_->next_displayed(set, after));
  if (!point) return Found{};
  const int64_t tick = span.first_tick(point->time, timeline_->scales());
  return tick < span.end() ? from_tick(span, tick) : Found{};
}

// REQUIRES: span.start <= at_most < span.end().
Result<std::optional<InterestingTime>> InterestingTimes::previous_in(const EditSpan& span, Set set,
                                                                     int64_t at_most) const {
  if (!span.is_held()) {
    const int64_t last = span.media_time(at_most, timeline_->scales());
    TRY_ASSIGN(const std::optional<DisplayPoint> point, samples_->previous_displayed(set, last));
    if (point && point->time > span.media_start) {
      return from_tick(span, span.first_tick(point->time, timeline_->scales()));
    }
  }
  TRY_ASSIGN(const bool appears, appears_at_start(span, set));
  if (!appears) return Found{};
  return from_tick(span, span.start);
}

// Whether a sample of the set is being shown when the edit starts.
Result<bool> InterestingTimes::appears_at_start(const EditSpan& span, Set set) const {
  TRY_ASSIGN(const std::optional<DisplayPoint> shown,
             samples_->previous_displayed(Set::kAll, span.media_start));
  if (!shown) return false;
  TRY_ASSIGN(const std::optional<int64_t> until, samples_->shown_until(*shown));
  if (until && *until <= span.media_start) return false;
  if (set == Set::kAll) return true;
  TRY_ASSIGN(const std::optional<DisplayPoint> sync,
             samples_->previous_displayed(set, span.media_start));
  return sync && sync->time == shown->time;
}

// The interval from `tick` to where the next sample appears, the media ends or the edit ends.
Result<std::optional<InterestingTime>> InterestingTimes::from_tick(const EditSpan& span,
                                                                   int64_t tick) const {
  int64_t end = span.end();
  if (!span.is_held()) {
    const int64_t shown = span.media_time(tick, timeline_->scales());
    TRY_ASSIGN(const std::optional<int64_t> until, samples_->shown_until({.time = shown}));
    // A last sample shorter than a tick still takes one.
    if (until)
      end = std::min(end, std::max(tick + 1, span.first_tick(*until, timeline_->scales())));
  }
  return Found(InterestingTime{tick, end - tick});
}

}  // namespace toolbox
