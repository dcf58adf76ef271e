// Host strings: counted, immutable bytes with a text encoding. A null string is the empty string
// everywhere.
#pragma once

#include <krz/abi.h>

#include <string>
#include <string_view>

#include "export.h"

/// A host string. Its head is the record that modules of old hosts read directly, so text stands
/// one byte into `storage`, which lies right behind the head, and four zero bytes end it.
struct REALstringStruct : REALstringRecord {};

namespace krz {

namespace encoding {
inline constexpr uint32_t kMacRoman = 0;
inline constexpr uint32_t kUtf16 = 0x100;
inline constexpr uint32_t kLatin1 = 0x201;
inline constexpr uint32_t kAscii = 0x600;
inline constexpr uint32_t kUtf8 = 0x08000100;
inline constexpr uint32_t kUtf32 = 0x0C000100;
}  // namespace encoding

/// A new string with a copy of `bytes`, locked once for the caller. Null without memory; an empty
/// text gives a string, not null.
KRZ_API REALstring make_string(std::string_view bytes, uint32_t text_encoding = encoding::kUtf8);

/// The bytes of a string; empty for null. Valid while the string lives.
inline std::string_view string_bytes(REALstring string) {
  return string ? std::string_view(string->storage + 1, static_cast<size_t>(string->length))
                : std::string_view();
}

inline void lock_string(REALstring string) {
  if (string) ++string->locks;
}
KRZ_API void free_string(REALstring string);
inline void unlock_string(REALstring string) {
  if (string && --string->locks == 0) free_string(string);
}

/// The text in UTF-8, whatever the string's encoding; bytes that the encoding does not define
/// become U+FFFD.
std::string string_utf8(REALstring string);

/// The bytes of the path of a file: those of a string in UTF-8 as they are, for names of files need
/// not be text, else the text in UTF-8.
std::string string_path(REALstring string);

/// The same text in another encoding, as a new string locked once. Characters the target lacks
/// become "?".
REALstring convert_string(REALstring string, uint32_t text_encoding);

/// Live strings of the process, for leak checks.
int64_t live_strings();

}  // namespace krz
