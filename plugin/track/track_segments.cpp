// Edits of a track's segments, its clones, and its references to other tracks.
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/strings.h"
#include "track/track.h"

namespace krz {

// A nil track reaches the toolbox, which answers for it.

void rbScaleTrackSegment(REALobject object, int32_t startTime, int32_t oldDuration,
                         int32_t newDuration) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  data.lasterror =
      ScaleTrackSegment(to_reference<Track>(data.track), startTime, oldDuration, newDuration);
}

void rbInsertTrackSegment(REALobject object, REALobject dest, int32_t srcIn, int32_t srcDuration,
                          int32_t dstIn) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!dest) return;
  data.lasterror =
      InsertTrackSegment(to_reference<Track>(data.track),
                         to_reference<Track>(track_data(dest).track), srcIn, srcDuration, dstIn);
}

void rbInsertEmptyTrackSegment(REALobject object, int32_t time, int32_t duration) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  data.lasterror = InsertEmptyTrackSegment(to_reference<Track>(data.track), time, duration);
}

void rbDeleteTrackSegment(REALobject object, int32_t time, int32_t duration) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  data.lasterror = DeleteTrackSegment(to_reference<Track>(data.track), time, duration);
}

REALobject rbAddClonedTrackToMovie(REALobject object, REALmovieStruct* dest, int32_t flags) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track || !dest) return nullptr;
  Track clone = nullptr;
  const OSErr status = AddClonedTrackToMovie(to_reference<Track>(data.track),
                                             REALgetMovieMovie(dest), flags, &clone);
  data.lasterror = status;
  return status == noErr ? MakeTrackObject(clone, dest) : nullptr;
}

void rbDeleteTrackReference(REALobject object, REALstring type, int32_t index) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  data.lasterror =
      DeleteTrackReference(to_reference<Track>(data.track), REALstringToOSType(type), index);
}

}  // namespace krz
