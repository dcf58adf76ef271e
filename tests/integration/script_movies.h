// The movies that scripts ask for by name, each made so that right answers differ from defaults.
#pragma once

#include <string>
#include <string_view>

#include "file/movie_builder.h"

namespace krz::test {

/// Those of toolbox/test_movies.h, and:
///   lookup        video off (ID 70), sound (3), video (2000), sound off (5), text (9)
///   headers       one video track whose header fields all hold something unusual
///   old-headers   one sound track, dates beyond 2^32 seconds
///   rates         ten frames at half and at double speed, then one frame held
///   ntsc          three frames of 1001/30000 s in a movie of 600 ticks a second
///   ntsc-long     a minute of them
///   long          four frames of 2^30 ticks each
///   descriptions  video of two descriptions and two files
///   odd-text      video whose chapters are text samples of every kind and damage, 60 ticks each
///   circles       video and text that name each other as their chapters
///   silent        a sound track without samples
///   damaged       video whose table of durations claims rows that are not there, and a track
///                 without media
///   described     see described_movie.h
///   tone, broken-sound, anamorphic, bad-apertures
///                 see sound_movies.h
///   huge-samples  video of samples without bytes; of a gibibyte each, which the file does not
///   have;
///                 whose second sample has a description that is missing
///   clipped       video of 32 by 48 pixels, cut to columns 0 to 9 of rows 0 to 39 and columns 10
///   to
///                 29 of rows 20 to 39
/// Writes one of them. Fails: paramErr for another name, and as toolbox::write_movie().
toolbox::Status write_script_movie(std::string_view name, const std::string& path);

}  // namespace krz::test
