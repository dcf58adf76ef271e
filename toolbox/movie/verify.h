// Looks a movie over: whether its atoms, tables, references and samples agree with each other.
#pragma once

#include <string>
#include <vector>

#include "base/status.h"

namespace toolbox {

class Movie;
class Track;

/// What is wrong or odd, a sentence each, at most a hundred. Walks every sample table, and looks
/// whether each sample lies inside its file and that file is to be had; media data is not read.
/// Fails: ioErr, memFullErr.
Result<std::vector<std::string>> verify_movie(const Movie& movie);

/// A checksum over the bytes of the first `count` samples of a track in decode order, sizes
/// included; 32
/// hexadecimal digits. For telling whether samples are the same, not against malice. A track
/// without media has that of no samples. Fails: as reading the samples.
Result<std::string> digest_samples(const Track& track, uint32_t count = UINT32_MAX);

}  // namespace toolbox
