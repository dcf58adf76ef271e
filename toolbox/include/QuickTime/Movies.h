/* Movies, tracks and media: looking them up and reading their properties.

   References (`Movie`, `Track`, `Media`, `MediaHandler`) are tokens below 2^32, never addresses. A
   stale token, a token of another kind or a made-up number gives the documented error, never a
   crash.

   Every call of this header sets the current error that GetMoviesError() answers, to noErr on
   success. A call that gives a value instead of a code answers 0 or nil on failure. On failure
   output parameters are untouched unless said otherwise. All indexes count from 1. */
#ifndef KRZ_QUICKTIME_MOVIES_H
#define KRZ_QUICKTIME_MOVIES_H

#include <Carbon/MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct MovieType* Movie;
typedef struct TrackType* Track;
typedef struct MediaType* Media;
typedef struct ComponentInstanceRecord* ComponentInstance;
typedef ComponentInstance MediaHandler;

typedef SInt32 TimeValue; /* in some time scale, which the call names */
typedef SInt32 TimeScale; /* units a second */

/* Row vectors: x' = x*m[0][0] + y*m[1][0] + m[2][0], and so on. The third column is 2.30, the
 * others are 16.16. */
typedef struct MatrixRecord {
  Fixed matrix[3][3];
} MatrixRecord;

/* Media types. */
enum {
  VideoMediaType = 0x76696465,    /* 'vide' */
  SoundMediaType = 0x736F756E,    /* 'soun' */
  TextMediaType = 0x74657874,     /* 'text' */
  TimeCodeMediaType = 0x746D6364, /* 'tmcd' */
  SpriteMediaType = 0x73707274,   /* 'sprt' */
  MusicMediaType = 0x6D757369,    /* 'musi' */
  ThreeDeeMediaType = 0x71643364, /* 'qd3d' */
  FlashMediaType = 0x666C7368     /* 'flsh' */
};

/* Flags of GetMovieIndTrackType. Exactly one of the first two; the third may be added. */
enum { movieTrackMediaType = 1, movieTrackCharacteristic = 2, movieTrackEnabledOnly = 4 };

/* Flags of GetTrackNextInterestingTime. Exactly one of the first four. */
enum {
  nextTimeMediaSample = 1,
  nextTimeMediaEdit = 2,
  nextTimeTrackEdit = 4,
  nextTimeSyncSample = 8,
  nextTimeStep = 16,
  nextTimeEdgeOK = 0x4000,
  nextTimeIgnoreActiveSegment = 0x8000
};

/* The result of the most recent call, success included. Reading it does not change it. Kept per
 * thread. */
OSErr GetMoviesError(void);

/* Number of tracks, enabled or not; 0 with invalidMovie for a bad movie. */
SInt32 GetMovieTrackCount(Movie movie);

/* The track at place `index` in movie order. Fails: nil with badTrackIndex or invalidMovie. */
Track GetMovieIndTrack(Movie movie, SInt32 index);

/* The track with that ID. Fails: nil with trackIDNotFound or invalidMovie. */
Track GetMovieTrack(Movie movie, SInt32 trackID);

/* The track at place `index` among those of a media type, or of a characteristic ('eyes' visual,
   'ears' audible). Fails: nil with badTrackIndex when there is none, paramErr for bad flags,
   invalidMovie. */
Track GetMovieIndTrackType(Movie movie, SInt32 index, OSType trackType, SInt32 flags);

/* Units a second; 0 with invalidMovie. */
TimeScale GetMovieTimeScale(Movie movie);

/* The largest end of any track, in the movie's time scale; 0 when there is none. */
TimeValue GetMovieDuration(Movie movie);

/* The owning movie, the media (nil when the track has none) and the ID of a track. Fails: nil or 0
 * with invalidTrack. */
Movie GetTrackMovie(Track track);
Media GetTrackMedia(Track track);
SInt32 GetTrackID(Track track);

/* 8.8 fixed point: 256 is full, negative is muted. */
SInt16 GetTrackVolume(Track track);
Boolean GetTrackEnabled(Track track);

/* Size before the matrix, 16.16. A null output is skipped. */
void GetTrackDimensions(Track track, Fixed* width, Fixed* height);

/* Movie time scale: the whole track with its leading empty time, and that leading empty time alone.
 */
TimeValue GetTrackDuration(Track track);
TimeValue GetTrackOffset(Track track);

/* Lower is nearer to the viewer. */
SInt16 GetTrackLayer(Track track);

/* Seconds since 1904-01-01, the low 32 bits. */
UInt32 GetTrackCreationTime(Track track);
UInt32 GetTrackModificationTime(Track track);

/* Fills all nine entries; a bad track leaves the record. */
void GetTrackMatrix(Track track, MatrixRecord* matrix);

/* Movie time to media time through the edits: -1 inside an empty edit, before the start, at or
   after the end, and for a bad track (which alone sets an error, invalidTrack). */
TimeValue TrackTimeToMediaTime(TimeValue value, Track track);

/* Finds the next time at which something happens in a track, from `time` on, in the movie's time
   scale. `rate` < 0 searches backward, anything else forward; its size does not matter. Both
   outputs are always written; either may be null. None found: time -1, duration 0, noErr. Fails:
   paramErr for none or several of the interest flags, invalidTrack; time is then -1, duration 0. */
void GetTrackNextInterestingTime(Track track, SInt16 interestingTimeFlags, TimeValue time,
                                 Fixed rate, TimeValue* interestingTime,
                                 TimeValue* interestingDuration);

/* The media's handler, one a media and stable. Fails: nil with invalidMedia. */
MediaHandler GetMediaHandler(Media media);

/* Type, name and manufacturer of the handler that made the media. Any output may be null. */
void GetMediaHandlerDescription(Media media, OSType* mediaType, Str255 creatorName,
                                OSType* creatorManufacturer);

/* The owning track. */
Track GetMediaTrack(Media media);

/* Media time scale and duration, in that scale: the sum of the sample durations. */
TimeScale GetMediaTimeScale(Media media);
TimeValue GetMediaDuration(Media media);

/* Samples; for frame-counted sound that is the number of frames. */
SInt32 GetMediaSampleCount(Media media);

/* Sample descriptions, and one of them: `descH` is resized to the whole entry, big-endian, its
   32-bit size first. Fails: badDataRefIndex for an index out of range (the handle is unchanged),
   invalidMedia, memFullErr. */
SInt32 GetMediaSampleDescriptionCount(Media media);
void GetMediaSampleDescription(Media media, SInt32 index, Handle descH);

/* Files that hold the media's data. Fails: invalidMedia. */
OSErr GetMediaDataRefCount(Media media, SInt16* count);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_QUICKTIME_MOVIES_H */
