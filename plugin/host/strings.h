// Host strings from bytes and from codes, and back.
#pragma once

#include <Carbon/Carbon.h>
#include <krz/abi.h>

namespace krz {

/// A new string of `length` bytes in `encoding`. UTF-16 and UTF-32 (native order) become UTF-8;
/// everything else keeps its bytes and is marked with the encoding. Of a UTF-32 character only the
/// low 16 bits are kept. Fails: nil for nil bytes, for lengths below 1 or above 0x7FFFFFFE, and
/// when the host or memory fails.
REALstring REALBuildUnicodeString(const void* bytes, int64_t length, uint32_t encoding);

/// The same with the length in two 32-bit halves, the low one first.
REALstring REALBuildUnicodeString(const void* bytes, uint32_t length_low, int32_t length_high,
                                  uint32_t encoding);

/// The code as a new string of four bytes, the most significant first: MacRoman when it has a byte
/// above 127, else ASCII.
REALstring REALBuildOSTypeString(OSType code);

/// The code that a text's MacRoman form stands for; never fails. Four spaces for nil and the empty
/// text.
OSType REALstringToOSType(REALstring string);

/// The text's MacRoman form as a Pascal string, cut at 255 bytes.
void PutSystemString(Str255 out, REALstring string);

/// A new string of a Pascal string's characters; nil when it is empty.
REALstring BuildPascalString(ConstStr255Param text, uint32_t encoding);

/// A new string with a copy of the handle's bytes; nil for nil and empty handles.
REALstring HandleToString(Handle handle, uint32_t encoding);

}  // namespace krz
