// Which bytes of a movie's own file its sample tables use.
#pragma once

#include <vector>

#include "file/byte_source.h"
#include "movie/movie.h"

namespace toolbox {

/// The ranges of the movie's own file in which samples lie, in file order, apart from each other.
/// Fails: as Media::samples(); endOfDataReached when samples lie behind the end of the file.
Result<std::vector<ByteRange>> used_media_data(const Movie& movie);

}  // namespace toolbox
