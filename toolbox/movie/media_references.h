// The data references of a media, as callers read and set them.
#pragma once

#include "base/bytes.h"
#include "base/status.h"
#include "movie/media.h"

namespace toolbox {

/// Where a data reference leads.
struct MediaReference {
  FourCC type = 0;          // of `data`
  Bytes data;               // an alias record, a URL with its zero byte, ...
  bool is_self = false;     // the movie's own file
  bool is_resolved = true;  // the file is there
};

/// Data reference `index` (from 1). For the movie's own file, an alias to it whatever the movie
/// holds; an alias whose file only the movie's folder helps to find, as one that leads there.
/// Fails: badDataRefIndex, as Media::data_references().
Result<MediaReference> media_reference(const Media& media, int64_t index);

/// Puts another in the place of data reference `index` (from 1): the offsets of the samples count
/// in that file from then on. One that leads to the movie's own file becomes a reference to itself.
/// The file may be read from then on wherever it lies: naming it is consent. Fails:
/// badDataRefIndex, invalidDataRef for a reference without type or data, as
/// Media::change_data_references().
Status set_media_reference(Media& media, int64_t index, FourCC type, ByteView data);

}  // namespace toolbox
