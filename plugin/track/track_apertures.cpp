// The sizes of a track in the aperture modes. The results are the toolbox's codes, -1 without a
// track; the track's error stays as it is.
#include "host/instance_data.h"
#include "track/track.h"

namespace krz {

int32_t rbGenerateTrackApertureModeDimensions(REALobject object) {
  const int32_t track = track_data(object).track;
  return track ? GenerateTrackApertureModeDimensions(to_reference<Track>(track)) : -1;
}

int32_t rbRemoveTrackApertureModeDimensions(REALobject object) {
  const int32_t track = track_data(object).track;
  return track ? RemoveTrackApertureModeDimensions(to_reference<Track>(track)) : -1;
}

int32_t rbSetTrackApertureModeDimensionsUsingSampleDescription(REALobject object) {
  const int32_t track = track_data(object).track;
  // No description: the toolbox takes the track's own.
  return track ? SetTrackApertureModeDimensionsUsingSampleDescription(to_reference<Track>(track),
                                                                      nullptr)
               : -1;
}

}  // namespace krz
