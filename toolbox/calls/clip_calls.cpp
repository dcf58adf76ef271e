// The calls of QuickTime/Movies.h about the region that a track is cut to.
#include <algorithm>

#include "calls/guard.h"
#include "calls/references.h"
#include "memory/handles.h"
#include "movie/clip_region.h"

using namespace toolbox::calls;
using toolbox::Region;
using toolbox::Result;
using toolbox::Status;
namespace handles = toolbox::handles;

namespace {

toolbox::ClipOwner clip_owner(const toolbox::Track& track) {
  return {track.movie().opened().tree, track.atom(), track.atom_changes()};
}

}  // namespace

TOOLBOX_CALL RgnHandle GetTrackClipRgn(Track track) {
  return guarded_value<RgnHandle>(nullptr, [&]() -> Result<RgnHandle> {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    TRY_ASSIGN(const std::optional<Region> region, read_clip(clip_owner(*found)));
    if (!region) return RgnHandle{nullptr};
    const auto record = region->record();
    if (!record) return Status(rgnTooBigErr, "the clip region has no record");
    const Handle copy = handles::make(0);
    if (copy == nullptr || handles::assign(copy, *record) != noErr) {
      handles::dispose(copy);
      return Status(memFullErr, "no memory for the clip region");
    }
    return reinterpret_cast<RgnHandle>(copy);
  });
}

TOOLBOX_CALL void SetTrackClipRgn(Track track, RgnHandle clip) {
  guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    std::optional<Region> region;
    if (clip != nullptr) {
      const auto handle = reinterpret_cast<Handle>(clip);
      const auto size = static_cast<size_t>(handles::size(handle));
      if (size > 0) {
        region = Region::from_record({reinterpret_cast<const uint8_t*>(*handle), size});
      }
      if (!region) return Status(paramErr, "the handle holds no region");
    }
    toolbox::AtomChanges changes = found->atom_changes();
    TRY_ASSIGN(const bool changed, write_clip(clip_owner(*found), changes, region));
    if (changed) found->change_atoms() = std::move(changes);
    return {};
  });
}
