// What a track's media is: its type, handler, samples, sample descriptions and files.
#include "host/instance_data.h"
#include "host/memory.h"
#include "host/strings.h"
#include "track/track.h"

namespace krz {

REALstring rbMediaType(REALobject object) {
  const Media media = RBGetTrackMedia(object);
  if (!media) return nullptr;
  OSType type = 0;
  GetMediaHandlerDescription(media, &type, nullptr, nullptr);
  return REALBuildOSTypeString(type);
}

int32_t rbMediaHandle(REALobject object) { return to_token(RBGetTrackMedia(object)); }

int32_t rbMediaHandlerHandle(REALobject object) { return to_token(RBGetMediaHandler(object)); }

int32_t rbMediaSampleCount(REALobject object) {
  const Media media = RBGetTrackMedia(object);
  return media ? GetMediaSampleCount(media) : 0;
}

int32_t rbMediaSampleDescriptionCount(REALobject object) {
  const Media media = RBGetTrackMedia(object);
  return media ? GetMediaSampleDescriptionCount(media) : 0;
}

int32_t rbFileCount(REALobject object) {
  const Media media = RBGetTrackMedia(object);
  SInt16 count = 0;
  if (!media || GetMediaDataRefCount(media, &count) != noErr) return 0;
  return count;
}

REALmemoryBlockStruct* rbMediaSampleDescriptionRaw(REALobject object, int32_t index) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  const Media media = getTrackMedia(data);
  if (!media) return nullptr;
  const OwnedHandle description(NewHandle(0));
  if (!description) return nullptr;
  GetMediaSampleDescription(media, index, description.get());
  data.lasterror = GetMoviesError();
  return HandleToMemory(description.get());
}

}  // namespace krz
