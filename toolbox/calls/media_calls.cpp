// The calls of QuickTime/Movies.h that read the properties of a media.
#include <algorithm>
#include <cstring>

#include "calls/guard.h"
#include "calls/references.h"
#include "memory/handles.h"

using namespace toolbox::calls;
using toolbox::Result;
using toolbox::Status;

TOOLBOX_CALL MediaHandler GetMediaHandler(Media media) {
  return guarded_value<MediaHandler>(nullptr, [&]() -> Result<MediaHandler> {
    TRY_ASSIGN(toolbox::Media * found, find_media(media));
    return reference_to(found->handler());
  });
}

TOOLBOX_CALL void GetMediaHandlerDescription(Media media, OSType* mediaType, Str255 creatorName,
                                             OSType* creatorManufacturer) {
  guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Media* found, find_media(media));
    const toolbox::HandlerAtom& handler = found->handler_description();
    if (mediaType != nullptr) *mediaType = handler.subtype;
    if (creatorManufacturer != nullptr) *creatorManufacturer = handler.manufacturer;
    if (creatorName != nullptr) {
      const std::string_view name = handler.name().substr(0, 255);
      creatorName[0] = static_cast<UInt8>(name.size());
      std::memcpy(creatorName + 1, name.data(), name.size());
    }
    return {};
  });
}

TOOLBOX_CALL Track GetMediaTrack(Media media) {
  return guarded_value<Track>(nullptr, [&]() -> Result<Track> {
    TRY_ASSIGN(const toolbox::Media* found, find_media(media));
    return reference_to(found->track());
  });
}

TOOLBOX_CALL TimeScale GetMediaTimeScale(Media media) {
  return ask(TimeScale{0}, find_media, media,
             [](auto& found) { return to_count(found.time_scale()); });
}

TOOLBOX_CALL TimeValue GetMediaDuration(Media media) {
  return guarded_value<TimeValue>(0, [&]() -> Result<TimeValue> {
    TRY_ASSIGN(const toolbox::Media* found, find_media(media));
    TRY_ASSIGN(const int64_t duration, found->duration());
    return to_time_value(duration);
  });
}

TOOLBOX_CALL SInt32 GetMediaSampleCount(Media media) {
  return guarded_value<SInt32>(0, [&]() -> Result<SInt32> {
    TRY_ASSIGN(const toolbox::Media* found, find_media(media));
    TRY_ASSIGN(const toolbox::SampleTable* samples, found->samples());
    return to_count(samples->sample_count());
  });
}

TOOLBOX_CALL SInt32 GetMediaSampleDescriptionCount(Media media) {
  return guarded_value<SInt32>(0, [&]() -> Result<SInt32> {
    TRY_ASSIGN(const toolbox::Media* found, find_media(media));
    TRY_ASSIGN(const auto* descriptions, found->descriptions());
    return to_count(descriptions->size());
  });
}

TOOLBOX_CALL void GetMediaSampleDescription(Media media, SInt32 index, Handle descH) {
  guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Media* found, find_media(media));
    TRY_ASSIGN(const auto* descriptions, found->descriptions());
    if (index < 1 || static_cast<size_t>(index) > descriptions->size()) {
      return Status(badDataRefIndex,
                    "the media has no sample description number " + std::to_string(index));
    }
    const OSErr error =
        toolbox::handles::assign(descH, (*descriptions)[static_cast<size_t>(index) - 1]);
    return error == noErr ? Status()
                          : Status(error, "the sample description does not fit its handle");
  });
}

TOOLBOX_CALL OSErr GetMediaDataRefCount(Media media, SInt16* count) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Media* found, find_media(media));
    TRY_ASSIGN(const auto* references, found->data_references());
    if (count != nullptr)
      *count = static_cast<SInt16>(std::min<size_t>(references->size(), INT16_MAX));
    return {};
  });
}
