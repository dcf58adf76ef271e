// The groups of host services, one table a file.
#pragma once

#include <span>

#include "registry/registry.h"

namespace krz {

struct HostEntry {
  const char* name;
  REALfunction function;
};

std::span<const HostEntry> start_up_entries();
std::span<const HostEntry> object_entries();
std::span<const HostEntry> string_entries();
std::span<const HostEntry> data_entries();
std::span<const HostEntry> picture_entries();

}  // namespace krz

#define KRZ_ENTRY(name, function) \
  { name, reinterpret_cast<REALfunction>(&function) }
