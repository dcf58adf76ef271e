#include "movie/share_samples.h"

#include <algorithm>
#include <utility>

#include "movie/edit_splice.h"
#include "movie/insert_media.h"
#include "movie/movie.h"
#include "movie/sample_places.h"
#include "movie/shown_samples.h"

namespace toolbox {

namespace {

/// Samples of the source that follow one another, and where they come to stand.
struct Run {
  uint32_t first = 0;
  uint32_t last = 0;
  int64_t shown_from = 0;  // where the first edit begins, source ticks
  DisplayPoint shown_first;

  int64_t source_begin = 0;   // decode time of the first, source ticks
  int64_t decode_end = 0;     // target ticks from the run's begin; so the next three
  int64_t least_display = 0;  // what is displayed first
  int64_t display_end = 0;    // behind what is displayed last
  int64_t needed = 0;         // behind what the edits show, in the target
  uint64_t samples = 0;
  uint64_t pieces = 0;

  int64_t target_begin = 0;  // target ticks
  int64_t shift = 0;         // of display times, so that nothing is displayed over other samples
  int64_t longer = 0;        // how much longer the last sample lasts

  /// How much earlier the sample that is displayed first is shown in the source, where it stands
  /// for the time before it; source ticks.
  int64_t lead() const { return std::max<int64_t>(0, shown_first.time - shown_from); }
};

class SampleSharer {
 public:
  SampleSharer(const Track& source, Track& target)
      : source_(source),
        target_(target),
        from_(*source.media()),
        to_(*target.media()),
        places_(from_, to_) {}

  Result<std::vector<Edit>> share(std::span<const Edit> edits) {
    TRY(find_runs(edits));
    uint64_t samples = 0;
    uint64_t pieces = 0;
    for (Run& run : runs_) {
      TRY(survey(run));
      samples += run.samples;
      pieces += run.pieces;
    }
    TRY(plan_edits(edits));
    // Times that are rounded may need a row for each sample.
    TRY(to_.prepare_for_samples(2 * samples, 2 * pieces));
    TRY(places_.copy());
    if (!runs_.empty()) {
      // A track that shows its whole media would show the new samples too.
      target_.set_edits(explicit_list(filled_edits(target_)));
      TRY_ASSIGN(int64_t displayed_until, media_end(to_));
      for (Run& run : runs_) TRY(append(run, displayed_until));
    }
    return placed_edits();
  }

 private:
  /// A time in the target's scale.
  int64_t converted(int64_t time) const {
    return rescale(time, from_.time_scale(), to_.time_scale());
  }

  Status find_runs(std::span<const Edit> edits) {
    const TimeScales scales{.movie = source_.movie().time_scale(), .media = from_.time_scale()};
    for (const Edit& edit : edits) {
      shown_.emplace_back();
      if (edit.is_empty()) continue;
      int64_t length = 1;
      if (edit.rate > 0) {
        length = std::max<int64_t>(1, divide_up(Int128{edit.duration} * scales.media * edit.rate,
                                                Int128{scales.movie} * kRateOne));
      }
      const int64_t until = advanced(edit.media_start, static_cast<uint64_t>(length));
      TRY_ASSIGN(shown_.back(), samples_shown(from_, edit.media_start, until));
      if (!shown_.back()) continue;
      const ShownSamples& shown = *shown_.back();
      runs_.push_back({shown.first, shown.last, edit.media_start, shown.shown_first});
    }
    std::sort(runs_.begin(), runs_.end(),
              [](const Run& a, const Run& b) { return a.first < b.first; });
    std::vector<Run> merged;
    for (const Run& run : runs_) {
      if (!merged.empty() && run.first <= uint64_t{merged.back().last} + 1) {
        Run& joined = merged.back();
        joined.last = std::max(joined.last, run.last);
        joined.shown_from = std::min(joined.shown_from, run.shown_from);
        if (run.shown_first.time < joined.shown_first.time) joined.shown_first = run.shown_first;
      } else {
        merged.push_back(run);
      }
    }
    runs_ = std::move(merged);
    return {};
  }

  /// Calls visit(piece) for every piece of a run, which answers a Status.
  template <class Visit>
  Status for_each_piece(const Run& run, Visit visit) {
    TRY_ASSIGN(SampleWalk walk, SampleWalk::make(from_, run.first));
    for (uint32_t next = run.first; next <= run.last;) {
      TRY_ASSIGN(const std::optional<SamplePiece> piece, walk.next(run.last - next + 1));
      if (!piece) return {};
      TRY(visit(*piece));
      next = piece->end();
    }
    return {};
  }

  Status survey(Run& run) {
    bool is_first = true;
    int64_t begin = 0;
    return for_each_piece(run, [&](const SamplePiece& piece) -> Status {
      if (is_first) {
        // A packet may begin before the sample that is wanted.
        run.first = piece.first;
        run.source_begin = piece.times.decode;
        begin = converted(run.source_begin);
        run.least_display = converted(run.shown_first.time - run.lead()) - begin;
      }
      is_first = false;
      run.samples += piece.count;
      ++run.pieces;
      const int64_t ticks = int64_t{piece.count} * piece.times.delta;
      run.least_display = std::min(run.least_display, converted(piece.times.display) - begin);
      run.display_end = std::max(run.display_end, converted(piece.times.display + ticks) - begin);
      run.decode_end = converted(piece.times.decode + ticks) - begin;
      TRY(check_lengths(piece));
      return places_.survey(piece);
    });
  }

  /// Whether every sample that has a duration keeps one.
  Status check_lengths(const SamplePiece& piece) const {
    const int64_t unit = int64_t{piece.packet.frames} * piece.times.delta;
    const bool keeps = unit == 0 || Int128{unit} * to_.time_scale() >= from_.time_scale();
    if (keeps) return {};
    return {featureUnsupported, "samples that are shown for " + std::to_string(unit) + "/" +
                                    std::to_string(from_.time_scale()) +
                                    " of a second cannot be told apart in a media of " +
                                    std::to_string(to_.time_scale()) +
                                    " units a second; use another track"};
  }

  Status append(Run& run, int64_t& displayed_until) {
    TRY_ASSIGN(run.target_begin, to_.duration());
    run.shift = std::max<int64_t>(0, displayed_until - (run.target_begin + run.least_display));
    // What is displayed last may be shown for a little longer than it lasts, and not what follows
    // it. Frames of sound have one duration.
    if (run.needed > run.display_end && from_.type() != four_cc("soun")) {
      run.longer = std::max<int64_t>(0, run.needed + run.shift - run.decode_end);
    }
    displayed_until = std::max(
        displayed_until, run.target_begin + run.shift + std::max(run.needed, run.display_end));
    return for_each_piece(run, [&](const SamplePiece& piece) { return append(run, piece); });
  }

  Status append(const Run& run, const SamplePiece& piece) {
    TRY_ASSIGN(SamplePlace place, places_.place_of(piece));
    EqualSamples alike;
    alike.is_sync = piece.is_sync;
    alike.size = piece.packet.bytes;
    const auto flush = [&]() -> Status {
      if (alike.count == 0) return {};
      TRY(to_.append_samples(alike, place.offset, place.description));
      place.offset += uint64_t{alike.count} * alike.size;
      alike.count = 0;
      return {};
    };
    const int64_t display_offset = piece.times.display - piece.times.decode;
    // Where nothing is rounded all of a piece stay alike, but for a last packet that is cut short.
    const bool is_exact = from_.time_scale() == to_.time_scale();
    for (uint32_t done = 0; done < piece.count;) {
      const uint32_t sample = piece.first + done;
      const uint32_t whole_packets = alike_from(run, sample, piece.end()) / piece.packet.frames;
      const uint32_t packets = is_exact ? std::max(1u, whole_packets) : 1;
      const uint32_t frames = std::min(piece.packet.frames, piece.count - done);
      const int64_t decode = piece.times.decode + int64_t{done} * piece.times.delta;
      const int64_t begin = converted(decode);
      int64_t delta = converted(decode + int64_t{frames} * piece.times.delta) - begin;
      if (sample + frames > run.last) delta += run.longer;
      const int64_t lead = sample == run.shown_first.sample ? run.lead() : 0;
      const int64_t offset = converted(decode + display_offset - lead) - begin + run.shift;
      if (delta > UINT32_MAX || offset > INT32_MAX || offset < INT32_MIN) {
        return {invalidSampleTable, "sample " + std::to_string(uint64_t{piece.first} + done + 1) +
                                        ": its times do not fit into the other media"};
      }
      if (alike.delta != delta || alike.offset != offset) TRY(flush());
      alike.delta = static_cast<uint32_t>(delta);
      alike.offset = static_cast<int32_t>(offset);
      alike.count += packets;
      done += packets * frames;
    }
    return flush();
  }

  /// How many samples up to `end` can be treated alike: two may differ from those of the source.
  static uint32_t alike_from(const Run& run, uint32_t sample, uint32_t end) {
    for (const uint32_t special : {run.shown_first.sample, run.last}) {
      if (sample == special) return 1;
      if (sample < special) end = std::min(end, special);
    }
    return end - sample;
  }

  const Run& run_of(uint32_t sample) const {
    const auto behind =
        std::upper_bound(runs_.begin(), runs_.end(), sample,
                         [](uint32_t wanted, const Run& run) { return wanted < run.first; });
    return *std::prev(behind);
  }
  Run& run_of(uint32_t sample) { return const_cast<Run&>(std::as_const(*this).run_of(sample)); }

  /// The time in the target, from the begin of the run on, that stands for one of the source: in
  /// the same sample.
  int64_t moved_time(int64_t time, const DisplayPoint& shown, const Run& run) const {
    const int64_t begin = converted(std::min(time, shown.time));
    const int64_t shown_end = advanced(shown.time, shown.delta);
    int64_t moved = converted(time);
    if (time < shown_end) moved = std::max(begin, std::min(moved, converted(shown_end) - 1));
    return moved - converted(run.source_begin);
  }

  /// The edits for the target, their media times from the begins of their runs on. Boundaries are
  /// rounded, not lengths; so an edit may reach a little further than it did.
  Status plan_edits(std::span<const Edit> edits) {
    const TimeScales from{source_.movie().time_scale(), from_.time_scale()};
    const TimeScales to{target_.movie().time_scale(), to_.time_scale()};
    TRY_ASSIGN(const int64_t media_ends, media_end(from_));
    const int64_t most = advanced(media_ends, from.media / from.movie + 1);
    int64_t at = 0;
    for (size_t i = 0; i < edits.size(); ++i) {
      Edit edit = edits[i];
      const int64_t end = at + edit.duration;
      edit.duration = rescale(end, from.movie, to.movie) - rescale(at, from.movie, to.movie);
      at = end;
      if (shown_[i]) {
        Run& run = run_of(shown_[i]->first);
        edit.media_start = moved_time(edit.media_start, shown_[i]->shown_first, run);
        const int64_t length = divide_up(Int128{edit.duration} * to.media * std::max(edit.rate, 0),
                                         Int128{to.movie} * kRateOne);
        run.needed = std::max(run.needed, std::min(edit.media_start + length,
                                                   converted(most) - converted(run.source_begin)));
      } else {
        edit.media_start = -1;
        edit.rate = static_cast<int32_t>(kRateOne);
      }
      edits_.push_back(edit);
    }
    return {};
  }

  std::vector<Edit> placed_edits() const {
    std::vector<Edit> placed;
    for (size_t i = 0; i < edits_.size(); ++i) {
      if (edits_[i].duration == 0) continue;
      placed.push_back(edits_[i]);
      if (!shown_[i]) continue;
      const Run& run = run_of(shown_[i]->first);
      placed.back().media_start += run.target_begin + run.shift;
    }
    return placed;
  }

  const Track& source_;
  Track& target_;
  const Media& from_;
  Media& to_;
  SamplePlaces places_;
  std::vector<std::optional<ShownSamples>> shown_;  // by each edit
  std::vector<Edit> edits_;                         // see plan_edits()
  std::vector<Run> runs_;                           // in the order of the source, apart
};

}  // namespace

Result<std::vector<Edit>> share_samples(const Track& source, std::span<const Edit> edits,
                                        Track& target) {
  const bool have_media = source.media() != nullptr && target.media() != nullptr;
  if (!have_media || source.media()->type() != target.media()->type()) {
    return Status(mediaTypesDontMatch, "the two tracks do not have media of one type");
  }
  return SampleSharer(source, target).share(edits);
}

}  // namespace toolbox
