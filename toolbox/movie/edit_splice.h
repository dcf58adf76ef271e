// Cuts edit lists apart and joins them: the arithmetic of all calls that insert.
#pragma once

#include <span>
#include <vector>

#include "movie/edit_timeline.h"

namespace toolbox {

class Track;

/// The edits of a track with what the file leaves open filled in, none of them without duration.
std::vector<Edit> filled_edits(const Track& track);

/// The edits that a list shows between two movie ticks. The right part of a split edit begins at
/// the media time worked out from the edit's own start. `scales` are those of the list's track.
std::vector<Edit> edits_between(std::span<const Edit> edits, int64_t start, int64_t end,
                                TimeScales scales);

/// Puts edits at a movie tick: what lies there is split and moves later, a gap behind the end is
/// filled with empty time, and an inserted edit that goes on where the one before it ends becomes
/// one with it.
void splice_edits(std::vector<Edit>& edits, int64_t at, std::span<const Edit> inserted,
                  TimeScales scales);

/// The list of a track that shows these edits and, when there are none, nothing.
EditList explicit_list(std::vector<Edit> edits);

}  // namespace toolbox
