// Small movies by name, for tests that need some movie rather than a particular one.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "file/movie_builder.h"

namespace toolbox {

/// Descriptions to build as they are, or to change first:
///   two-tracks   320x240 video and stereo sound, ten seconds each
///   edited       one video track: half a second of nothing, then the media from its second second
///   on chapters     video, and a disabled text track of three chapters that the video refers to
///   timecode     video, and a drop-frame timecode track that starts at frame 107892
///   tables       one video track with every kind of sample table
///   fragments    video whose samples are partly in two fragments, sound that is only there
///   empty        a movie without tracks
/// An unknown name ends the test program.
BuiltMovie test_movie(std::string_view name);

/// All the names above.
extern const char* const kTestMovies[7];

/// The files of the folder of real movies; none where it is not there.
std::vector<std::filesystem::path> corpus();

}  // namespace toolbox
