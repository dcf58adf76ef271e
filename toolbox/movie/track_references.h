// The tracks that a track names, by type of reference.
#pragma once

#include <cstdint>
#include <vector>

#include "base/four_cc.h"

namespace toolbox {

/// The references of one type. IDs of 0 and of tracks that do not exist are holes: kept in place,
/// skipped in lookups.
struct TrackReferenceList {
  FourCC type = 0;
  std::vector<uint32_t> track_ids;
};

/// All references of a track, types in file order. Two lists of one type are kept as two and read
/// as one.
struct TrackReferences {
  std::vector<TrackReferenceList> lists;
};

}  // namespace toolbox
