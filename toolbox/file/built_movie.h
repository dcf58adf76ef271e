// How a described movie is laid out, and its movie atom: the inner half of movie_builder.h.
#pragma once

#include "file/byte_sink.h"
#include "file/movie_builder.h"

namespace toolbox {

/// What follows from a description: where media data begins, behind the start of all media data,
/// and how long it is.
struct TrackLayout {
  uint64_t media_start = 0;
  uint64_t media_bytes = 0;
  uint64_t media_ticks = 0;  // the sum of all sample durations
  uint64_t movie_ticks = 0;  // the length of the track
};

struct MovieLayout {
  std::vector<TrackLayout> tracks;
  uint64_t media_bytes = 0;
};

/// Fails: paramErr with what contradicts itself.
Status check_description(const BuiltMovie& movie);

MovieLayout lay_out(const BuiltMovie& movie);

/// Writes the plain movie atom; the media data begins at `media_offset` of the file.
/// Fails: paramErr (an offset that does not fit, an atom of 4 GiB).
Status compose_movie_atom(const BuiltMovie& movie, const MovieLayout& layout, uint64_t media_offset,
                          ByteSink& sink);

}  // namespace toolbox
