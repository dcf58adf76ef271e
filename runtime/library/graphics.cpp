#include "library/graphics.h"

#include "library/parts.h"
#include "library/picture.h"
#include "library/raster.h"
#include "library/text_drawing.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

struct GraphicsData {
  REALobject picture;  // null in graphics that a script made itself
};

REALclassDefinition g_class;

// What a part of a picture's size stands for when it is left out.
constexpr int32_t kWhole = -10000;

REALpictureStruct* picture_of(REALobject graphics) {
  return reinterpret_cast<REALpictureStruct*>(data_in<GraphicsData>(graphics, g_class).picture);
}

void destroy(REALobject graphics) {
  unlock_object(data_in<GraphicsData>(graphics, g_class).picture);
}

// What is drawn on; null, with the exception raised, without a picture.
PicturePixels* target(REALobject graphics) {
  PicturePixels* const pixels = picture_pixels(picture_of(graphics));
  if (!pixels) {
    raise_exception("NilObjectException",
                    "the graphics belong to no picture; ask a picture for its Graphics");
  }
  return pixels;
}

DrawingState* state_of(REALobject graphics) {
  return target(graphics) ? &drawing_state(picture_of(graphics)) : nullptr;
}

int32_t width(REALobject graphics, intptr_t) {
  const PicturePixels* const pixels = target(graphics);
  return pixels ? pixels->width() : 0;
}
int32_t height(REALobject graphics, intptr_t) {
  const PicturePixels* const pixels = target(graphics);
  return pixels ? pixels->height() : 0;
}

// A property that is kept with the picture.
template <auto kField, class Value>
struct Setting {
  static Value get(REALobject graphics, intptr_t) {
    const DrawingState* const state = state_of(graphics);
    return state ? state->*kField : Value{};
  }
  static void set(REALobject graphics, intptr_t, Value value) {
    if (DrawingState* const state = state_of(graphics)) state->*kField = value;
  }
};
using ForeColor = Setting<&DrawingState::fore_color, uint32_t>;
using PenWidth = Setting<&DrawingState::pen_width, int32_t>;
using TextSize = Setting<&DrawingState::text_size, int32_t>;
using Bold = Setting<&DrawingState::bold, bool>;

REALstring text_font(REALobject graphics, intptr_t) {
  const DrawingState* const state = state_of(graphics);
  return state ? make_string(state->text_font) : nullptr;
}
void set_text_font(REALobject graphics, intptr_t, REALstring family) {
  if (DrawingState* const state = state_of(graphics)) state->text_font = string_utf8(family);
}

// Calls `draw` with a raster in the current colour.
template <class Draw>
void with_raster(REALobject graphics, Draw draw) {
  PicturePixels* const pixels = target(graphics);
  if (!pixels) return;
  const DrawingState& state = drawing_state(picture_of(graphics));
  Raster raster(*pixels, state.fore_color);
  draw(raster, state);
}

void fill_rect(REALobject graphics, int32_t x, int32_t y, int32_t w, int32_t h) {
  with_raster(graphics, [&](Raster& raster, const DrawingState&) { raster.fill_rect(x, y, w, h); });
}
void fill_oval(REALobject graphics, int32_t x, int32_t y, int32_t w, int32_t h) {
  with_raster(graphics, [&](Raster& raster, const DrawingState&) { raster.fill_oval(x, y, w, h); });
}
void draw_line(REALobject graphics, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  with_raster(graphics, [&](Raster& raster, const DrawingState& state) {
    raster.line(x1, y1, x2, y2, state.pen_width);
  });
}
void draw_string(REALobject graphics, REALstring text, int32_t x, int32_t y) {
  with_raster(graphics, [&](Raster& raster, const DrawingState& state) {
    draw_text(raster, state, string_utf8(text), x, y);
  });
}
double string_width(REALobject graphics, REALstring text) {
  const DrawingState* const state = state_of(graphics);
  return state ? text_width(*state, string_utf8(text)) : 0;
}

// A whole picture is drawn where its size is left out.
void draw_part(REALobject graphics, REALobject image, int32_t x, int32_t y, int32_t w, int32_t h,
               int32_t sx, int32_t sy, int32_t sw, int32_t sh) {
  PicturePixels* const onto = target(graphics);
  if (!onto) return;
  const PicturePixels* const from = picture_pixels(reinterpret_cast<REALpictureStruct*>(image));
  if (!from) {
    return raise_exception("NilObjectException", "there is no picture to draw; it is Nil");
  }
  if (sw == kWhole) sw = from->width();
  if (sh == kWhole) sh = from->height();
  if (sw <= 0 || sh <= 0 || w <= 0 || h <= 0) return;
  // What lies outside of the picture is nothing to draw: the part and its place shrink alike.
  const int64_t left = std::max(sx, 0), top = std::max(sy, 0);
  const int64_t right = std::min<int64_t>(int64_t{sx} + sw, from->width());
  const int64_t bottom = std::min<int64_t>(int64_t{sy} + sh, from->height());
  if (left >= right || top >= bottom) return;
  const double scale_x = double(w) / sw, scale_y = double(h) / sh;
  const CGRect place = {x + double(left - sx) * scale_x,
                        onto->height() - (y + double(bottom - sy) * scale_y),
                        double(right - left) * scale_x, double(bottom - top) * scale_y};
  const CGContextRef source =
      from->context_over(static_cast<int32_t>(left), static_cast<int32_t>(top),
                         static_cast<int32_t>(right - left), static_cast<int32_t>(bottom - top));
  const CGContextRef context = onto->context_over(0, 0, onto->width(), onto->height());
  const CGImageRef drawn = CGBitmapContextCreateImage(source);
  if (!drawn || !context)
    raise_exception("OutOfMemoryException", "there is no memory to draw the picture");
  CGContextDrawImage(context, place, drawn);
  CGImageRelease(drawn);
  CGContextRelease(context);
  CGContextRelease(source);
}

void draw_at(REALobject graphics, REALobject image, int32_t x, int32_t y) {
  const PicturePixels* const from = picture_pixels(reinterpret_cast<REALpictureStruct*>(image));
  draw_part(graphics, image, x, y, from ? from->width() : 0, from ? from->height() : 0, 0, 0,
            kWhole, kWhole);
}

PropertyEntry g_properties[] = {
    KRZ_READ_ONLY(width, "Width", "Integer"),
    KRZ_READ_ONLY(height, "Height", "Integer"),
    KRZ_PROPERTY(ForeColor::get, ForeColor::set, "ForeColor", "Color"),
    KRZ_PROPERTY(PenWidth::get, PenWidth::set, "PenWidth", "Integer"),
    KRZ_PROPERTY(TextSize::get, TextSize::set, "TextSize", "Integer"),
    KRZ_PROPERTY(text_font, set_text_font, "TextFont", "String"),
    KRZ_PROPERTY(Bold::get, Bold::set, "Bold", "Boolean"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(fill_rect,
               "FillRect(x as integer, y as integer, width as integer, height as integer)"),
    KRZ_METHOD(fill_oval,
               "FillOval(x as integer, y as integer, width as integer, height as integer)"),
    KRZ_METHOD(draw_line, "DrawLine(x1 as integer, y1 as integer, x2 as integer, y2 as integer)"),
    KRZ_METHOD(draw_string, "DrawString(text as string, x as integer, y as integer)"),
    KRZ_METHOD(string_width, "StringWidth(text as string) as double"),
    KRZ_METHOD(draw_at, "DrawPicture(Image as Picture, x as Integer, y as Integer)"),
    KRZ_METHOD(draw_part,
               "DrawPicture(Image as Picture, x as Integer, y as Integer, w as Integer, "
               "h as Integer, sx as Integer = 0, sy as Integer = 0, sw as Integer = -10000, "
               "sh as Integer = -10000)"),
};

}  // namespace

REALgraphicsStruct* new_graphics(REALpictureStruct* picture) {
  const REALobject graphics = new_instance(Runtime::current().registry().class_named(g_class.name));
  if (!graphics) return nullptr;
  const auto object = reinterpret_cast<REALobject>(picture);
  data_in<GraphicsData>(graphics, g_class).picture = object;
  lock_object(object);
  return reinterpret_cast<REALgraphicsStruct*>(graphics);
}

void register_graphics(Registry& registry) {
  g_class = class_of<GraphicsData>("Graphics");
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_properties(g_class, g_properties);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
