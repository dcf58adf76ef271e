// A raw sample description, read field by field and never beyond its end.
#pragma once

#include <Carbon/Carbon.h>
#include <krz/abi.h>

#include <bit>
#include <cstdint>

#include "host/strings.h"

namespace krz {

/// The record in a handle that stays where it is meanwhile. Fields are big-endian; one that does
/// not lie inside the record whole reads as zero.
class DescriptionRecord {
 public:
  DescriptionRecord(const void* bytes, Size size)
      : bytes_(static_cast<const uint8_t*>(bytes)), size_(size) {}

  uint8_t byte(Size at) const { return at < size_ ? bytes_[at] : uint8_t{0}; }
  int16_t int16(Size at) const { return static_cast<int16_t>(number(at, 2)); }
  int32_t int32(Size at) const { return static_cast<int32_t>(number(at, 4)); }
  uint32_t uint32(Size at) const { return static_cast<uint32_t>(number(at, 4)); }
  double float64(Size at) const { return std::bit_cast<double>(number(at, 8)); }

  /// Signed 16.16.
  double fixed(Size at) const { return int32(at) * (1.0 / 65536); }

  /// 0x00RRGGBB from three 16-bit components.
  uint32_t color(Size at) const {
    return uint32_t{byte(at)} << 16 | uint32_t{byte(at + 2)} << 8 | byte(at + 4);
  }

  /// New strings, which the caller owns. A Pascal string is cut where the record ends.
  REALstring code(Size at) const { return REALBuildOSTypeString(uint32(at)); }
  REALstring pascal_string(Size at, uint32_t encoding) const {
    if (at >= size_) return nullptr;
    const Size length = bytes_[at] < size_ - at - 1 ? bytes_[at] : size_ - at - 1;
    return REALBuildUnicodeString(bytes_ + at + 1, length, encoding);
  }

 private:
  uint64_t number(Size at, Size width) const {
    uint64_t value = 0;
    if (width > size_ - at) return 0;
    for (Size i = 0; i < width; ++i) value = value << 8 | bytes_[at + i];
    return value;
  }

  const uint8_t* bytes_;
  Size size_;
};

}  // namespace krz
