// Host strings from bytes and from codes, and back.
#include "host/strings.h"

#include <array>
#include <cstring>

#include "host/encodings.h"
#include "host/entries.h"
#include "host/memory.h"
#include "host/text_view.h"

namespace krz {
namespace {

constexpr int64_t kMaxStringBytes = 0x7FFFFFFE;

REALstring build_marked(const void* bytes, int32_t length, uint32_t encoding) {
  const REALstring string = originalREALBuildString(static_cast<const char*>(bytes), length);
  if (string) REALSetStringEncoding(string, encoding);
  return string;
}

/// Hands `string` back and gives the same text in UTF-8.
REALstring exchange_for_utf8(REALstring string) {
  const REALstring converted = REALConvertString(string, kUTF8);
  if (string) REALUnlockString(string);
  return converted;
}

/// A UTF-8 string of the low 16 bits of each 32-bit unit.
REALstring build_from_utf32(const void* bytes, int32_t length) {
  // Short texts, the usual ones, need no memory of their own.
  constexpr int32_t kMaxBytesOnStack = 799;
  std::array<uint16_t, kMaxBytesOnStack / 4> on_stack;
  const int32_t count = length / 4;
  Memory on_heap;
  uint16_t* units = on_stack.data();
  if (length > kMaxBytesOnStack) {
    on_heap = Memory(AllocateClearMemory(int64_t{count} * 2 + 4));
    if (!on_heap) return nullptr;
    units = static_cast<uint16_t*>(on_heap.get());
  }
  for (int32_t i = 0; i < count; ++i) {
    uint32_t unit;
    std::memcpy(&unit, static_cast<const char*>(bytes) + size_t{4} * i, sizeof unit);
    units[i] = static_cast<uint16_t>(unit);
  }
  return exchange_for_utf8(build_marked(units, count * 2, kUTF16));
}

}  // namespace

REALstring REALBuildUnicodeString(const void* bytes, int64_t length, uint32_t encoding) {
  if (!bytes || length < 1 || length > kMaxStringBytes) return nullptr;
  const auto byte_count = static_cast<int32_t>(length);
  if (encoding == kUTF32) return build_from_utf32(bytes, byte_count);
  const REALstring string = build_marked(bytes, byte_count, encoding);
  if (encoding != kUTF16 || !string) return string;
  return exchange_for_utf8(string);
}

REALstring REALBuildUnicodeString(const void* bytes, uint32_t length_low, int32_t length_high,
                                  uint32_t encoding) {
  const auto length =
      static_cast<int64_t>(uint64_t{static_cast<uint32_t>(length_high)} << 32 | length_low);
  return REALBuildUnicodeString(bytes, length, encoding);
}

REALstring REALBuildOSTypeString(OSType code) {
  const char text[4] = {static_cast<char>(code >> 24), static_cast<char>(code >> 16),
                        static_cast<char>(code >> 8), static_cast<char>(code)};
  return build_marked(text, sizeof text, code & 0x80808080 ? kMacRoman : kASCII);
}

OSType REALstringToOSType(REALstring string) {
  const rbText text(string);
  const char* characters = text.GetMacRoman();
  const int32_t length = text.LengthMacRoman();

  // The bytes of the code are filled from the last one on, each from its own place in the text, as
  // many as the text has characters. So a short text does not give a code padded with spaces: its
  // first characters are lost, and zeros stand where the text has ended. Scripts have come to rely
  // on it.
  OSType code = 0x20202020;
  for (int32_t i = 0; i < 4 && i < length; ++i) {
    const int32_t position = 3 - i;
    const auto byte = position < length ? static_cast<uint8_t>(characters[position]) : uint8_t{0};
    const int shift = 8 * i;
    code = (code & ~(0xFFu << shift)) | (OSType{byte} << shift);
  }
  return code;
}

void PutSystemString(Str255 out, REALstring string) {
  const rbText text(string);
  const int32_t length = text.LengthMacRoman() < 255 ? text.LengthMacRoman() : 255;
  out[0] = static_cast<UInt8>(length);
  std::memcpy(out + 1, text.GetMacRoman(), static_cast<size_t>(length));
}

REALstring BuildPascalString(ConstStr255Param text, uint32_t encoding) {
  return REALBuildUnicodeString(text + 1, text[0], encoding);
}

REALstring HandleToString(Handle handle, uint32_t encoding) {
  if (!handle) return nullptr;
  const Size size = GetHandleSize(handle);
  if (size < 1) return nullptr;
  HLock(handle);
  const REALstring string = REALBuildUnicodeString(*handle, size, encoding);
  HUnlock(handle);
  return string;
}

}  // namespace krz
