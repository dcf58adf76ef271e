// Takes out of the media of a movie what no edit shows.
#pragma once

#include "movie/movie.h"

namespace toolbox {

/// Leaves every media only the samples that its track's edits show, and those from the sync sample
/// before on, which decoding needs. What is shown does not change. A track that shows all of its
/// samples keeps its tables as they are. The bytes of the others go when the movie is saved as a
/// new file with MediaDataKept::kUsed. Fails: as share_samples(), featureUnsupported for samples
/// with auxiliary data (encrypted ones), which would lose it; tracks before the one that failed may
/// then have been changed.
Status keep_shown_samples(Movie& movie);

}  // namespace toolbox
