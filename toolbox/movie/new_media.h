// Makes the media of a track, with the headers that its type asks for.
#pragma once

#include "movie/media.h"

namespace toolbox {

/// A data reference as callers hold it: its type (`alis`, `url `, ...) and the data of the entry.
struct GivenDataReference {
  FourCC type = 0;
  ByteView data;
};

/// Gives a track without media a new one. `reference` names the file of the media data; nothing:
/// the movie's own. REQUIRES: time_scale > 0. Fails: invalidTrack when the track has media,
/// cantFindHandler for type 0, invalidDataRef for a reference without a type.
Result<Media*> add_media(Track& track, FourCC type, uint32_t time_scale,
                         const std::optional<GivenDataReference>& reference);

}  // namespace toolbox
