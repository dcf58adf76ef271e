// Host pictures out of offscreen worlds: one 32-bit word a pixel, by the depth of the world and the
// layout of the picture.
#include <bit>
#include <cstring>

#include "picture/picture.h"
#include "picture/picture_editor.h"

namespace krz {
namespace {

/// The forms of word that there are for a pixel: alpha or a skipped byte last, first, or the number
/// of the older buffer.
enum class Form { kLast, kFirst, kOlder };

/// The word for the source bytes of a pixel.
template <int kDepth, Form kForm>
uint32_t word_of(const uint8_t* source) {
  if constexpr (kDepth == 32) {
    const uint32_t s0 = source[0], s1 = source[1], s2 = source[2], s3 = source[3];
    if constexpr (kForm == Form::kLast) return s0 << 24 | s3 << 16 | s2 << 8 | s1;
    if constexpr (kForm == Form::kFirst) return s3 << 24 | s2 << 16 | s1 << 8 | s0;
    // The top byte is halved to 7 bits.
    return (s0 >> 1 & 0x7F) << 24 | s1 << 16 | s2 << 8 | s3;
  } else if constexpr (kDepth == 24) {
    const uint32_t s0 = source[0], s1 = source[1], s2 = source[2];
    if constexpr (kForm == Form::kLast) return 0xFF000000 | s2 << 16 | s1 << 8 | s0;
    if constexpr (kForm == Form::kFirst) return s2 << 24 | s1 << 16 | s0 << 8 | 0xFF;
    return s0 << 16 | s1 << 8 | s2;
  } else {
    // A level of grey, whatever the colour table says.
    const uint32_t grey = source[0];
    if constexpr (kForm == Form::kLast) return 0xFF000000 | grey * 0x010101;
    if constexpr (kForm == Form::kFirst) return grey * 0x01010100 | 0xFF;
    return grey * 0x010101;
  }
}

/// The same for the four bytes of a pixel of depth 32, read as one little-endian number.
template <Form kForm>
uint32_t word_of_little(uint32_t pixel) {
  if constexpr (kForm == Form::kLast) return pixel >> 8 | pixel << 24;
  if constexpr (kForm == Form::kFirst) return pixel;
  return (pixel >> 1 & 0x7F) << 24 | (pixel << 8 & 0xFF0000) | (pixel >> 8 & 0xFF00) | pixel >> 24;
}

using WriteRow = void (*)(const uint8_t* source, uint8_t* destination, int32_t width);

template <int kDepth, Form kForm>
void write_row(const uint8_t* source, uint8_t* destination, int32_t width) {
  const auto write = [&](int32_t x) {
    const uint32_t word = word_of<kDepth, kForm>(source + x * (kDepth / 8));
    std::memcpy(destination + x * 4, &word, sizeof word);
  };
  int32_t x = 0;
  if constexpr (kDepth == 32 && std::endian::native == std::endian::little) {
    // Runs of a known length, so that the compiler takes several pixels at a time.
    constexpr int32_t kRun = 16;
    for (; x + kRun <= width; x += kRun) {
      uint32_t words[kRun];
      std::memcpy(words, source + x * 4, sizeof words);
      for (uint32_t& word : words) word = word_of_little<kForm>(word);
      std::memcpy(destination + x * 4, words, sizeof words);
    }
  }
  for (; x < width; ++x) write(x);
}

template <int kDepth>
WriteRow find_row_writer(PixelLayout layout) {
  if (layout == kOlderBuffer) return write_row<kDepth, Form::kOlder>;
  if (layout < 1 || layout > kLastAlphaLayout) return nullptr;
  return layout % 2 != 0 ? write_row<kDepth, Form::kLast> : write_row<kDepth, Form::kFirst>;
}

/// Null for a depth that has no words, or a layout that gets none.
WriteRow find_row_writer(int depth, PixelLayout layout) {
  switch (depth) {
    case 32:
      return find_row_writer<32>(layout);
    case 24:
      return find_row_writer<24>(layout);
    case 8:
      return find_row_writer<8>(layout);
    default:
      return nullptr;
  }
}

REALpictureStruct* build_picture(GWorldPtr world) {
  Rect bounds;
  GetPortBounds(world, &bounds);
  const int32_t width = bounds.right - bounds.left, height = bounds.bottom - bounds.top;
  if (width < 1 || height < 1) return nullptr;
  const PixMapHandle pixels = GetGWorldPixMap(world);
  if (!pixels) return nullptr;
  const int depth = GetPixDepth(pixels);
  if (depth != 32 && depth != 24 && depth != 8) return nullptr;
  if (!LockPixels(pixels)) return nullptr;
  REALpictureStruct* picture = nullptr;
  if (const auto* source = reinterpret_cast<const uint8_t*>(GetPixBaseAddr(pixels))) {
    const SInt32 row_bytes = GetPixRowBytes(pixels);
    PictureWriter writer;
    if (writer.NewPictureWriter(width, height)) {
      const WriteRow write = find_row_writer(depth, writer.layout());
      // A host that made a narrower picture than it was asked for gets what has room.
      const int32_t columns = writer.width() < width ? writer.width() : width;
      for (int32_t y = 0; y < height; ++y) {
        if (write) write(source, writer.row(), columns);
        source += row_bytes;
        writer.AddPixelRow();
      }
      picture = writer.RenderPictureWriter();
    }
  }
  UnlockPixels(pixels);
  return picture;
}

}  // namespace

REALpictureStruct* REALBuildPictureFromGWorldKRZ(GWorldPtr world, bool dispose) {
  if (!world) return nullptr;
  REALpictureStruct* const picture = build_picture(world);
  if (dispose) DisposeGWorld(world);
  return picture;
}

REALpictureStruct* REALBuildPictureFromGWorld(GWorldPtr world, bool dispose) {
  return REALBuildPictureFromGWorldKRZ(world, dispose);
}

}  // namespace krz
