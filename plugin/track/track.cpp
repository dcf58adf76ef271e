// The class "QTTrackKRZ": one track of a movie that the host holds open.
#include "track/track.h"

#include "host/class_table.h"
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/registration.h"
#include "metadata/metadata.h"
#include "metadata/user_data.h"
#include "picture/clip_mask.h"
#include "text/text_track.h"
#include "timecode/timecode.h"

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
    METHOD(rbGetMediaSample, "GetMediaSample(byref data as Memoryblock, byref time as integer, byref durationPerSample as integer, byref description as memoryblock, byref sampleDescriptionIndex as integer, maxNumberOfSample as integer, byref numberOfSamples as integer, byref flags as integer) as boolean"),
    METHOD(rbMediaSampleCount, "MediaSampleCount as integer"),
    METHOD(rbTrackUserData, "UserData as QTUserDataKRZ"),
    METHOD(rbScaleTrackSegment, "ScaleTrackSegment(startTime as integer, oldDuration as integer, newDuration as integer)"),
    METHOD(rbInsertTrackSegment, "InsertTrackSegment(dest as QTTrackKRZ, srcIn as integer, srcDuration as integer, dstIn as integer)"),
    METHOD(rbInsertEmptyTrackSegment, "InsertEmptyTrackSegment(time as integer, Duration as integer)"),
    METHOD(rbDeleteTrackSegment, "DeleteTrackSegment(time as integer, Duration as integer)"),
    METHOD(rbSetTextTrackAsChapterTrack, "SetTextTrackAsChapterTrack(type as string, isChapterTrack as boolean)"),
    METHOD(rbTrackHasAChapterTrack, "HasChapterTrack as boolean"),
    METHOD(rbIsChapterTrack, "IsChapterTrack as boolean"),
    METHOD(rbChapterTrackForTrack, "ChapterTrack as QTChapterTrackKRZ"),
    METHOD(rbNextInterestingTime, "NextInterestingTimeKRZ(byref time as integer, byref duration as integer) as boolean"),
    METHOD(rbNextInterestingTimeWithRate, "NextInterestingTimeKRZ(byref time as integer, byref duration as integer, rate as double) as boolean"),
    METHOD(rbTrackDuration, "Duration as integer"),
    ASSIGNABLE(rbTrackOffset, rbSetTrackOffset, "TimeOffset as integer"),
    ASSIGNABLE(rbTrackLayer, rbSetTrackLayer, "Layer as integer"),
    METHOD(rbAddClonedTrackToMovie, "AddClonedTrackToMovie(dest as movie, flags as integer) as QTTrackKRZ"),
    METHOD(rbTrackCreationTime, "TrackCreationTime as integer"),
    METHOD(rbTrackModificationTime, "TrackModificationTime as integer"),
    ASSIGNABLE(rbTrackEnabled, rbSetTrackEnabled, "TrackEnabled as boolean"),
    METHOD(rbSetTrackDimensions, "SetTrackDimensions(width as double, height as double)"),
    METHOD(rbTrackID, "TrackID as integer"),
    ASSIGNABLE(rbTrackVolume, rbSetTrackVolume, "TrackVolume as integer"),
    ASSIGNABLE(rbTrackWidth, rbSetTrackVolume, "Width as integer"),
    ASSIGNABLE(rbTrackHeight, rbSetTrackVolume, "Height as integer"),
    METHOD(rbMediaType, "MediaType as string"),
    METHOD(rbMediaHandlerHandle, "MediaHandlerHandle as integer"),
    METHOD(rbMediaHandle, "MediaHandle as integer"),
    METHOD(rbSoundSetEqualizerBands, "SoundSetEqualizerBands(count as integer, values as memoryblock) as integer"),
    METHOD(rbSoundSetDefaultEqualizerBands, "SoundSetDefaultEqualizerBands as integer"),
    METHOD(rbSoundGetEqualizerBandLevels, "SoundGetEqualizerBandLevels(count as integer) as memoryblock"),
    ASSIGNABLE(rbSoundBalance, rbSetSoundBalance, "SoundBalance as integer"),
    ASSIGNABLE(rbSoundOutputComponent, rbSetSoundOutputComponent, "SoundOutputComponentHandle as integer"),
    METHOD(rbSoundEffectiveBalance, "SoundGetEffectiveBalance as integer"),
    METHOD(rbSoundLevelMeterInfo, "SoundLevelMeterInfo(byref numChannels as integer, byref leftMeter as integer, byref rightMeter as integer)"),
    ASSIGNABLE(rbSoundLevelMeteringEnabled, rbSetSoundLevelMeteringEnabled, "SoundLevelMeteringEnabled as boolean"),
    METHOD(rbSoundEffectiveVolume, "SoundGetEffectiveVolume as integer"),
    METHOD(rbFileCount, "FileCount as integer"),
    METHOD(rbFile, "File(index as integer) as folderitem"),
    METHOD(rbSetFile, "SetFile(index as integer, file as folderitem) as integer"),
    METHOD(rbMediaSampleDescriptionCount, "MediaSampleDescriptionCount as integer"),
    METHOD(rbMediaVideoSampleDescription, "MediaVideoSampleDescription(index as integer) as QTVideoSampleDescriptionKRZ"),
    METHOD(rbMediaSoundSampleDescription, "MediaSoundSampleDescription(index as integer) as QTSoundSampleDescriptionKRZ"),
    METHOD(rbMediaSpriteSampleDescription, "MediaSpriteSampleDescription(index as integer) as QTSpriteSampleDescriptionKRZ"),
    METHOD(rbMediaTextSampleDescription, "MediaTextSampleDescription(index as integer) as QTTextSampleDescriptionKRZ"),
    METHOD(rbMediaMusicSampleDescription, "MediaMusicSampleDescription(index as integer) as QTMusicSampleDescriptionKRZ"),
    METHOD(rbMediaThreeDeeSampleDescription, "MediaThreeDeeSampleDescription(index as integer) as QTThreeDeeSampleDescriptionKRZ"),
    METHOD(rbMediaFlashSampleDescription, "MediaFlashSampleDescription(index as integer) as QTFlashSampleDescriptionKRZ"),
    METHOD(rbMediaSampleDescription, "MediaSampleDescription(index as integer) as QTSampleDescriptionKRZ"),
    METHOD(rbMediaSampleDescriptionRaw, "MediaSampleDescriptionRaw(index as integer) as memoryblock"),
    METHOD(rbSetTrackMatrix, "SetTrackMatrix(x as integer, y as integer, w as integer, h as integer)"),
    METHOD(rbSetTrackRawMatrix, "SetTrackRawMatrix(matrix00 as integer, matrix01 as integer, matrix02 as integer, matrix10 as integer, matrix11 as integer, matrix12 as integer, matrix20 as integer, matrix21 as integer, matrix22 as integer)"),
    METHOD(rbGetTrackRawMatrix, "GetTrackRawMatrix(byref matrix00 as integer, byref matrix01 as integer, byref matrix02 as integer, byref matrix10 as integer, byref matrix11 as integer, byref matrix12 as integer, byref matrix20 as integer, byref matrix21 as integer, byref matrix22 as integer)"),
    ASSIGNABLE(rbGetTrackClipRgn, rbSetTrackClipRgn, "TrackClipMask as picture"),
    METHOD(rbTCGetTimeCodeAtTime, "TimeCodeAtTime(MediaTime as integer) as QTTimeCodeKRZ"),
    METHOD(rbTCGetCurrentTimeCode, "CurrentTimeCode as QTTimeCodeKRZ"),
    METHOD(rbTCFrameNumberToTimeCode, "FrameNumberToTimeCode(timecode as QTTimeCodeKRZ)"),
    METHOD(rbTCTimeCodeToFrameNumber, "TimeCodeToFrameNumber(timecode as QTTimeCodeKRZ)"),
    METHOD(rbTCTimeCodeToString, "TimeCodeToString(timecode as QTTimeCodeKRZ) as string"),
    ASSIGNABLE(rbSoundTreble, rbSetSoundTreble, "SoundTreble as integer"),
    ASSIGNABLE(rbSoundBass, rbSetSoundBass, "SoundBass as integer"),
    METHOD(rbMediaSetGraphicsMode, "MediaSetGraphicsMode(Mode as integer, TheColor as color)"),
    METHOD(rbMediaGetGraphicsMode, "MediaGetGraphicsMode(byref Mode as integer, byref TheColor as color)"),
    METHOD(rbQTCopyTrackMetaData, "MetaData as QTMetaDataKRZ"),
    METHOD(rbGenerateTrackApertureModeDimensions, "GenerateTrackApertureModeDimensions as integer"),
    METHOD(rbRemoveTrackApertureModeDimensions, "RemoveTrackApertureModeDimensions as integer"),
    METHOD(rbSetTrackApertureModeDimensionsUsingSampleDescription, "SetTrackApertureModeDimensionsUsingSampleDescription as integer"),
    ASSIGNABLE(rbAudioChannelLayout, rbSetAudioChannelLayout, "AudioChannelLayout as QTAudioChannelLayoutKRZ"),
    METHOD(rbDisposeTrackMedia, "DisposeTrackMedia"),
    METHOD(rbDeleteTrackReference, "DeleteTrackReference(type as string, index as integer)"),
    METHOD(rbBeginMediaEdits, "BeginMediaEdits"),
    METHOD(rbEndMediaEdits, "EndMediaEdits"),
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
