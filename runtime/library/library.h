// The classes and functions that every script has, without any module.
#pragma once

#include "registry/registry.h"

namespace krz {

void register_library(Registry& registry);

}  // namespace krz
