// Which samples of a media somebody needs who shows a part of it.
#pragma once

#include "movie/media.h"

namespace toolbox {

/// Samples in decode order, both ends included, and what is shown first.
struct ShownSamples {
  uint32_t first = 0;  // from 0
  uint32_t last = 0;
  DisplayPoint shown_first;
};

/// The samples that are shown between two media times, and those that decoding them begins with:
/// from the sync sample before the first one on, and of compressed sound a few packets more.
/// Nothing behind the end of the media. REQUIRES: from < until. Fails: as Media::samples().
Result<std::optional<ShownSamples>> samples_shown(const Media& media, int64_t from, int64_t until);

}  // namespace toolbox
