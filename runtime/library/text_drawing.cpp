#include "library/text_drawing.h"

#include <ApplicationServices/TextDrawing.h>
#include <CoreFoundation/CoreFoundation.h>
#include <Toolbox/Toolbox.h>

#include "object/exceptions.h"

namespace krz {

namespace {

using DrawText = decltype(ToolboxDrawText);

CFStringRef string(const char* text) {
  return CFStringCreateWithCString(nullptr, text, kCFStringEncodingASCII);
}

DrawText* load() {
  FSRef folder = {};
  if (FSFindFolder(kSystemDiskDomain, kFrameworksFolderType, true, &folder) != noErr)
    return nullptr;
  const CFURLRef folder_url = CFURLCreateFromFSRef(nullptr, &folder);
  const CFStringRef name = string("ApplicationServices.framework");
  const CFURLRef url =
      CFURLCreateCopyAppendingPathComponent(nullptr, folder_url, name, /*isDirectory=*/true);
  const CFBundleRef bundle = CFBundleCreate(nullptr, url);  // stays loaded
  const CFStringRef routine = string("ToolboxDrawText");
  DrawText* const found =
      CFBundleLoadExecutable(bundle)
          ? reinterpret_cast<DrawText*>(CFBundleGetFunctionPointerForName(bundle, routine))
          : nullptr;
  for (const CFTypeRef object :
       {CFTypeRef(routine), CFTypeRef(url), CFTypeRef(name), CFTypeRef(folder_url)})
    CFRelease(object);
  return found;
}

double run(const DrawingState& state, std::string_view text, ToolboxGlyphProc proc, void* context) {
  static DrawText* const kDrawText = load();
  if (!kDrawText) {
    ToolboxCheckFrameworks();
    raise_exception("UnsupportedFormatException",
                    std::string("text cannot be drawn: ") + ToolboxErrorDetail());
    return 0;
  }
  const ToolboxTextStyle style{state.text_font.c_str(), state.text_size, state.bold};
  return kDrawText(text.data(), text.size(), &style, proc, context);
}

struct Place {
  Raster& raster;
  int32_t x;
  int32_t y;
};

void draw_glyph(const ToolboxGlyph* glyph, void* context) {
  const auto& place = *static_cast<const Place*>(context);
  place.raster.cover(int64_t{place.x} + glyph->left, int64_t{place.y} + glyph->top, glyph->width,
                     glyph->height, glyph->coverage, glyph->bytesPerRow);
}

}  // namespace

void draw_text(Raster& raster, const DrawingState& state, std::string_view text, int32_t x,
               int32_t y) {
  Place place{raster, x, y};
  run(state, text, &draw_glyph, &place);
}

double text_width(const DrawingState& state, std::string_view text) {
  return run(state, text, nullptr, nullptr);
}

}  // namespace krz
