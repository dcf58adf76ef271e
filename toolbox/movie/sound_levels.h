// How loud a track is: around one moment, and interval by interval.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include "base/status.h"

namespace toolbox {

class Track;

/// A short piece of sound of a track.
struct SoundWindow {
  uint32_t channels = 0;                       // of the first description, or of the frames
  double rate = 0;                             // frames a second
  std::vector<std::vector<float>> by_channel;  // one for each; empty where nothing can be heard

  /// The highest value of a channel, 1 for full scale; 0 for a channel that there is not.
  float peak(size_t channel) const;
};

/// About a tenth of a second of what a track plays around a movie time; at most 65536 frames, and
/// none from beyond the edit that is played there. Silent where the track shows nothing or holds a
/// moment, and for formats that are not decoded.
/// Fails: as SoundReader.
Result<SoundWindow> sound_around(const Track& track, int64_t movie_time);

/// Intervals one behind the other, movie ticks.
struct SoundIntervals {
  int64_t from = 0;
  int64_t until = 0;
  int64_t length = 1;  // above 0
};

/// Takes the levels of an interval, 1 for full scale: the peak and the root of the mean square of
/// each channel.
using SoundLevelSink = std::function<Status(int64_t start, std::span<const float> peaks,
                                            std::span<const float> means)>;

/// Hands out the levels of every interval, the last of which may be cut; each frame counts in the
/// interval that it begins in. Channels are those of the first description. Costs no memory.
/// Fails: invalidMedia for a track that is no sound, as SoundReader and as the sink.
Status measure_sound(const Track& track, const SoundIntervals& intervals,
                     const SoundLevelSink& sink);

/// Whether every description of a track is of sound that can be decoded. Fails: as
/// Media::descriptions().
Result<bool> can_measure_sound(const Track& track);

}  // namespace toolbox
