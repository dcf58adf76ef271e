#include "movie/sound_levels.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "movie/movie.h"
#include "movie/sound_reader.h"

namespace toolbox {

namespace {

constexpr double kWindowSeconds = 0.1;
constexpr double kLeastFrames = 256;
constexpr double kMostFrames = 65536;

Result<uint32_t> channels_of(const Media& media) {
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, media.descriptions());
  const uint32_t stated = descriptions->empty() ? 0 : sound_channels_of(descriptions->front());
  return std::min(stated, SoundFormat::kMostChannels);
}

/// A power of two, for the transform.
size_t window_frames(double rate) {
  return std::bit_floor(
      static_cast<size_t>(std::clamp(rate * kWindowSeconds, kLeastFrames, kMostFrames)));
}

/// Puts the frames of a block that begin in [begin, end) into the window, as long as it has room.
void collect(const SoundBlock& block, double begin, double end, size_t room, SoundWindow& window) {
  for (size_t i = 0; i < block.frame_count(); ++i) {
    const double time = block.begin + static_cast<double>(i) * block.ticks_per_frame;
    if (time < begin) continue;
    if (time >= end || window.by_channel[0].size() == room) return;
    for (size_t channel = 0; channel < window.by_channel.size(); ++channel) {
      window.by_channel[channel].push_back(block.frames[i * block.channels + channel]);
    }
  }
}

/// Adds up intervals in the order of time.
class Intervals {
 public:
  Intervals(const SoundIntervals& intervals, uint32_t channels, const SoundLevelSink& sink)
      : all_(intervals),
        sink_(sink),
        start_(intervals.from),
        peaks_(channels),
        means_(channels),
        sums_(channels) {}

  double end() const { return static_cast<double>(end_tick()); }

  /// Hands out what ends at or before a movie time.
  Status advance(double time) {
    while (start_ < all_.until && end() <= time) TRY(finish());
    return {};
  }

  void add(const SoundBlock& block, size_t first, size_t count) {
    const size_t channels = std::min<size_t>(block.channels, sums_.size());
    for (size_t channel = 0; channel < channels; ++channel) {
      float peak = peaks_[channel];
      double sum = 0;
      const float* value = &block.frames[first * block.channels + channel];
      for (size_t i = 0; i < count; ++i, value += block.channels) {
        peak = std::max(peak, std::abs(*value));
        sum += double{*value} * *value;
      }
      peaks_[channel] = peak;
      sums_[channel] += sum;
    }
    frames_ += count;
  }

 private:
  int64_t end_tick() const { return std::min(start_ + all_.length, all_.until); }

  Status finish() {
    for (size_t channel = 0; channel < sums_.size(); ++channel) {
      const double mean = frames_ == 0 ? 0 : sums_[channel] / static_cast<double>(frames_);
      means_[channel] = static_cast<float>(std::sqrt(mean));
    }
    TRY(sink_(start_, peaks_, means_));
    std::fill(peaks_.begin(), peaks_.end(), 0.0F);
    std::fill(sums_.begin(), sums_.end(), 0.0);
    frames_ = 0;
    start_ = end_tick();
    return {};
  }

  const SoundIntervals all_;
  const SoundLevelSink& sink_;
  int64_t start_;
  std::vector<float> peaks_;
  std::vector<float> means_;
  std::vector<double> sums_;
  uint64_t frames_ = 0;
};

/// What an edit plays between two movie times that lie in it.
Status measure_span(const Media& media, const EditTimeline& timeline, const EditSpan& span,
                    double from, double until, Intervals& intervals) {
  const TimeScales scales = timeline.scales();
  const double movie_per_media =
      double{1} * scales.movie / scales.media * (double{kRateOne} / span.rate);
  TRY_ASSIGN(SoundReader reader,
             SoundReader::make(media, span.media_time(static_cast<int64_t>(from), scales)));
  SoundBlock block;
  for (;;) {
    TRY_ASSIGN(const bool is_there, reader.next(block));
    if (!is_there) return {};
    const double step = block.ticks_per_frame * movie_per_media;
    const double begin = static_cast<double>(span.start) +
                         (block.begin - static_cast<double>(span.media_start)) * movie_per_media;
    if (begin >= until) return {};
    const size_t count = block.frame_count();
    for (size_t i = 0; i < count;) {
      const double time = begin + static_cast<double>(i) * step;
      if (time >= until) return {};
      TRY(intervals.advance(time));
      const double stop = time < from ? from : std::min(intervals.end(), until);
      // Frames without a length all sound at once.
      const double fitting = step > 0 ? std::ceil((stop - time) / step) : kMostFrames;
      const size_t taken =
          std::min(count - i, static_cast<size_t>(std::clamp(fitting, 1.0, kMostFrames)));
      if (time >= from) intervals.add(block, i, taken);
      i += taken;
    }
  }
}

}  // namespace

float SoundWindow::peak(size_t channel) const {
  float highest = 0;
  if (channel >= by_channel.size()) return highest;
  for (const float value : by_channel[channel]) highest = std::max(highest, std::abs(value));
  return highest;
}

Result<SoundWindow> sound_around(const Track& track, int64_t movie_time) {
  SoundWindow window;
  if (track.media() == nullptr) return window;
  const Media& media = *track.media();
  TRY_ASSIGN(window.channels, channels_of(media));
  const EditTimeline& timeline = track.timeline();
  // The end of the track sounds as what comes right before it.
  const int64_t tick = movie_time == timeline.duration() ? movie_time - 1 : movie_time;
  const size_t place = timeline.span_at(tick);
  if (place == timeline.spans().size()) return window;
  const EditSpan& span = timeline.spans()[place];
  if (span.is_empty() || span.is_held()) return window;
  const int64_t time = span.media_time(tick, timeline.scales());

  // The sound at the moment itself says how long its frames are.
  SoundBlock block;
  TRY_ASSIGN(SoundReader here, SoundReader::make(media, time));
  do {
    TRY_ASSIGN(const bool is_there, here.next(block, 1));
    if (!is_there || !block.is_decoded) return window;
  } while (block.frame_count() == 0);
  const double media_scale = timeline.scales().media;
  window.rate = block.ticks_per_frame > 0 ? media_scale / block.ticks_per_frame : media_scale;
  window.channels = block.channels;
  window.by_channel.resize(block.channels);

  const size_t room = window_frames(window.rate);
  const double length = static_cast<double>(room) * block.ticks_per_frame;
  const auto least = static_cast<double>(span.media_start);
  const auto most = static_cast<double>(
      std::min(span.media_time(span.end(), timeline.scales()), media.likely_duration()));
  const double begin =
      std::max(least, std::min(static_cast<double>(time) - length / 2, most - length));
  TRY_ASSIGN(SoundReader reader, SoundReader::make(media, static_cast<int64_t>(begin)));
  while (window.by_channel[0].size() < room) {
    // No more than is needed: what lies behind the window may be missing.
    TRY_ASSIGN(const bool is_there, reader.next(block, room - window.by_channel[0].size()));
    if (!is_there || !block.is_decoded || block.channels != window.channels) break;
    if (block.begin >= most) break;
    collect(block, begin, most, room, window);
  }
  return window;
}

Status measure_sound(const Track& track, const SoundIntervals& intervals,
                     const SoundLevelSink& sink) {
  const Media* media = track.media();
  if (media == nullptr || media->type() != four_cc("soun")) {
    return {invalidMedia, "track " + std::to_string(track.id()) + " is no sound"};
  }
  TRY_ASSIGN(const uint32_t channels, channels_of(*media));
  Intervals measured(intervals, channels, sink);
  for (const EditSpan& span : track.timeline().spans()) {
    const auto from = static_cast<double>(std::max(span.start, intervals.from));
    const auto until = static_cast<double>(std::min(span.end(), intervals.until));
    if (span.is_empty() || span.is_held() || from >= until) continue;
    TRY(measure_span(*media, track.timeline(), span, from, until, measured));
  }
  return measured.advance(static_cast<double>(intervals.until));
}

Result<bool> can_measure_sound(const Track& track) {
  if (track.media() == nullptr || track.media()->type() != four_cc("soun")) return false;
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, track.media()->descriptions());
  return !descriptions->empty() &&
         std::all_of(descriptions->begin(), descriptions->end(),
                     [](const Bytes& each) { return sound_format_of(each).has_value(); });
}

}  // namespace toolbox
