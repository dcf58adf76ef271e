// Makes a track in one movie for what a track of another shows.
#pragma once

#include <memory>

#include "movie/track.h"

namespace toolbox {

/// A new track for `movie` with the properties of a track of another one and a media of its type
/// and time scale, without samples, edits and references; Movie::add_track() puts it in place.
/// REQUIRES: the source has media. Fails: as add_media(), reading the atoms of the source.
Result<std::unique_ptr<Track>> copy_without_samples(const Track& source, Movie& movie);

}  // namespace toolbox
