// The calls of QuickTime/MediaHandlers.h for everything that is seen.
#include "calls/handler_guard.h"
#include "handlers/characteristics.h"

using namespace toolbox::calls;
using toolbox::FourCC;
using toolbox::GraphicsMode;
using toolbox::Status;

namespace {

bool is_seen(FourCC media_type) {
  return toolbox::has_characteristic(media_type, toolbox::four_cc("eyes"));
}

}  // namespace

TOOLBOX_CALL ComponentResult MediaSetGraphicsMode(MediaHandler mh, SInt32 mode,
                                                  const RGBColor* opColor) {
  return guarded_handler_that(mh, is_seen, [&](auto& handler) -> Status {
    TRY_ASSIGN(GraphicsMode changed, graphics_mode(handler.media()));
    changed.mode = static_cast<uint16_t>(mode);
    if (opColor != nullptr) changed.color = {opColor->red, opColor->green, opColor->blue};
    return set_graphics_mode(handler.media(), changed);
  });
}

TOOLBOX_CALL ComponentResult MediaGetGraphicsMode(MediaHandler mh, SInt32* mode,
                                                  RGBColor* opColor) {
  return guarded_handler_that(mh, is_seen, [&](auto& handler) -> Status {
    TRY_ASSIGN(const GraphicsMode found, graphics_mode(handler.media()));
    if (mode != nullptr) *mode = found.mode;
    if (opColor != nullptr) *opColor = {found.color[0], found.color[1], found.color[2]};
    return {};
  });
}
