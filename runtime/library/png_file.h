// Pictures in PNG files.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "object/picture_pixels.h"

namespace krz {

/// Makes the pixels for a picture of that size; null without memory.
using PixelMaker =
    std::function<std::unique_ptr<PicturePixels>(int32_t width, int32_t height, bool has_alpha)>;

/// The picture of a file. Memory is asked for only when the file is long enough to fill it.
/// Fails:  null, with an IOException, UnsupportedFormatException or OutOfMemoryException raised
///         that names the file.
std::unique_ptr<PicturePixels> read_png(const std::string& path, const PixelMaker& make_pixels);

/// Writes a picture to a file, which appears under its name when it is whole and replaces what is
/// there. Fails: raises an IOException or UnsupportedFormatException.
void write_png(const PicturePixels& pixels, const std::string& path);

}  // namespace krz
