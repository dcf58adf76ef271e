// Read-only views of host values: a string's text in a few encodings, and plain bytes.
#include "host/text_view.h"

#include <cstring>

#include "host/encodings.h"
#include "host/entries.h"
#include "host/resolver.h"
#include "host/strings.h"

namespace krz {
namespace {

/// What every empty view points at.
constexpr uint32_t kNothing[2] = {};

constexpr uint16_t kByteOrderMark = 0xFEFF;
constexpr uint16_t kSwappedByteOrderMark = 0xFFFE;

/// The string as hosts before 2013 store it: the text begins one byte into its storage.
const void* stored_bytes(REALstring string) {
  const char* storage = reinterpret_cast<const REALstringRecord*>(string)->storage;
  return storage ? storage + 1 : nullptr;
}

int32_t stored_length(REALstring string) {
  return reinterpret_cast<const REALstringRecord*>(string)->length;
}

}  // namespace

rbText::rbText(REALstring string) {
  if (!string) return;
  if (REALGetStringEncoding(string) == kEncodingUnknown) {
    const rbData raw(string);
    string_ = REALBuildUnicodeString(raw.bytes(), raw.size(), kMacRoman);
  } else {
    REALLockString(string);
    string_ = string;
  }
}

rbText::~rbText() {
  for (View* view : {&utf16_, &utf8_, &mac_roman_}) {
    if (view->data.data) REALDisposeStringData(&view->data);
    if (view->converted) REALUnlockString(view->converted);
  }
  if (string_) REALUnlockString(string_);
}

const rbText::View& rbText::view(View& view, uint32_t encoding,
                                 double first_version_with_data) const {
  if (view.length != kNotYetAsked) return view;
  view.length = 0;
  if (string_) {
    if (rbversion >= first_version_with_data) {
      if (REALGetStringData(string_, encoding, &view.data)) {
        view.bytes = view.data.data;
        view.length = view.data.length;
      }
    } else {
      view.converted = REALConvertString(string_, encoding);
      if (view.converted) {
        view.bytes = stored_bytes(view.converted);
        view.length = stored_length(view.converted);
      }
    }
  }
  if (!view.bytes || view.length < 1) {
    view.bytes = kNothing;
    view.length = 0;
  }
  return view;
}

const rbText::View& rbText::utf16() const {
  const bool first_time = utf16_.length == kNotYetAsked;
  view(utf16_, kUTF16, kVersionWithByteData);
  if (!first_time) return utf16_;

  // Old hosts store text at odd addresses.
  if (reinterpret_cast<uintptr_t>(utf16_.bytes) % alignof(uint16_t) != 0) {
    aligned_ = Memory(AllocateClearMemory(utf16_.length));
    if (aligned_) std::memcpy(aligned_.get(), utf16_.bytes, static_cast<size_t>(utf16_.length));
    utf16_.bytes = aligned_ ? aligned_.get() : kNothing;
    if (!aligned_) utf16_.length = 0;
  }

  // One mark of each order may stand at the start, the native one first; the text itself is never
  // swapped.
  for (const uint16_t mark : {kByteOrderMark, kSwappedByteOrderMark}) {
    const auto* units = static_cast<const uint16_t*>(utf16_.bytes);
    if (utf16_.length < 2 || units[0] != mark) continue;
    utf16_.bytes = units + 1;
    utf16_.length -= 2;
  }
  if (utf16_.length < 2) utf16_.bytes = kNothing;
  return utf16_;
}

const uint16_t* rbText::GetUTF16() const { return static_cast<const uint16_t*>(utf16().bytes); }

int32_t rbText::LengthUTF16() const { return utf16().length / 2; }

const char* rbText::GetUTF8() const {
  return static_cast<const char*>(view(utf8_, kUTF8, kVersionWithTextData).bytes);
}

int32_t rbText::LengthUTF8() const { return view(utf8_, kUTF8, kVersionWithTextData).length; }

const char* rbText::GetMacRoman() const {
  return static_cast<const char*>(view(mac_roman_, kMacRoman, kVersionWithTextData).bytes);
}

int32_t rbText::LengthMacRoman() const {
  return view(mac_roman_, kMacRoman, kVersionWithTextData).length;
}

rbData::rbData(REALstring string) {
  if (!string) return;
  if (rbversion >= kVersionWithByteData) {
    if (!REALGetStringData(string, kEncodingUnknown, &data_)) return;
    bytes_ = data_.data;
    size_ = data_.length;
  } else {
    REALLockString(string);
    string_ = string;
    bytes_ = stored_bytes(string);
    size_ = stored_length(string);
  }
  if (!bytes_ || size_ < 1) {
    bytes_ = nullptr;
    size_ = 0;
  }
}

rbData::rbData(REALmemoryBlockStruct* block, int32_t offset, int32_t size) {
  if (!block) return;
  REALLockObject(reinterpret_cast<REALobject>(block));
  block_ = block;
  const auto* contents = static_cast<const char*>(REALMemoryBlockGetPtr(block));
  if (!contents) return;
  bytes_ = contents + offset;
  size_ = size == 0 ? REALMemoryBlockGetSize(block) - offset : size;
}

rbData::~rbData() {
  if (data_.data) REALDisposeStringData(&data_);
  if (string_) REALUnlockString(string_);
  if (block_) REALUnlockObject(reinterpret_cast<REALobject>(block_));
}

}  // namespace krz
