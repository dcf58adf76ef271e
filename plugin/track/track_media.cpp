// What a track's media is: its type, handler, samples, sample descriptions and files.
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "host/strings.h"
#include "track/track.h"

namespace krz {

namespace {

constexpr OSType kAliasType = 0x616C6973;  // 'alis'

}  // namespace

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

REALfolderItemStruct* rbFile(REALobject object, int32_t index) {
  const Media media = RBGetTrackMedia(object);
  if (!media) return nullptr;
  Handle reference = nullptr;
  OSType type = 0;
  SInt32 attributes = 0;
  if (GetMediaDataRef(media, static_cast<SInt16>(index), &reference, &type, &attributes) != noErr) {
    return nullptr;
  }
  const OwnedHandle owned(reference);
  if (!owned) return nullptr;
  FSSpec spec{};
  Boolean was_changed = 0;
  const bool is_found =
      type == kAliasType && ResolveAlias(nullptr, owned.get(), &spec, &was_changed) == noErr;
  return is_found ? REALFolderItemFromFSSpec(&spec) : nullptr;
}

// The media keeps a copy of the reference; the handle made for it stays with the toolbox.
int32_t rbSetFile(REALobject object, int32_t index, REALfolderItemStruct* file) {
  const Media media = RBGetTrackMedia(object);
  FSRef ref{};
  if (!media || !REALFSRefFromFolderItem(file, &ref, nullptr)) return -1;
  Handle reference = nullptr;
  OSType type = 0;
  const OSErr error = QTNewDataReferenceFromFSRef(&ref, 0, &reference, &type);
  if (error != noErr) return error;
  return SetMediaDataRef(media, static_cast<SInt16>(index), reference, type);
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

// The error stays as it was set first, also when the media is gone.
void rbDisposeTrackMedia(REALobject object) {
  track_data(object).lasterror = -1;
  if (const Media media = RBGetTrackMedia(object)) DisposeTrackMedia(media);
}

}  // namespace krz
