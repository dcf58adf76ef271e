// The aperture modes of a movie: which of their sizes its tracks report.
#include "host/strings.h"
#include "movie/movie.h"

namespace krz {

int32_t rbGenerateMovieApertureModeDimensions(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  return movie ? GenerateMovieApertureModeDimensions(movie) : -1;
}

int32_t rbRemoveMovieApertureModeDimensions(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  return movie ? RemoveMovieApertureModeDimensions(movie) : -1;
}

int32_t rbSetMovieApertureMode(REALmovieStruct* host_movie, REALstring theApertureMode) {
  const Movie movie = movie_of(host_movie);
  if (!movie) return -1;
  const OSType mode = REALstringToOSType(theApertureMode);
  // Every other mode needs sizes to choose from, also one that the toolbox will not know.
  if (mode != kQTApertureMode_Classic) {
    Boolean has_dimensions = 0;
    const OSStatus asked = QTGetMovieProperty(movie, kQTPropertyClass_Visual,
                                              kQTVisualPropertyID_HasApertureModeDimensions,
                                              sizeof has_dimensions, &has_dimensions, nullptr);
    if (asked != noErr) return asked;
    if (!has_dimensions) {
      const OSErr generated = GenerateMovieApertureModeDimensions(movie);
      if (generated != noErr) return generated;
    }
  }
  return QTSetMovieProperty(movie, kQTPropertyClass_Visual, kQTVisualPropertyID_ApertureMode,
                            sizeof mode, &mode);
}

REALstring rbGetMovieApertureMode(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  OSType mode = 0;
  const bool is_known =
      movie && QTGetMovieProperty(movie, kQTPropertyClass_Visual, kQTVisualPropertyID_ApertureMode,
                                  sizeof mode, &mode, nullptr) == noErr;
  return is_known ? REALBuildOSTypeString(mode) : nullptr;
}

}  // namespace krz
