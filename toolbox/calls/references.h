// From the references that callers hold to the objects of the engine, and back.
#pragma once

#include <QuickTime/QuickTime.h>

#include "metadata/metadata.h"
#include "movie/movie.h"

namespace toolbox::calls {

/// The object behind a reference. Fails: invalidMovie, invalidTrack, invalidMedia for null, stale
/// and foreign ones.
Result<Movie*> find_movie(::Movie reference);
Result<Track*> find_track(::Track reference);
Result<Media*> find_media(::Media reference);

/// Likewise for lists and containers. Fail: paramErr, kQTMetaDataInvalidMetaDataErr.
Result<UserDataList*> find_user_data(::UserData reference);
Result<MetaData*> find_metadata(::QTMetaDataRef reference);

/// The reference to an object; the same each time. Fails: memFullErr when there are a million
/// references.
Result<::Movie> reference_to(Movie& movie);
Result<::Track> reference_to(Track& track);
Result<::Media> reference_to(Media& media);
Result<::UserData> reference_to(UserDataList& list);
Result<::MediaHandler> reference_to(MediaHandler& handler);

/// A time in the 32 bits that callers have; one that does not fit becomes the nearest that does.
TimeValue to_time_value(int64_t time);

/// A count or index likewise.
SInt32 to_count(uint64_t count);

}  // namespace toolbox::calls
