#include "picture/picture_editor.h"

#include <ApplicationServices/ApplicationServices.h>

#include "host/entries.h"
#include "picture/picture.h"

namespace krz {

bool IsDesktop = false;
bool IsConsole = false;

namespace {

constexpr int32_t kLargestSide = 32767;
constexpr size_t kBitsPerPixel = 32;

/// Applications that draw on a desktop have bitmap contexts, others perhaps the older buffers.
void ask_for_application_kind() {
  static bool asked = false;
  if (asked) return;
  asked = true;
  if (REALGetClassRef("Application")) {
    IsDesktop = true;
  } else if (REALGetClassRef("ConsoleApplication") || REALGetClassRef("WebApplication")) {
    IsConsole = true;
  }
}

bool has_alpha_channel(REALpictureStruct* picture) {
  uint8_t has_alpha = 0;
  return REALGetPropValueUInt8(as_object(picture), "HasAlphaChannel", &has_alpha) && has_alpha;
}

}  // namespace

PictureEditor::~PictureEditor() { release(); }

void PictureEditor::release() {
  if (!picture_) return;
  REALUnlockPictureDescription(picture_);
  if (writer_mode_) REALPictureClearCache(picture_);
  REALUnlockObject(as_object(picture_));
  picture_ = nullptr;
  description_ = {};
  base_ = row_ = nullptr;
  rows_ = nullptr;
  row_bytes_ = width_ = height_ = row_index_ = 0;
  layout_ = kNoLayout;
  writer_mode_ = false;
}

bool PictureEditor::GetPictureEditor(REALpictureStruct* picture, bool mayClone, bool writerMode) {
  return attach(picture, mayClone, writerMode, Attempt::kFirst);
}

bool PictureEditor::attach(REALpictureStruct* picture, bool may_clone, bool writer_mode,
                           Attempt attempt) {
  release();
  if (!picture) return false;
  ask_for_application_kind();
  const bool has_alpha = has_alpha_channel(picture);
  bool attached = false;
  if (!IsConsole && REALLockPictureDescriptionX(picture, &description_, kPictureBitmapContext)) {
    IsDesktop = true;
    attached = take_context(has_alpha);
  } else if (!IsConsole && !has_alpha && may_clone && !writer_mode && attempt == Attempt::kFirst) {
    // The copy is tried with the same flags, save that a copy is not copied again: a host that
    // never describes its pictures would have it go on for ever.
    REALpictureStruct* const clone = ClonePicture(picture);
    const bool edits_clone = attach(clone, may_clone, writer_mode, Attempt::kOnClone);
    if (clone) REALUnlockObject(as_object(clone));
    return edits_clone;
  } else if (!IsDesktop &&
             REALLockPictureDescriptionX(picture, &description_, kPicturePixelBuffer)) {
    IsConsole = true;
    attached = take_buffer(has_alpha);
  } else {
    return false;
  }
  if (!attached) {
    REALUnlockPictureDescription(picture);
    return false;
  }
  keep(picture);
  writer_mode_ = writer_mode;
  return true;
}

bool PictureEditor::take_context(bool has_alpha) {
  if (description_.type != kPictureBitmapContext || !description_.data) return false;
  const auto context = static_cast<CGContextRef>(description_.data);
  const auto info = static_cast<int32_t>(CGBitmapContextGetAlphaInfo(context) & 7);
  const int32_t highest = has_alpha ? int32_t{kCGImageAlphaPremultipliedFirst} : kLastAlphaLayout;
  if (info < 1 || info > highest) return false;
  if (CGBitmapContextGetBitsPerPixel(context) != kBitsPerPixel) return false;
  base_ = static_cast<uint8_t*>(CGBitmapContextGetData(context));
  width_ = static_cast<int32_t>(CGBitmapContextGetWidth(context));
  height_ = static_cast<int32_t>(CGBitmapContextGetHeight(context));
  row_bytes_ = static_cast<int32_t>(CGBitmapContextGetBytesPerRow(context));
  layout_ = static_cast<PixelLayout>(info);
  return base_ != nullptr;
}

bool PictureEditor::take_buffer(bool has_alpha) {
  if (description_.type != kPicturePixelBuffer || !description_.data) return false;
  const auto& buffer = *static_cast<const REALpixelBuffer*>(description_.data);
  if (!has_alpha && buffer.has_alpha != 0) return false;
  if (!buffer.rows || description_.height < 1) return false;
  rows_ = buffer.rows;
  base_ = static_cast<uint8_t*>(rows_[0]);
  width_ = description_.width;
  height_ = description_.height;
  row_bytes_ = width_ * 4;
  layout_ = kOlderBuffer;
  return true;
}

void PictureEditor::keep(REALpictureStruct* picture) {
  REALLockObject(as_object(picture));
  picture_ = picture;
  row_ = base_;
  row_index_ = 0;
}

void PictureEditor::AddPixelRow() {
  ++row_index_;
  if (row_index_ >= height_) {
    row_ = base_;
  } else if (layout_ == kOlderBuffer) {
    row_ = static_cast<uint8_t*>(rows_[row_index_]);
  } else {
    row_ = base_ + static_cast<ptrdiff_t>(row_index_) * row_bytes_;
  }
}

REALpictureStruct* PictureEditor::RenderPictureWriter() {
  REALpictureStruct* const picture = picture_;
  if (!picture) return nullptr;
  REALLockObject(as_object(picture));
  REALPictureClearCache(picture);
  release();
  return picture;
}

PictureWriter::~PictureWriter() = default;

bool PictureWriter::NewPictureWriter(int32_t width, int32_t height) {
  if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide) return false;
  REALpictureStruct* const picture = REALNewPicture(width, height, 32);
  const bool attached = GetPictureEditor(picture, false, true);
  if (picture) REALUnlockObject(as_object(picture));
  return attached;
}

}  // namespace krz
