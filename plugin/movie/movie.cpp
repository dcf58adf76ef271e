// What the module adds to the host's own class "movie": finding the tracks of a movie.
#include "movie/movie.h"

#include "host/class_table.h"
#include "host/entries.h"
#include "host/registration.h"
#include "metadata/metadata.h"
#include "metadata/user_data.h"
#include "text/text_track.h"
#include "timecode/timecode.h"
#include "track/track.h"

namespace krz {
namespace {

int32_t rbTrackCount(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  return movie ? GetMovieTrackCount(movie) : -1;
}

REALobject rbGetTrackIndex(REALmovieStruct* host_movie, int32_t index) {
  const Movie movie = movie_of(host_movie);
  return movie ? MakeTrackObject(GetMovieIndTrack(movie, index), host_movie) : nullptr;
}

REALobject rbGetTrackID(REALmovieStruct* host_movie, int32_t id) {
  const Movie movie = movie_of(host_movie);
  return movie ? MakeTrackObject(GetMovieTrack(movie, id), host_movie) : nullptr;
}

/// The track at place `index` among those of a media type, disabled ones left out of the count when
/// asked.
Track track_of_type(REALmovieStruct* host_movie, int32_t index, OSType media_type,
                    bool enabled_only) {
  const Movie movie = movie_of(host_movie);
  if (!movie) return nullptr;
  const SInt32 flags = movieTrackMediaType | (enabled_only ? movieTrackEnabledOnly : 0);
  return GetMovieIndTrackType(movie, index, media_type, flags);
}

// Every text track is handed out as a chapter track, whether or not it is one.
REALobject rbGetTextTrack(REALmovieStruct* host_movie, int32_t index, bool enabled_only) {
  return MakeChapterTrackObject(track_of_type(host_movie, index, TextMediaType, enabled_only),
                                host_movie);
}

REALobject rbGetVideoTrack(REALmovieStruct* host_movie, int32_t index, bool enabled_only) {
  return MakeTrackObject(track_of_type(host_movie, index, VideoMediaType, enabled_only),
                         host_movie);
}

REALobject rbGetSoundTrack(REALmovieStruct* host_movie, int32_t index, bool enabled_only) {
  return MakeTrackObject(track_of_type(host_movie, index, SoundMediaType, enabled_only),
                         host_movie);
}

// clang-format off
MethodEntry movie_methods[] = {
    METHOD(rbAudioSummaryChannelLayout, "AudioSummaryChannelLayoutKRZ as QTAudioChannelLayoutKRZ"),
    METHOD(rbMovieUserData, "UserDataKRZ as QTUserDataKRZ"),
    METHOD(rbScaleMovieSegment, "ScaleMovieSegmentKRZ(startTime as integer, oldDuration as integer, newDuration as integer) as integer"),
    METHOD(rbInsertMovieSegment, "InsertMovieSegmentKRZ(dest as movie, srcIn as integer, srcDuration as integer, dstIn as integer) as integer"),
    METHOD(rbInsertEmptyMovieSegment, "InsertEmptyMovieSegmentKRZ(time as integer, Duration as integer) as integer"),
    METHOD(rbDeleteMovieSegment, "DeleteMovieSegmentKRZ(time as integer, Duration as integer) as integer"),
    METHOD(rbAddTextTrack, "AddTextTrackKRZ(chapters() as QTChapterDataKRZ, type as string, isChapterTrack as boolean) as QTChapterTrackKRZ"),
    METHOD(rbRemoveIndTextTrack, "RemoveTextTrackKRZ(index as integer) as integer"),
    METHOD(rbChapterTrackForMovie, "ChapterTrackKRZ as QTChapterTrackKRZ"),
    METHOD(rbMovieHasAChapterTrack, "HasQTChapterTrackKRZ as Boolean"),
    ASSIGNABLE(rbRateChangesPreservePitch, rbSetRateChangesPreservePitch, "RateChangesPreservePitchKRZ as Boolean"),
    ASSIGNABLE(rbPitch, rbSetPitch, "PitchKRZ as double"),
    METHOD(rbTrackCount, "TrackCountKRZ as integer"),
    METHOD(rbGetTrackIndex, "GetTrackIndexKRZ(index as integer) as QTTrackKRZ"),
    METHOD(rbGetTrackID, "GetTrackIDKRZ(id as integer) as QTTrackKRZ"),
    METHOD(rbGetTextTrack, "GetTextTrackKRZ(index as integer, EnabledTracksOnly as boolean = false) as QTChapterTrackKRZ"),
    METHOD(rbGetVideoTrack, "GetVideoTrackKRZ(index as integer, EnabledTracksOnly as boolean = false) as QTTrackKRZ"),
    METHOD(rbGetSoundTrack, "GetSoundTrackKRZ(index as integer, EnabledTracksOnly as boolean = false) as QTTrackKRZ"),
    METHOD(DeleteTimeCodeTracks, "DeleteTimeCodeTracksKRZ"),
    METHOD(MovieHasTimeCodeTrack, "HasTimeCodeTrackKRZ as boolean"),
    METHOD(GetCurrentTimeCodeString, "CurrentTimeCodeStringKRZ as string"),
    METHOD(AddTimeCodeToMovie, "AddTimeCodeToMovieKRZ(parameters as QTTimeCodeCreationParametersKRZ) as integer"),
    ASSIGNABLE(Movie_GetTimeCodeDisplay, Movie_SetTimeCodeDisplay, "TimeCodeDisplayedKRZ as boolean"),
    METHOD(rbQTCopyMovieMetaData, "MetaDataKRZ as QTMetaDataKRZ"),
    METHOD(rbGenerateMovieApertureModeDimensions, "GenerateMovieApertureModeDimensionsKRZ as integer"),
    METHOD(rbRemoveMovieApertureModeDimensions, "RemoveMovieApertureModeDimensionsKRZ as integer"),
    METHOD(rbSetMovieApertureMode, "SetMovieApertureModeKRZ(theApertureMode as string) as integer"),
    METHOD(rbGetMovieApertureMode, "GetMovieApertureModeKRZ as string"),
};
// clang-format on

}  // namespace

REALclassDefinition movieClass = {
    .version = kPluginInterfaceVersion,
    .name = "movie",
    .methods = movie_methods,
    .method_count = std::size(movie_methods),
};

}  // namespace krz
