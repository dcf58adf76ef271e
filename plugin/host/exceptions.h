// Host exceptions: how misuse by a script and exhausted memory are reported.
#pragma once

#include <cstdint>

namespace krz {

/// Raises a host exception of that class, or a "RuntimeException" when the host has no such class.
/// The call returns; the host unwinds the script after the module's function has returned.
/// `message`: ASCII, null for none. `encoding` is there for callers of old; the message is taken as
/// ASCII whatever it says. Fails: raises nothing when the host can make neither exception.
void RaiseException(const char* exceptionClass, const char* message, uint32_t encoding);

}  // namespace krz
