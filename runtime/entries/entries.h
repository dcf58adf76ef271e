// The host services that modules look up by name.
#pragma once

#include <cstdint>

namespace krz {

/// The address of a host service; null when there is none of that name or the runtime's options
/// withhold it.
void* resolve_entry(const char* name);

/// The interface version that the module being loaded announced.
int32_t announced_version();
void set_announced_version(int32_t version);

}  // namespace krz
