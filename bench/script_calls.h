// What a call from a script into the module costs.
#pragma once

#include <string>

namespace bench {

/// Nanoseconds a call of a getter of a track, from a loop in a script: the loop with the call less
/// the loop without.
double nanoseconds_per_getter(const std::string& movie);

}  // namespace bench
