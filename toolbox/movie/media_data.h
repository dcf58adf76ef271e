// Where the bytes of samples are: in the movie's own file, in data that waits for the next save, or
// in another file.
#pragma once

#include "base/bytes.h"
#include "base/status.h"
#include "movie/external_files.h"

namespace toolbox {

class Media;
class Movie;

/// Whether a movie is of the classic flavour, whose atoms differ a little from those of ISO files.
bool is_classic(const Movie& movie);

/// The path of the movie's own file, as it was opened; empty for a movie without one.
std::string own_path(const Movie& movie);

/// A data reference (whole atom) to the movie's own file, in the movie's flavour.
Bytes self_reference(const Movie& movie);

/// A data reference (whole atom) to another file at an absolute path, likewise.
Bytes external_reference(const Movie& movie, const std::string& path);

/// Whether an entry of the data references says that the data is in the movie's own file.
bool is_self_reference(ByteView entry);

/// Which data reference (from 1) leads to the samples of a description (from 1) in another file; 0
/// when they lie in the movie's own. A description or a data reference that is missing does not
/// point elsewhere. Fails: as Media::descriptions() and Media::data_references().
Result<uint16_t> external_reference_of(const Media& media, uint32_t description);

/// The file that an external data reference (from 1) of a media leads to. Fails: as
/// ExternalFiles::open; the text names movie and track.
Result<std::shared_ptr<const ExternalFile>> open_external(const Media& media, uint16_t reference);

/// Bytes that a piece of sample data may have at most: those of the file or the waiting data that
/// `offset` lies in. Fails: as open_external().
Result<uint64_t> data_bytes_at(const Media& media, uint32_t description, uint64_t offset);

/// Reads sample data. Fails: endOfDataReached when it reaches behind the end of the file, ioErr, as
/// open_external().
Status read_media_data(const Media& media, uint32_t description, uint64_t offset,
                       std::span<uint8_t> bytes);

/// Whether a save may put new data into the movie's file. Adding data does not write yet, but
/// whoever does it wants to hear at once that it is in vain. Fails: wrPermErr.
Status check_writable(const Movie& movie);

}  // namespace toolbox
