// The calls over the aperture dimensions of tracks.
#include <Toolbox/Toolbox.h>

#include "calls/guard.h"
#include "calls/references.h"
#include "memory/handles.h"
#include "movie/apertures.h"

using namespace toolbox::calls;
using toolbox::Apertures;
using toolbox::ApertureSize;
using toolbox::Result;
using toolbox::Status;

namespace {

Status no_such_mode(OSType mode) {
  return {paramErr,
          toolbox::four_cc_text(mode) + " has no size of its own: that have clea, prod and enco"};
}

}  // namespace

TOOLBOX_CALL OSErr GenerateMovieApertureModeDimensions(Movie movie) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    return generate_apertures(*found);
  });
}

TOOLBOX_CALL OSErr RemoveMovieApertureModeDimensions(Movie movie) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    remove_apertures(*found);
    return {};
  });
}

TOOLBOX_CALL OSErr GenerateTrackApertureModeDimensions(Track track) {
  return SetTrackApertureModeDimensionsUsingSampleDescription(track, nullptr);
}

TOOLBOX_CALL OSErr RemoveTrackApertureModeDimensions(Track track) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    remove_apertures(*found);
    return {};
  });
}

TOOLBOX_CALL OSErr SetTrackApertureModeDimensionsUsingSampleDescription(Track track,
                                                                        Handle imageDescription) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    if (imageDescription == nullptr) return generate_apertures(*found, {});
    if (!toolbox::handles::is_live(imageDescription)) {
      return {memWZErr, "the sample description is no live handle"};
    }
    const auto size = static_cast<size_t>(toolbox::handles::size(imageDescription));
    return generate_apertures(
        *found, toolbox::ByteView(reinterpret_cast<const uint8_t*>(*imageDescription), size));
  });
}

TOOLBOX_CALL OSErr ToolboxGetTrackAperture(Track track, OSType mode, Fixed* width, Fixed* height) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    if (Apertures().find(mode) == nullptr) return no_such_mode(mode);
    TRY_ASSIGN(std::optional<Apertures> apertures, apertures_of(*found));
    if (!apertures) return {kQTPropertyNotSupportedErr, "the track has no aperture dimensions"};
    const ApertureSize size = *apertures->find(mode);
    if (width != nullptr) *width = size.width;
    if (height != nullptr) *height = size.height;
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxSetTrackAperture(Track track, OSType mode, Fixed width, Fixed height) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    if (Apertures().find(mode) == nullptr) return no_such_mode(mode);
    if (width < 0 || height < 0) return {paramErr, "a size is 0 or more"};
    TRY_ASSIGN(std::optional<Apertures> apertures, apertures_of(*found));
    if (!apertures) {
      const ApertureSize own{found->header().width, found->header().height};
      apertures = Apertures{own, own, own};
    }
    *apertures->find(mode) = {width, height};
    set_apertures(*found, *apertures);
    return {};
  });
}
