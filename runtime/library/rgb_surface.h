// The class RGBSurface: single pixels of a picture.
#pragma once

#include "registry/registry.h"

namespace krz {

/// A surface that keeps the picture alive, locked once; null without memory.
REALobject new_rgb_surface(REALpictureStruct* picture);

void register_rgb_surface(Registry& registry);

}  // namespace krz
