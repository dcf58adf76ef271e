#include "library/picture.h"

#include "library/folder_item.h"
#include "library/graphics.h"
#include "library/io_error.h"
#include "library/parts.h"
#include "library/png_file.h"
#include "library/rgb_surface.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

struct Content {
  std::unique_ptr<PicturePixels> pixels;
  DrawingState state;
};

struct PictureData {
  Content* content;  // null in a picture without a size
};

REALclassDefinition g_class;

PictureData& data_of(REALobject picture) { return data_in<PictureData>(picture, g_class); }

void destroy(REALobject picture) { delete data_of(picture).content; }

bool set_pixels(REALobject picture, std::unique_ptr<PicturePixels> pixels) {
  if (!pixels) return false;
  delete data_of(picture).content;
  data_of(picture).content = new Content{std::move(pixels), {}};
  return true;
}

std::unique_ptr<PicturePixels> make_pixels(int32_t width, int32_t height, bool has_alpha) {
  return PicturePixels::make(Runtime::current().options().picture_kind, width, height, has_alpha);
}

void construct(REALobject picture, int32_t width, int32_t height, bool has_alpha) {
  if (width < 1 || height < 1 || width > kMostPicturePixels || height > kMostPicturePixels) {
    return raise_exception("OutOfBoundsException",
                           "a picture is 1 to 32767 pixels wide and high, not " +
                               std::to_string(width) + " x " + std::to_string(height));
  }
  if (!set_pixels(picture, make_pixels(width, height, has_alpha))) {
    raise_exception("OutOfMemoryException", "there is no memory for a picture of " +
                                                std::to_string(width) + " x " +
                                                std::to_string(height) + " pixels");
  }
}

void construct_with_alpha(REALobject picture, int32_t width, int32_t height) {
  construct(picture, width, height, true);
}

void construct_with_depth(REALobject picture, int32_t width, int32_t height, int32_t depth) {
  for (const int32_t known : {0, 1, 2, 4, 8, 16, 24, 32}) {
    if (depth == known) return construct(picture, width, height, depth == 0);
  }
  raise_exception("InvalidArgumentException",
                  "a picture has no depth of " + std::to_string(depth) +
                      "; give 32, or leave the depth out for a picture with alpha");
}

// Null, with the exception raised, for a picture without a size.
PicturePixels* pixels_of(REALobject picture) {
  if (const Content* const content = data_of(picture).content) return content->pixels.get();
  raise_exception("UnsupportedFormatException",
                  "the picture has no pixels; make it with New Picture(width, height)");
  return nullptr;
}

int32_t width(REALobject picture, intptr_t) {
  const Content* const content = data_of(picture).content;
  return content ? content->pixels->width() : 0;
}
int32_t height(REALobject picture, intptr_t) {
  const Content* const content = data_of(picture).content;
  return content ? content->pixels->height() : 0;
}
bool has_alpha(REALobject picture, intptr_t) {
  const Content* const content = data_of(picture).content;
  return content && content->pixels->has_alpha();
}

REALobject graphics(REALobject picture, intptr_t) {
  if (!pixels_of(picture)) return nullptr;
  return reinterpret_cast<REALobject>(new_graphics(reinterpret_cast<REALpictureStruct*>(picture)));
}

REALobject surface(REALobject picture, intptr_t) {
  return pixels_of(picture) ? new_rgb_surface(reinterpret_cast<REALpictureStruct*>(picture))
                            : nullptr;
}

REALobject open_png(const std::string& path) {
  if (!check_path(path)) return nullptr;
  std::unique_ptr<PicturePixels> pixels = read_png(path, make_pixels);
  if (!pixels) return nullptr;
  const REALobject picture = new_instance(Runtime::current().registry().class_named(g_class.name));
  if (picture) set_pixels(picture, std::move(pixels));
  return picture;
}

REALobject open_path(REALstring path) { return open_png(string_path(path)); }
REALobject open_item(REALfolderItemStruct* item) { return open_png(folder_item_path(item)); }

void save(REALobject picture, const std::string& path) {
  if (const PicturePixels* const pixels = pixels_of(picture); pixels && check_path(path))
    write_png(*pixels, path);
}
void save_path(REALobject picture, REALstring path) { save(picture, string_path(path)); }
void save_item(REALobject picture, REALfolderItemStruct* item) {
  save(picture, folder_item_path(item));
}

PropertyEntry g_properties[] = {
    KRZ_READ_ONLY(width, "Width", "Integer"),
    KRZ_READ_ONLY(height, "Height", "Integer"),
    KRZ_READ_ONLY(has_alpha, "HasAlphaChannel", "Boolean"),
    KRZ_READ_ONLY(graphics, "Graphics", "Graphics"),
    KRZ_READ_ONLY(surface, "RGBSurface", "RGBSurface"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(construct_with_alpha, "Constructor(width as integer, height as integer)"),
    KRZ_METHOD(construct_with_depth,
               "Constructor(width as integer, height as integer, depth as integer)"),
    KRZ_METHOD(save_path, "Save(path as string)"),
    KRZ_METHOD(save_item, "Save(file as FolderItem)"),
};

MethodEntry g_shared_methods[] = {
    KRZ_SHARED(open_path, "Open(path as string) as Picture"),
    KRZ_SHARED(open_item, "Open(file as FolderItem) as Picture"),
};

Content* content_of(REALpictureStruct* picture) {
  const auto object = reinterpret_cast<REALobject>(picture);
  const bool is_picture =
      object && object->class_info && object->class_info->definition() == &g_class;
  return is_picture ? data_of(object).content : nullptr;
}

}  // namespace

REALpictureStruct* new_picture(int32_t width, int32_t height, bool has_alpha) {
  std::unique_ptr<PicturePixels> pixels = make_pixels(width, height, has_alpha);
  if (!pixels) return nullptr;
  const REALobject picture = new_instance(Runtime::current().registry().class_named(g_class.name));
  if (picture) set_pixels(picture, std::move(pixels));
  return reinterpret_cast<REALpictureStruct*>(picture);
}

PicturePixels* picture_pixels(REALpictureStruct* picture) {
  const Content* const content = content_of(picture);
  return content ? content->pixels.get() : nullptr;
}

DrawingState& drawing_state(REALpictureStruct* picture) { return content_of(picture)->state; }

void register_picture(Registry& registry) {
  g_class = class_of<PictureData>("Picture");
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_properties(g_class, g_properties);
  set_methods(g_class, g_methods);
  set_shared_methods(g_class, g_shared_methods);
  registry.register_class(g_class);
}

}  // namespace krz
