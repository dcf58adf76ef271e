// The class DateTime: a moment, as a calendar and a clock show it.
#pragma once

#include "library/calendar.h"
#include "registry/registry.h"

namespace krz {

/// A new object for a moment, locked once; null, with the exception raised, when it is not within
/// the years 1 to 9999.
REALobject new_date_time(const Moment& moment);

void register_date_time(Registry& registry);

}  // namespace krz
