// Shows what edits of one track show in a track of another media, whose tables get the samples.
#pragma once

#include <span>

#include "base/status.h"
#include "movie/edit_list.h"

namespace toolbox {

class Track;

/// Gives the media of `target` the samples that edits of `source` show, behind its own, their times
/// in its scale; and answers the edits that show the same there, in the ticks of its movie. An edit
/// that shows nothing of its media becomes empty. The edits of `target` show what they did. For
/// where the bytes of the samples are then, see SamplePlaces.
///
/// Fails: mediaTypesDontMatch when not both have media of one type; featureUnsupported when samples
/// are too short to be told apart at the target's time scale, or are sound that no samples can be
/// added to; as Media::samples() of both, Media::append_samples() and SamplePlaces. Samples that
/// no edit shows may then have been added.
Result<std::vector<Edit>> share_samples(const Track& source, std::span<const Edit> edits,
                                        Track& target);

}  // namespace toolbox
