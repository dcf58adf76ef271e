// The class Graphics: draws on a picture.
#pragma once

#include "registry/registry.h"

namespace krz {

/// Graphics of a picture, which they keep alive, locked once; null without memory.
REALgraphicsStruct* new_graphics(REALpictureStruct* picture);

void register_graphics(Registry& registry);

}  // namespace krz
