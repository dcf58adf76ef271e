// The clip region of a track as a picture: black inside, white outside.
#pragma once

#include <krz/abi.h>

namespace krz {

/// A new picture of the track's size; nil for a track that is not clipped, and on failure.
REALpictureStruct* rbGetTrackClipRgn(REALobject object);

/// Clips the track to the dark pixels of a picture; nil ends its clipping, and so does a picture
/// that no region can be made of.
void rbSetTrackClipRgn(REALobject object, REALpictureStruct* picture);

}  // namespace krz
