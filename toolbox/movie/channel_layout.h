// Channel layouts of sound: which loudspeaker each channel of a track is for.
#pragma once

#include <optional>
#include <vector>

#include "movie/movie.h"

namespace toolbox {

struct ChannelDescription {
  uint32_t label = 0;
  uint32_t flags = 0;
  std::array<uint32_t, 3> coordinates{};  // bits of 32-bit floating point
};

struct ChannelLayout {
  uint32_t tag = 0;     // 0: see the descriptions; 0x10000: see the bitmap
  uint32_t bitmap = 0;  // a bit for each channel
  std::vector<ChannelDescription> descriptions;
};

/// The layout of a sound track: that of its first sample description, or one by its number of
/// channels. Nothing for other tracks, and for one without sample descriptions.
/// Fails: as Media::descriptions().
Result<std::optional<ChannelLayout>> layout_of(const Track& track);

/// The layout of the first enabled sound track of a movie.
Result<std::optional<ChannelLayout>> layout_of(const Movie& movie);

/// Stores a layout in the first sample description, in place of one that stands there.
/// Fails: paramErr when the track has no sound description; as Media::descriptions().
Status set_layout(Track& track, const ChannelLayout& layout);

}  // namespace toolbox
