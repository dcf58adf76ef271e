#include "library/rgb_surface.h"

#include "library/parts.h"
#include "library/picture.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

struct SurfaceData {
  REALobject picture;  // null in a surface that a script made itself
};

REALclassDefinition g_class;

SurfaceData& data_of(REALobject surface) { return data_in<SurfaceData>(surface, g_class); }

void destroy(REALobject surface) { unlock_object(data_of(surface).picture); }

// The pixels of the surface; null, with the exception raised, when there is none at that place.
PicturePixels* pixels_at(REALobject surface, int32_t x, int32_t y) {
  PicturePixels* const pixels =
      picture_pixels(reinterpret_cast<REALpictureStruct*>(data_of(surface).picture));
  if (!pixels) {
    raise_exception("NilObjectException",
                    "the surface belongs to no picture; ask a picture for it");
    return nullptr;
  }
  if (x >= 0 && y >= 0 && x < pixels->width() && y < pixels->height()) return pixels;
  raise_exception("OutOfBoundsException",
                  "there is no pixel " + std::to_string(x) + ", " + std::to_string(y) +
                      " in a picture of " + std::to_string(pixels->width()) + " x " +
                      std::to_string(pixels->height()) + "; both are counted from 0");
  return nullptr;
}

uint32_t pixel(REALobject surface, int32_t x, int32_t y) {
  const PicturePixels* const pixels = pixels_at(surface, x, y);
  if (!pixels) return 0;
  const uint8_t* const bytes = pixels->pixel(x, y);
  const PixelPlaces at = pixels->places();
  uint32_t parts[] = {bytes[at.red], bytes[at.green], bytes[at.blue]};
  if (pixels->has_alpha()) {
    // Colours are kept multiplied by their alpha.
    const uint32_t alpha = bytes[at.alpha];
    for (uint32_t& part : parts) {
      if (alpha == 0 || part >= alpha)
        part = alpha == 0 ? 0 : 255;
      else
        part = (part * 255 + alpha / 2) / alpha;
    }
  }
  return parts[0] << 16 | parts[1] << 8 | parts[2];
}

void set_pixel(REALobject surface, int32_t x, int32_t y, uint32_t color) {
  PicturePixels* const pixels = pixels_at(surface, x, y);
  if (!pixels) return;
  uint8_t* const bytes = pixels->pixel(x, y);
  const PixelPlaces at = pixels->places();
  bytes[at.alpha] = 255;
  bytes[at.red] = static_cast<uint8_t>(color >> 16);
  bytes[at.green] = static_cast<uint8_t>(color >> 8);
  bytes[at.blue] = static_cast<uint8_t>(color);
}

MethodEntry g_methods[] = {
    KRZ_ASSIGNABLE(pixel, set_pixel, "Pixel(x as integer, y as integer) as color"),
};

}  // namespace

REALobject new_rgb_surface(REALpictureStruct* picture) {
  const REALobject surface = new_instance(Runtime::current().registry().class_named(g_class.name));
  if (!surface) return nullptr;
  data_of(surface).picture = reinterpret_cast<REALobject>(picture);
  lock_object(data_of(surface).picture);
  return surface;
}

void register_rgb_surface(Registry& registry) {
  g_class = class_of<SurfaceData>("RGBSurface");
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
