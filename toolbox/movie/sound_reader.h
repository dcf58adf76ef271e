// The sound of a media as numbers, in small blocks, so that a long movie costs no memory.
#pragma once

#include <vector>

#include "handlers/sound_format.h"
#include "movie/sample_walk.h"

namespace toolbox {

/// Frames that follow one another in even time.
struct SoundBlock {
  double begin = 0;            // media ticks
  double ticks_per_frame = 0;  // 0 or more
  uint32_t channels = 0;
  bool is_decoded = false;    // else the format is none that can be, and there are no frames
  std::vector<float> frames;  // the channels of a frame side by side, 1 for full scale

  size_t frame_count() const { return channels == 0 ? 0 : frames.size() / channels; }
};

class SoundReader {
 public:
  /// Begins with what is heard at a media time, a little earlier where samples cannot be taken
  /// apart. Borrows the media, which must not change meanwhile. Fails: as SampleWalk::make().
  static Result<SoundReader> make(const Media& media, int64_t time);

  /// The next frames, of at most 64 KiB of coded sound and, but for the last packet, so many; false
  /// at the end. Fails: endOfDataReached for sound that its file does not hold,
  /// couldNotResolveDataRef, ioErr, as SampleWalk::next().
  Result<bool> next(SoundBlock& block, uint64_t most_frames = UINT64_MAX);

 private:
  SoundReader(const Media& media, const SampleWalk& walk) : media_(&media), walk_(walk) {}

  Result<bool> take_piece();

  const Media* media_;
  SampleWalk walk_;
  SamplePiece piece_;
  std::optional<SoundFormat> format_;
  uint32_t format_of_ = 0;  // the description, from 1; 0 for none
  uint32_t channels_ = 0;   // that it states
  uint64_t unit_ = 0;       // of the piece: samples, or packets of frame-counted sound
  uint64_t units_ = 0;
  uint64_t packets_done_ = 0;  // of the units at hand
  Bytes buffer_;
};

}  // namespace toolbox
