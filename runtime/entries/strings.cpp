// Host services around strings.
#include <cstdlib>
#include <cstring>

#include "entries/entry_table.h"
#include "object/string.h"

namespace krz {

namespace {

constexpr size_t kTerminatorSize = 4;

REALstring build(const char* bytes, int32_t count) {
  if (count < 0 || (!bytes && count > 0)) return nullptr;
  return make_string({bytes, static_cast<size_t>(count)}, kEncodingUnknown);
}

void lock(REALstring string) { lock_string(string); }
void unlock(REALstring string) { unlock_string(string); }

uint32_t text_encoding(REALstring string) { return string ? string->encoding : 0; }

void set_text_encoding(REALstring string, uint32_t value) {
  if (string) string->encoding = value;
}

REALstring convert(REALstring string, uint32_t to) { return convert_string(string, to); }

const char* bytes_of(REALstring string) { return string ? string->storage + 1 : nullptr; }

// A copy from the process heap, so that it may be given back to whichever disposing function the
// module finds.
bool string_data(REALstring string, uint32_t wanted, REALstringData* data) {
  if (!string || !data) return false;
  const bool as_stored = wanted == kEncodingUnknown || wanted == string->encoding;
  const REALstring converted = as_stored ? nullptr : convert_string(string, wanted);
  if (!as_stored && !converted) return false;
  const std::string_view bytes = string_bytes(as_stored ? string : converted);
  auto* const copy = static_cast<char*>(std::malloc(bytes.size() + kTerminatorSize));
  if (copy) {
    std::memcpy(copy, bytes.data(), bytes.size());
    std::memset(copy + bytes.size(), 0, kTerminatorSize);
    *data = {copy, static_cast<int32_t>(bytes.size()), wanted};
  }
  unlock_string(converted);
  return copy != nullptr;
}

void dispose_string_data(REALstringData* data) {
  if (!data) return;
  std::free(data->data);
  data->data = nullptr;
  data->length = 0;
}

const HostEntry kEntries[] = {
    KRZ_ENTRY("REALBuildString", build),
    KRZ_ENTRY("REALLockString", lock),
    KRZ_ENTRY("REALUnlockString", unlock),
    KRZ_ENTRY("REALGetStringEncoding", text_encoding),
    KRZ_ENTRY("REALSetStringEncoding", set_text_encoding),
    KRZ_ENTRY("REALConvertString", convert),
    KRZ_ENTRY("StringGetCString", bytes_of),
    KRZ_ENTRY("PluginGetStringData", string_data),
    KRZ_ENTRY("PluginDisposeStringData", dispose_string_data),
};

}  // namespace

std::span<const HostEntry> string_entries() { return kEntries; }

}  // namespace krz
