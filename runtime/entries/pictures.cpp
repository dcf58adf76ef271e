// Host services around pictures: new ones, what is inside, and what draws on them.
#include "entries/entry_table.h"
#include "library/graphics.h"
#include "library/picture.h"

namespace krz {

namespace {

// The depth that modules ask for says how they will write pixels; all pictures have 32 bits.
REALpictureStruct* new_opaque_picture(int32_t width, int32_t height, int32_t) {
  return new_picture(width, height, false);
}

REALpictureStruct* picture_from_buffer(int32_t width, int32_t height, RBPixelType type,
                                       void* buffer, int32_t row_bytes) {
  const auto alpha_info = static_cast<uint32_t>(type);
  if (!buffer || row_bytes < 0 || width < 1 || height < 1 || alpha_info < 1 || alpha_info > 6)
    return nullptr;
  const CGContextRef source = CGBitmapContextCreate(buffer, size_t(width), size_t(height), 8,
                                                    size_t(row_bytes), nullptr, alpha_info);
  const CGImageRef image = CGBitmapContextCreateImage(source);
  CGContextRelease(source);
  REALpictureStruct* const picture =
      image ? new_picture(width, height, alpha_info <= kCGImageAlphaFirst) : nullptr;
  if (picture) {
    const CGContextRef target = picture_pixels(picture)->context_over(0, 0, width, height);
    CGContextDrawImage(target, {0, 0, double(width), double(height)}, image);
    CGContextRelease(target);
  }
  CGImageRelease(image);
  return picture;
}

REALgraphicsStruct* graphics_of(REALpictureStruct* picture) {
  return picture_pixels(picture) ? new_graphics(picture) : nullptr;
}

// Nothing is kept beside the pixels, so there is nothing that a change makes old.
void clear_cache(REALpictureStruct*) {}

void lock_description(REALpictureStruct* picture, REALpictureDescription* description) {
  if (!description) return;
  PicturePixels* const pixels = picture_pixels(picture);
  *description = pixels ? pixels->description() : REALpictureDescription{};
}

bool lock_description_of_type(REALpictureStruct* picture, REALpictureDescription* description,
                              int32_t type) {
  if (!description) return false;
  lock_description(picture, description);
  if (description->type == type && type != 0) return true;
  *description = {};
  return false;
}

// Pixels never move, so that a locked picture needs nothing of its own.
void unlock_description(REALpictureStruct*) {}

const HostEntry kEntries[] = {
    KRZ_ENTRY("newPicture", new_opaque_picture),
    KRZ_ENTRY("REALBuildPictureFromBuffer", picture_from_buffer),
    KRZ_ENTRY("pluginPictureGraphicsGetter", graphics_of),
    KRZ_ENTRY("REALPictureClearCache", clear_cache),
    KRZ_ENTRY("lockPictureDescription", lock_description),
    KRZ_ENTRY("REALLockPictureDescription", lock_description_of_type),
    KRZ_ENTRY("unlockPictureDescription", unlock_description),
};

}  // namespace

std::span<const HostEntry> picture_entries() { return kEntries; }

}  // namespace krz
