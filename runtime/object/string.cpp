#include "object/string.h"

#include <cstdlib>
#include <cstring>
#include <limits>

#include "object/memory_budget.h"
#include "object/text_codec.h"

namespace krz {

namespace {

int64_t g_live_strings = 0;

// Text begins at this byte of the block, so that wide characters in it are aligned; storage begins
// one byte before.
constexpr size_t kTextPosition = 32;
static_assert(sizeof(REALstringStruct) < kTextPosition);

// Modules end texts of any character width with these.
constexpr size_t kTerminatorSize = 4;

}  // namespace

REALstring make_string(std::string_view bytes, uint32_t text_encoding) {
  if (bytes.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max()) - kTerminatorSize) {
    memory_budget::note_refusal();
    return nullptr;
  }
  auto* block = static_cast<char*>(
      memory_budget::take_block(std::malloc(kTextPosition + bytes.size() + kTerminatorSize)));
  if (!block) return nullptr;
  auto* string = reinterpret_cast<REALstringStruct*>(block);
  string->locks = 1;
  string->storage = block + kTextPosition - 1;
  string->encoding = text_encoding;
  string->length = static_cast<int32_t>(bytes.size());
  string->storage[0] = 0;
  if (!bytes.empty()) std::memcpy(block + kTextPosition, bytes.data(), bytes.size());
  std::memset(block + kTextPosition + bytes.size(), 0, kTerminatorSize);
  ++g_live_strings;
  return string;
}

void free_string(REALstring string) {
  --g_live_strings;
  memory_budget::free_block(string);
}

std::string string_utf8(REALstring string) {
  const std::string_view bytes = string_bytes(string);
  if (bytes.empty()) return {};
  if (extends_ascii(string->encoding) && is_ascii(bytes)) return std::string(bytes);
  return transcode(bytes, string->encoding, encoding::kUtf8);
}

std::string string_path(REALstring string) {
  const std::string_view bytes = string_bytes(string);
  return string && string->encoding == encoding::kUtf8 ? std::string(bytes) : string_utf8(string);
}

REALstring convert_string(REALstring string, uint32_t text_encoding) {
  if (!string) return nullptr;
  const std::string_view bytes = string_bytes(string);
  if (text_encoding == kEncodingUnknown) return make_string(bytes, string->encoding);
  const bool same_bytes =
      string->encoding == text_encoding ||
      (extends_ascii(string->encoding) && extends_ascii(text_encoding) && is_ascii(bytes));
  if (same_bytes) return make_string(bytes, text_encoding);
  return make_string(transcode(bytes, string->encoding, text_encoding), text_encoding);
}

int64_t live_strings() { return g_live_strings; }

}  // namespace krz
