// The class "QTTrackKRZ": one track of a movie that the host holds open.
#include "track/track.h"

#include "host/class_table.h"
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/registration.h"

namespace krz {
namespace {

REALobject as_object(REALmovieStruct* movie) { return reinterpret_cast<REALobject>(movie); }

void TrackConstructor(REALobject) {}

/// Lets go of the movie. The track itself belongs to the movie and stays.
void TrackDestructor(REALobject object) {
  QTTrackClassData& data = track_data(object);
  if (data.movie) {
    REALUnlockObject(as_object(data.movie));
    data.movie = nullptr;
  }
  data.track = 0;
}

int32_t rbTrackID(REALobject object) {
  // A nil track reaches the toolbox, which answers for it.
  return GetTrackID(to_reference<Track>(track_data(object).track));
}

PropertyEntry track_properties[] = {
    DIRECT_FIELD(QTTrackClassData, movie, "Movie", "Movie"),
    DIRECT_FIELD(QTTrackClassData, track, "TrackHandle", "Integer"),
    DIRECT_FIELD(QTTrackClassData, lasterror, "Lasterror", "Integer"),
};

// clang-format off
MethodEntry track_methods[] = {
    METHOD(rbMediaSampleCount, "MediaSampleCount as integer"),
    METHOD(rbNextInterestingTime, "NextInterestingTimeKRZ(byref time as integer, byref duration as integer) as boolean"),
    METHOD(rbNextInterestingTimeWithRate, "NextInterestingTimeKRZ(byref time as integer, byref duration as integer, rate as double) as boolean"),
    METHOD(rbTrackDuration, "Duration as integer"),
    METHOD(rbTrackOffset, "TimeOffset as integer"),
    METHOD(rbTrackLayer, "Layer as integer"),
    METHOD(rbTrackCreationTime, "TrackCreationTime as integer"),
    METHOD(rbTrackModificationTime, "TrackModificationTime as integer"),
    METHOD(rbTrackEnabled, "TrackEnabled as boolean"),
    METHOD(rbTrackID, "TrackID as integer"),
    METHOD(rbTrackVolume, "TrackVolume as integer"),
    METHOD(rbTrackWidth, "Width as integer"),
    METHOD(rbTrackHeight, "Height as integer"),
    METHOD(rbMediaType, "MediaType as string"),
    METHOD(rbMediaHandlerHandle, "MediaHandlerHandle as integer"),
    METHOD(rbMediaHandle, "MediaHandle as integer"),
    METHOD(rbFileCount, "FileCount as integer"),
    METHOD(rbMediaSampleDescriptionCount, "MediaSampleDescriptionCount as integer"),
    METHOD(rbMediaSampleDescriptionRaw, "MediaSampleDescriptionRaw(index as integer) as memoryblock"),
    METHOD(rbGetTrackRawMatrix, "GetTrackRawMatrix(byref matrix00 as integer, byref matrix01 as integer, byref matrix02 as integer, byref matrix10 as integer, byref matrix11 as integer, byref matrix12 as integer, byref matrix20 as integer, byref matrix21 as integer, byref matrix22 as integer)"),
};
// clang-format on

}  // namespace

REALclassDefinition QTTrackClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTTrackKRZ",
    .data_size = sizeof(QTTrackClassData),
    .constructor = HOST_FUNCTION(TrackConstructor),
    .destructor = HOST_FUNCTION(TrackDestructor),
    .properties = track_properties,
    .property_count = std::size(track_properties),
    .methods = track_methods,
    .method_count = std::size(track_methods),
};

QTTrackClassData& track_data(REALobject object) {
  return instance_data<QTTrackClassData>(object, QTTrackClass);
}

REALobject MakeTrackObject(Track track, REALmovieStruct* movie) {
  if (!track) return nullptr;
  const REALobject object = REALnewInstance("QTTrackKRZ");
  if (!object) return nullptr;
  QTTrackClassData& data = track_data(object);
  data.movie = movie;
  data.track = to_token(track);
  REALLockObject(as_object(movie));
  return object;
}

Media getTrackMedia(const QTTrackClassData& data) {
  return data.track ? GetTrackMedia(to_reference<Track>(data.track)) : nullptr;
}

Media RBGetTrackMedia(REALobject object) { return getTrackMedia(track_data(object)); }

MediaHandler getMediaHandler(const QTTrackClassData& data) {
  if (!data.track) return nullptr;
  // A track without media asks for the handler of a nil media; the toolbox answers nil.
  return GetMediaHandler(GetTrackMedia(to_reference<Track>(data.track)));
}

MediaHandler RBGetMediaHandler(REALobject object) { return getMediaHandler(track_data(object)); }

}  // namespace krz
