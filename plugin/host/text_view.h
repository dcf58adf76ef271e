// Read-only views of host values: a string's text in a few encodings, and plain bytes.
#pragma once

#include <krz/abi.h>

#include "host/memory.h"

namespace krz {

/// The text of one host string in UTF-16 (native order), UTF-8 and MacRoman, each worked out when
/// first asked for.
///
/// Byte-order marks at the start of UTF-16 text are left out. Bytes of unknown encoding are taken
/// as MacRoman. What is given is never null, lives as long as the view, and is empty for nil and
/// when the host cannot convert.
class rbText {
 public:
  explicit rbText(REALstring string);
  ~rbText();
  rbText(const rbText&) = delete;
  rbText& operator=(const rbText&) = delete;

  const uint16_t* GetUTF16() const;
  int32_t LengthUTF16() const;  // 16-bit units
  const char* GetUTF8() const;
  int32_t LengthUTF8() const;  // bytes
  const char* GetMacRoman() const;
  int32_t LengthMacRoman() const;  // bytes

 private:
  static constexpr int32_t kNotYetAsked = -1;

  struct View {
    const void* bytes = nullptr;
    int32_t length = kNotYetAsked;  // bytes
    REALstringData data = {};       // from the host, when it hands out bytes
    REALstring converted = nullptr;
  };

  const View& view(View& view, uint32_t encoding, double first_version_with_data) const;
  const View& utf16() const;

  REALstring string_ = nullptr;
  mutable Memory aligned_;  // UTF-16 text that the host stores at an odd address
  mutable View utf16_;
  mutable View utf8_;
  mutable View mac_roman_;
};

/// The bytes of a string as they are stored, or of a memory block from `offset` on.
class rbData {
 public:
  explicit rbData(REALstring string);
  /// `size` 0 stands for all that the block holds from `offset` on. The block is locked while the
  /// view lives.
  explicit rbData(REALmemoryBlockStruct* block, int32_t offset = 0, int32_t size = 0);
  ~rbData();
  rbData(const rbData&) = delete;
  rbData& operator=(const rbData&) = delete;

  /// Null when there are none.
  const void* bytes() const { return bytes_; }
  int32_t size() const { return size_; }

 private:
  const void* bytes_ = nullptr;
  int32_t size_ = 0;
  REALstring string_ = nullptr;  // locked: a string of an older host
  REALmemoryBlockStruct* block_ = nullptr;
  REALstringData data_ = {};
};

}  // namespace krz
