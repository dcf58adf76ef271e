// The pixels of host pictures, row by row, whichever of its two kinds the host's pictures are.
#pragma once

#include <krz/abi.h>

#include <cstdint>

namespace krz {

/// How a picture's pixels lie in memory: the alpha info of a bitmap context, or kOlderBuffer.
/// Pixels of layouts 1, 3 and 5 end with alpha or a skipped byte, those of 2, 4 and 6 begin with
/// it.
enum PixelLayout : int32_t { kNoLayout = 0, kLastAlphaLayout = 6, kOlderBuffer = 8 };

/// What kind of pictures this host has, learnt on first use and kept.
extern bool IsDesktop;
extern bool IsConsole;

/// A host picture whose pixels are at hand: picture and description stay locked while it is
/// attached.
class PictureEditor {
 public:
  PictureEditor() = default;
  virtual ~PictureEditor();
  PictureEditor(const PictureEditor&) = delete;
  PictureEditor& operator=(const PictureEditor&) = delete;

  /// Lets go of what it held and attaches to a picture. With `mayClone`, a picture without alpha
  /// that has no bitmap context is edited in a copy; with `writerMode`, the host's cached rendering
  /// is cleared when the editor lets go. Fails: false for nil and for pixels of no known layout.
  bool GetPictureEditor(REALpictureStruct* picture, bool mayClone, bool writerMode);

  /// Moves to the start of the next row; behind the last one to the first.
  void AddPixelRow();

  /// Lets go of the picture and hands it over, locked once for the caller; nil when there is none.
  REALpictureStruct* RenderPictureWriter();

  /// Where the current row begins; 4 bytes a pixel.
  uint8_t* row() const { return row_; }
  int32_t width() const { return width_; }
  int32_t height() const { return height_; }
  PixelLayout layout() const { return layout_; }

 private:
  enum class Attempt { kFirst, kOnClone };

  bool attach(REALpictureStruct* picture, bool may_clone, bool writer_mode, Attempt attempt);
  bool take_context(bool has_alpha);
  bool take_buffer(bool has_alpha);
  void keep(REALpictureStruct* picture);
  void release();

  REALpictureStruct* picture_ = nullptr;
  REALpictureDescription description_ = {};
  uint8_t* base_ = nullptr;
  void** rows_ = nullptr;  // of the older buffer
  int32_t row_bytes_ = 0;
  int32_t width_ = 0;
  int32_t height_ = 0;
  PixelLayout layout_ = kNoLayout;
  uint8_t* row_ = nullptr;
  int32_t row_index_ = 0;
  bool writer_mode_ = false;
};

/// An editor that owns a new picture.
class PictureWriter : public PictureEditor {
 public:
  ~PictureWriter() override;

  /// Makes a blank 32-bit picture and attaches to it. Fails: false for sizes outside 1 to 32767 and
  /// where the host makes none.
  bool NewPictureWriter(int32_t width, int32_t height);
};

}  // namespace krz
