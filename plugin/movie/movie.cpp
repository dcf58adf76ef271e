// What the module adds to the host's own class "movie": finding the tracks of a movie.
#include "host/class_table.h"
#include "host/entries.h"
#include "host/registration.h"
#include "track/track.h"

namespace krz {
namespace {

/// The toolbox's movie behind the host's; nil when there is none.
Movie movie_of(REALmovieStruct* movie) { return movie ? REALgetMovieMovie(movie) : nullptr; }

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
REALobject track_of_type(REALmovieStruct* host_movie, int32_t index, OSType media_type,
                         bool enabled_only) {
  const Movie movie = movie_of(host_movie);
  if (!movie) return nullptr;
  const SInt32 flags = movieTrackMediaType | (enabled_only ? movieTrackEnabledOnly : 0);
  return MakeTrackObject(GetMovieIndTrackType(movie, index, media_type, flags), host_movie);
}

REALobject rbGetVideoTrack(REALmovieStruct* host_movie, int32_t index, bool enabled_only) {
  return track_of_type(host_movie, index, VideoMediaType, enabled_only);
}

REALobject rbGetSoundTrack(REALmovieStruct* host_movie, int32_t index, bool enabled_only) {
  return track_of_type(host_movie, index, SoundMediaType, enabled_only);
}

// clang-format off
MethodEntry movie_methods[] = {
    METHOD(rbTrackCount, "TrackCountKRZ as integer"),
    METHOD(rbGetTrackIndex, "GetTrackIndexKRZ(index as integer) as QTTrackKRZ"),
    METHOD(rbGetTrackID, "GetTrackIDKRZ(id as integer) as QTTrackKRZ"),
    METHOD(rbGetVideoTrack, "GetVideoTrackKRZ(index as integer, EnabledTracksOnly as boolean = false) as QTTrackKRZ"),
    METHOD(rbGetSoundTrack, "GetSoundTrackKRZ(index as integer, EnabledTracksOnly as boolean = false) as QTTrackKRZ"),
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
