// The sizes of a track in the aperture modes: with and without its edges, in square pixels and as
// coded.
#pragma once

#include <optional>

#include "base/bytes.h"
#include "base/four_cc.h"
#include "base/status.h"

namespace toolbox {

class Movie;
class Track;

struct ApertureSize {
  int32_t width = 0;   // 16.16
  int32_t height = 0;  // 16.16
  bool operator==(const ApertureSize&) const = default;
};

struct Apertures {
  ApertureSize clean;
  ApertureSize production;
  ApertureSize encoded;

  /// The size in a mode (`clea`, `prod`, `enco`); null for any other.
  ApertureSize* find(FourCC mode);
};

/// Worked out from a whole sample description of pictures:
///
///   encoded     width x height, in pixels as coded
///   production  the width times the shape of a pixel (`pasp`), the height as it is
///   clean       the same of the clean aperture (`clap`) alone
///
/// Products are exact and rounded once. Without `clap` the clean size is the production size; a
/// shape with a 0 is ignored.
/// Fails: invalidSampleDescription for a description that is too short, a clean aperture with a
/// denominator or size below 1 or larger than the picture, a size beyond 32767.
Result<Apertures> apertures_from(ByteView description);

/// What the track has, in the file or since; nothing for a track without. A size that is missing is
/// that of the track header. Fails: badPublicMovieAtom for damage, ioErr, eofErr.
Result<std::optional<Apertures>> apertures_of(const Track& track);

/// Whether the track has aperture dimensions, damaged ones included.
bool has_apertures(const Track& track);
bool has_apertures(const Movie& movie);

void set_apertures(Track& track, const Apertures& apertures);

/// Works them out anew: from `description`, else from the first one of the track. A track that is
/// seen but has no descriptions of pictures gets its own size three times.
/// Fails: invalidTrack for one that is not seen, as apertures_from(); nothing changes then.
Status generate_apertures(Track& track, std::optional<ByteView> description);

/// For every track with descriptions of pictures. Fails: as for a track; no track changes then.
Status generate_apertures(Movie& movie);

void remove_apertures(Track& track);
void remove_apertures(Movie& movie);

/// The size that a track has in the movie's aperture mode.
ApertureSize shown_size(const Track& track);

}  // namespace toolbox
