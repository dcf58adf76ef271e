// The calls of QuickTime/Movies.h that read the properties of a track.
#include <algorithm>

#include "calls/guard.h"
#include "calls/references.h"
#include "movie/apertures.h"

using namespace toolbox::calls;
using toolbox::Result;
using toolbox::Status;

TOOLBOX_CALL Movie GetTrackMovie(Track track) {
  return guarded_value<Movie>(nullptr, [&]() -> Result<Movie> {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    return reference_to(found->movie());
  });
}

TOOLBOX_CALL Media GetTrackMedia(Track track) {
  return guarded_value<Media>(nullptr, [&]() -> Result<Media> {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    if (found->media() == nullptr) return Media{nullptr};
    return reference_to(*found->media());
  });
}

TOOLBOX_CALL SInt32 GetTrackID(Track track) {
  return ask(SInt32{0}, find_track, track,
             [](auto& found) { return static_cast<SInt32>(found.id()); });
}

TOOLBOX_CALL SInt16 GetTrackVolume(Track track) {
  return ask(SInt16{0}, find_track, track, [](auto& found) { return found.header().volume; });
}

TOOLBOX_CALL Boolean GetTrackEnabled(Track track) {
  return ask(Boolean{0}, find_track, track, [](auto& found) { return Boolean{found.enabled()}; });
}

TOOLBOX_CALL void GetTrackDimensions(Track track, Fixed* width, Fixed* height) {
  guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    const toolbox::ApertureSize size = shown_size(*found);
    if (width != nullptr) *width = size.width;
    if (height != nullptr) *height = size.height;
    return {};
  });
}

TOOLBOX_CALL TimeValue GetTrackDuration(Track track) {
  return ask(TimeValue{0}, find_track, track,
             [](auto& found) { return to_time_value(found.duration()); });
}

TOOLBOX_CALL TimeValue GetTrackOffset(Track track) {
  return ask(TimeValue{0}, find_track, track,
             [](auto& found) { return to_time_value(found.timeline().leading_empty()); });
}

TOOLBOX_CALL SInt16 GetTrackLayer(Track track) {
  return ask(SInt16{0}, find_track, track, [](auto& found) { return found.header().layer; });
}

TOOLBOX_CALL UInt32 GetTrackCreationTime(Track track) {
  return ask(UInt32{0}, find_track, track,
             [](auto& found) { return static_cast<UInt32>(found.header().creation_time); });
}

TOOLBOX_CALL UInt32 GetTrackModificationTime(Track track) {
  return ask(UInt32{0}, find_track, track,
             [](auto& found) { return static_cast<UInt32>(found.header().modification_time); });
}

TOOLBOX_CALL void GetTrackMatrix(Track track, MatrixRecord* matrix) {
  guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    if (matrix == nullptr) return {};
    const toolbox::AtomMatrix& stored = found->header().matrix;
    std::copy(stored.begin(), stored.end(), &matrix->matrix[0][0]);
    return {};
  });
}

TOOLBOX_CALL TimeValue TrackTimeToMediaTime(TimeValue value, Track track) {
  return ask(TimeValue{-1}, find_track, track,
             [&](auto& found) { return to_time_value(found.timeline().media_time(value)); });
}
