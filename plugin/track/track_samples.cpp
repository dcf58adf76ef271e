// The samples of a track's media: reading them, and the edits that add new ones.
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "track/track.h"

namespace krz {
namespace {

void give_back(REALmemoryBlockStruct** block) {
  if (*block) REALUnlockObject(reinterpret_cast<REALobject>(*block));
  *block = nullptr;
}

}  // namespace

bool rbGetMediaSample(REALobject object, REALmemoryBlockStruct** data, int32_t* time,
                      int32_t* durationPerSample, REALmemoryBlockStruct** description,
                      int32_t* sampleDescriptionIndex, int32_t maxNumberOfSample,
                      int32_t* numberOfSamples, int32_t* flags) {
  *flags = 0;
  *durationPerSample = 0;
  give_back(data);
  give_back(description);

  QTTrackClassData& track = track_data(object);
  track.lasterror = -1;
  const Media media = getTrackMedia(track);
  if (!media) return false;
  const OwnedHandle sample(NewHandle(0));
  if (!sample) return false;
  const OwnedHandle sample_description(NewHandle(0));
  if (!sample_description) return false;

  TimeValue sample_time = *time;
  TimeValue duration = *durationPerSample;
  SInt32 description_index = *sampleDescriptionIndex;
  SInt32 count = *numberOfSamples;
  SInt16 sample_flags = 0;
  GetMediaSample(media, sample.get(), 0, nullptr, *time, &sample_time, &duration,
                 sample_description.get(), &description_index, maxNumberOfSample, &count,
                 &sample_flags);
  *durationPerSample = duration;
  *time = sample_time;
  *sampleDescriptionIndex = description_index;
  *numberOfSamples = count;
  track.lasterror = GetMoviesError();
  *flags = sample_flags;

  const bool has_data = GetHandleSize(sample.get()) > 0;
  *data = HandleToMemory(sample.get());
  *description = HandleToMemory(sample_description.get());
  return has_data;
}

void rbBeginMediaEdits(REALobject object) {
  QTTrackClassData& track = track_data(object);
  track.lasterror = -1;
  if (const Media media = getTrackMedia(track)) track.lasterror = BeginMediaEdits(media);
}

void rbEndMediaEdits(REALobject object) {
  QTTrackClassData& track = track_data(object);
  track.lasterror = -1;
  if (const Media media = getTrackMedia(track)) track.lasterror = EndMediaEdits(media);
}

}  // namespace krz
