#include "entries/entries.h"

#include <string_view>

#include "entries/entry_table.h"
#include "runtime.h"

namespace krz {

void* resolve_entry(const char* name) {
  if (!name) return nullptr;
  const std::string_view wanted = name;
  if (Runtime::current().options().withheld_entries.contains(wanted)) return nullptr;
  using Group = std::span<const HostEntry> (*)();
  for (const Group group :
       {start_up_entries, object_entries, string_entries, data_entries, picture_entries}) {
    for (const HostEntry& entry : group()) {
      if (wanted == entry.name) return reinterpret_cast<void*>(entry.function);
    }
  }
  return nullptr;
}

}  // namespace krz
