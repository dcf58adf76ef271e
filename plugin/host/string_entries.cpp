// Host services for strings, and the bytes of a string on hosts that do not hand them out
// themselves.
#include <cstdlib>
#include <cstring>

#include "host/entries.h"
#include "host/resolver.h"

namespace krz {
namespace {

/// Wide enough to end 8-, 16- and 32-bit text.
constexpr size_t kTerminatorBytes = 4;

/// Copies `length` bytes into a buffer of the process heap of at least `room` bytes of text, and
/// ends them with zeros.
bool copy_terminated(const char* bytes, int32_t length, int32_t room, uint32_t encoding,
                     REALstringData* data) {
  if (!bytes || length < 0) return false;
  // A record that says less than the text needs would overrun: the text's own length is the least.
  const auto size = static_cast<size_t>(room > length ? room : length);
  auto* buffer = static_cast<char*>(std::malloc(size + kTerminatorBytes));
  if (!buffer) return false;
  std::memcpy(buffer, bytes, static_cast<size_t>(length));
  std::memset(buffer + length, 0, kTerminatorBytes);
  *data = {.data = buffer, .length = length, .encoding = encoding};
  return true;
}

/// The answer of REALGetStringData, built from the entries of hosts that lack it.
bool get_string_data_from_older_entries(REALstring string, uint32_t encoding,
                                        REALstringData* data) {
  static constinit HostEntry<const char*(REALstring)> pCString("StringGetCString");
  using ByteLength = int32_t (*)(REALstring);
  static constinit ByteLength pLenB = nullptr;

  const auto c_string = pCString.find();
  if (!pLenB) {
    pLenB = reinterpret_cast<ByteLength>(REALLoadFrameworkMethod("LenB( s as string ) as integer"));
  }
  if (!pLenB || !c_string || !string) return false;

  if (encoding == kEncodingUnknown) {
    // The length already standing in the caller's record, not the measured one, sizes this buffer.
    return copy_terminated(c_string(string), pLenB(string), data->length, encoding, data);
  }
  if (REALGetStringEncoding(string) == encoding) {
    return copy_terminated(c_string(string), pLenB(string), 0, encoding, data);
  }
  const REALstring converted = REALConvertString(string, encoding);
  if (!converted) return false;
  const bool copied = copy_terminated(c_string(converted), pLenB(converted), 0, encoding, data);
  REALUnlockString(converted);
  return copied;
}

}  // namespace

REALstring originalREALBuildString(const char* bytes, int32_t count) {
  static constinit HostEntry<REALstring(const char*, int32_t)> pBuildString("REALBuildString");
  return pBuildString(bytes, count);
}

void REALLockString(REALstring string) {
  static constinit HostEntry<void(REALstring)> pLockString("REALLockString");
  pLockString(string);
}

void REALUnlockString(REALstring string) {
  static constinit HostEntry<void(REALstring)> pUnlockString("REALUnlockString");
  pUnlockString(string);
}

uint32_t REALGetStringEncoding(REALstring string) {
  static constinit HostEntry<uint32_t(REALstring)> pGetStringEncoding("REALGetStringEncoding");
  return pGetStringEncoding(string);
}

void REALSetStringEncoding(REALstring string, uint32_t encoding) {
  static constinit HostEntry<void(REALstring, uint32_t)> pSetStringEncoding(
      "REALSetStringEncoding");
  pSetStringEncoding(string, encoding);
}

REALstring REALConvertString(REALstring string, uint32_t encoding) {
  static constinit HostEntry<REALstring(REALstring, uint32_t)> pConvertString("REALConvertString");
  return pConvertString(string, encoding);
}

bool REALGetStringData(REALstring string, uint32_t encoding, REALstringData* data) {
  static constinit HostEntry<bool(REALstring, uint32_t, REALstringData*)> pGetStringData(
      "PluginGetStringData");
  if (pGetStringData.find()) return pGetStringData(string, encoding, data);
  return get_string_data_from_older_entries(string, encoding, data);
}

void REALDisposeStringData(REALstringData* data) {
  static constinit HostEntry<void(REALstringData*)> pDisposeStringData("PluginDisposeStringData");
  if (pDisposeStringData.find()) {
    pDisposeStringData(data);
  } else {
    std::free(data->data);
  }
}

}  // namespace krz
