// The calls of QuickTime/Movies.h that make tracks and media and put media into tracks.
#include "calls/guard.h"
#include "calls/references.h"
#include "memory/handles.h"
#include "movie/insert_media.h"
#include "movie/new_media.h"

using namespace toolbox::calls;
using toolbox::Result;
using toolbox::Status;

TOOLBOX_CALL Track NewMovieTrack(Movie movie, Fixed width, Fixed height, SInt16 trackVolume) {
  return guarded_value<Track>(nullptr, [&]() -> Result<Track> {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    std::unique_ptr<toolbox::Track> track = toolbox::Track::create(*found);
    toolbox::TrackHeaderAtom& header = track->change_header();
    header.width = width;
    header.height = height;
    header.volume = trackVolume;
    TRY_ASSIGN(const Track reference, reference_to(*track));
    found->add_track(std::move(track));
    return reference;
  });
}

TOOLBOX_CALL Media NewTrackMedia(Track track, OSType mediaType, TimeScale timeScale, Handle dataRef,
                                 OSType dataRefType) {
  return guarded_value<Media>(nullptr, [&]() -> Result<Media> {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    if (timeScale <= 0) return Status(paramErr, "the time scale of a media must be above 0");
    std::optional<toolbox::GivenDataReference> reference;
    if (dataRef != nullptr) {
      const auto size = static_cast<size_t>(toolbox::handles::size(dataRef));
      reference = {dataRefType,
                   {reinterpret_cast<const uint8_t*>(size > 0 ? *dataRef : nullptr), size}};
    }
    TRY_ASSIGN(toolbox::Media * media,
               add_media(*found, mediaType, static_cast<uint32_t>(timeScale), reference));
    return reference_to(*media);
  });
}

TOOLBOX_CALL OSErr InsertMediaIntoTrack(Track track, TimeValue trackStart, TimeValue mediaTime,
                                        TimeValue mediaDuration, Fixed mediaRate) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Track * found, find_track(track));
    return insert_media(*found, trackStart, {mediaTime, mediaDuration, mediaRate});
  });
}

TOOLBOX_CALL SInt16 GetMediaLanguage(Media media) {
  return ask(SInt16{0}, find_media, media,
             [](auto& found) { return static_cast<SInt16>(found.header().language); });
}

TOOLBOX_CALL void SetMediaLanguage(Media media, SInt16 language) {
  guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Media * found, find_media(media));
    found->change_header().language = static_cast<uint16_t>(language);
    return {};
  });
}
