// Puts spans of a media into its track.
#pragma once

#include "movie/track.h"

namespace toolbox {

/// A span of media and how fast it is shown.
struct MediaSpan {
  int64_t start = 0;        // media ticks
  int64_t duration = 0;     // media ticks
  int32_t rate = kRateOne;  // 16.16
};

/// Puts a span of the track's media at movie tick `track_start` (-1: at the end of the track).
/// Later edits move; empty time fills a gap. Nothing happens for a span of no duration, as text
/// tracks without texts are made that way.
/// Fails: paramErr for a rate of 0 or less, invalidDuration, invalidTime, invalidMedia for a track
/// without media, as Media::samples(); the track is then unchanged.
Status insert_media(Track& track, int64_t track_start, const MediaSpan& span);

/// The media time behind the last sample: the duration, and more where display offsets move the
/// samples later. Fails: as Media::samples().
Result<int64_t> media_end(const Media& media);

}  // namespace toolbox
