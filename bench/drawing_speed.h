// What drawing costs: a large mask that becomes a region and back, and a picture made of a world.
#pragma once

#include <filesystem>
#include <string>

namespace bench {

struct DrawingSpeed {
  double set_mask_ms = 0;       // a mask of 4096 by 4096 becomes the region of a track
  double get_mask_ms = 0;       // and the region a picture
  double build_picture_ms = 0;  // a 32-bit world of that size becomes a host picture
  double copy_ms = 0;           // the same pixels by memcpy into new memory of the same kind
};

/// Runs krz and the program build_pictures of the folder `bin`.
DrawingSpeed measure_drawing(const std::filesystem::path& folder, const std::filesystem::path& bin);

}  // namespace bench
