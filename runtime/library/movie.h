// The class Movie and the function that opens one.
#pragma once

#include <QuickTime/QuickTime.h>

#include "registry/registry.h"

namespace krz {

/// The toolbox's movie behind a Movie object; null for null, for another object and for a closed
/// movie.
Movie movie_reference(REALobject movie);

void register_movie(Registry& registry);

}  // namespace krz
