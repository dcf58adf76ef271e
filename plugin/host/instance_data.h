// Where an object's data lies, and how 32-bit fields hold references of the toolbox.
#pragma once

#include <krz/abi.h>

#include <cstdint>

namespace krz {

/// The data that `definition` declared, inside an object of that class or of a subclass. The object
/// owns it.
template <class Data>
Data& instance_data(REALobject object, const REALclassDefinition& definition) {
  return *reinterpret_cast<Data*>(reinterpret_cast<char*>(object) + definition.host_slot);
}

/// References of the toolbox are numbers below 2^32, so that scripts can hold them as integers.
template <class Reference>
Reference to_reference(int32_t token) {
  return reinterpret_cast<Reference>(static_cast<uintptr_t>(static_cast<uint32_t>(token)));
}

inline int32_t to_token(const void* reference) {
  return static_cast<int32_t>(reinterpret_cast<uintptr_t>(reference));
}

}  // namespace krz
