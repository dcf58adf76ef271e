// The clock of movie files.
#pragma once

#include <cstdint>

namespace toolbox {

/// Seconds from 1904-01-01 00:00 to 1970-01-01 00:00, both in UTC.
inline constexpr uint64_t kMacTimeOfUnixZero = 2'082'844'800;

/// Now, in seconds since 1904-01-01 UTC.
uint64_t current_mac_time();

}  // namespace toolbox
