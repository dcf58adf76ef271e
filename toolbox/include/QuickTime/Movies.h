/* Movies, tracks and media: looking them up and reading their properties.

   References (`Movie`, `Track`, `Media`, `MediaHandler`) are tokens below 2^32, never addresses. A
   stale token, a token of another kind or a made-up number gives the documented error, never a
   crash.

   Every call of this header sets the current error that GetMoviesError() answers, to noErr on
   success. A call that gives a value instead of a code answers 0 or nil on failure. On failure
   output parameters are untouched unless said otherwise. All indexes count from 1. */
#ifndef KRZ_QUICKTIME_MOVIES_H
#define KRZ_QUICKTIME_MOVIES_H

#include <ApplicationServices/QuickDraw.h>
#include <Carbon/Files.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct MovieType* Movie;
typedef struct TrackType* Track;
typedef struct MediaType* Media;
typedef struct ComponentInstanceRecord* ComponentInstance;
typedef ComponentInstance MediaHandler;
typedef struct ComponentRecord* Component;

typedef SInt32 TimeValue; /* in some time scale, which the call names */
typedef SInt32 TimeScale; /* units a second */

/* A time in a scale of its own. Only the movie toolbox's clocks know time bases. */
typedef struct TimeRecord {
  struct {
    UInt32 lo;
    SInt32 hi;
  } value; /* 64 bits in two halves */
  TimeScale scale;
  struct TimeBaseRecord* base;
} TimeRecord;

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

/* Where the movie stands, in its own time scale; as it was saved until it is moved, and never
   behind its end. `currentTime` gets the same as a record, and may be null. Moving it changes
   nothing that is saved. Fail: 0 or nothing with invalidMovie; a negative time is the start. */
TimeValue GetMovieTime(Movie movie, TimeRecord* currentTime);
void SetMovieTimeValue(Movie movie, TimeValue newTime);

/* The volume that a movie is played at, 8.8: 256 is full, negative is muted. Kept by the next save.
   Fail: 0 or nothing with invalidMovie. */
SInt16 GetMoviePreferredVolume(Movie movie);
void SetMoviePreferredVolume(Movie movie, SInt16 volume);

/* The owning movie, the media (nil when the track has none) and the ID of a track. Fails: nil or 0
 * with invalidTrack. */
Movie GetTrackMovie(Track track);
Media GetTrackMedia(Track track);
SInt32 GetTrackID(Track track);

/* 8.8 fixed point: 256 is full, negative is muted. */
SInt16 GetTrackVolume(Track track);
Boolean GetTrackEnabled(Track track);

/* Size before the matrix, 16.16: that of the movie's aperture mode when the track has one, else
   that of its header. A null output is skipped. */
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

/* The region that a track is cut to, in its own pixels before the matrix; nil with noErr when it is
   not cut. Of a region that is damaged in the file its rectangle.
   Owns:  the caller disposes the region, a copy.
   Fails: nil with invalidTrack, badPublicMovieAtom, ioErr, eofErr, memFullErr. */
RgnHandle GetTrackClipRgn(Track track);

/* Changes of a track. All live in the movie in memory, are kept by the next save, and set the
   track's modification time. A bad track sets invalidTrack. */

/* Any 8.8 value; negative is muted. */
void SetTrackVolume(Track track, SInt16 volume);
void SetTrackEnabled(Track track, Boolean isEnabled);
void SetTrackDimensions(Track track, Fixed width, Fixed height);
void SetTrackLayer(Track track, SInt16 layer);

/* nil is the identity. */
void SetTrackMatrix(Track track, const MatrixRecord* matrix);

/* Cuts a track to a region, which is copied, or with nil no longer. A track that is already cut to
   it is not changed. Fails: paramErr for a handle that holds no region. */
void SetTrackClipRgn(Track track, RgnHandle clip);

/* Movie time scale: the length of the empty time in front. Fails: invalidTime for a negative one.
 */
void SetTrackOffset(Track track, TimeValue offset);

/* Edits of segments. Times are in the movie's time scale, for an insertion those of the source in
   its own. Media data is never touched. A segment that reaches beyond the end ends there; what is
   inserted beyond the end comes behind empty time.
   A segment that goes to a track of another media, perhaps of another movie, brings the samples
   that it shows: the tables of that media get them, with a reference to the file that they lie in.
   Copied into the movie are samples that the other movie has not saved yet, all samples for a media
   between BeginMediaEdits and EndMediaEdits, and all of other movies after
   ToolboxSetMovieCopiesSamples. InsertMovieSegment into another movie makes the tracks that are
   missing there. Fail: invalidTrack, invalidMovie, invalidTime, invalidDuration; no track shows
   anything else then. InsertEmpty... at the end: invalidTime. InsertTrackSegment of tracks of
   different media types: mediaTypesDontMatch; of different media also as reading its tables,
   featureUnsupported, memFullErr, couldNotResolveDataRef, fBsyErr (the other movie's file was
   replaced). */
OSErr ScaleTrackSegment(Track track, TimeValue startTime, TimeValue oldDuration,
                        TimeValue newDuration);
OSErr InsertTrackSegment(Track srcTrack, Track dstTrack, TimeValue srcIn, TimeValue srcDuration,
                         TimeValue dstIn);
OSErr InsertEmptyTrackSegment(Track track, TimeValue dstIn, TimeValue dstDuration);
OSErr DeleteTrackSegment(Track track, TimeValue startTime, TimeValue duration);
OSErr ScaleMovieSegment(Movie movie, TimeValue startTime, TimeValue oldDuration,
                        TimeValue newDuration);
OSErr InsertMovieSegment(Movie srcMovie, Movie dstMovie, TimeValue srcIn, TimeValue srcDuration,
                         TimeValue dstIn);
OSErr InsertEmptyMovieSegment(Movie dstMovie, TimeValue dstIn, TimeValue dstDuration);
OSErr DeleteMovieSegment(Movie movie, TimeValue startTime, TimeValue duration);

/* Flags of AddClonedTrackToMovie. */
enum { kQTCloneShareSamples = 1, kQTCloneDontCopyEdits = 2 };

/* Adds a copy of a track to its own movie that shares its samples, behind the last track.
   Fails: invalidTrack, invalidMovie, paramErr for another movie or without kQTCloneShareSamples;
   `*newTrack` is then nil. */
OSErr AddClonedTrackToMovie(Track srcTrack, Movie dstMovie, SInt32 flags, Track* newTrack);

/* Takes a track and its media out of its movie; references of other tracks to it go as well. */
void DisposeMovieTrack(Track track);

/* Takes the media out of its track, which then shows nothing. */
void DisposeTrackMedia(Media media);

enum { kTrackReferenceChapterList = 0x63686170 /* 'chap' */ };

/* References of a track to others of its movie, by type, counted from 1. Entries that name no track
   are not counted and not found.
   Fail: invalidTrack; Add: trackNotInMovie; Delete: badTrackIndex. GetTrackReference answers nil
   for what is not there, which is no error. `addedIndex` may be null. */
OSErr AddTrackReference(Track track, Track refTrack, OSType refType, SInt32* addedIndex);
OSErr DeleteTrackReference(Track track, OSType refType, SInt32 index);
Track GetTrackReference(Track track, OSType refType, SInt32 index);
SInt32 GetTrackReferenceCount(Track track, OSType refType);

/* The type that comes behind `refType` in the track, the first for 0; 0 when there is none. */
OSType GetNextTrackReferenceType(Track track, OSType refType);

/* Classes and IDs of properties. */
enum {
  kQTPropertyClass_Audio = 0x61756469,                        /* 'audi' */
  kQTAudioPropertyID_RateChangesPreservePitch = 0x61756370,   /* 'aucp', one byte */
  kQTAudioPropertyID_Pitch = 0x70697463,                      /* 'pitc', float32, cents */
  kQTAudioPropertyID_SummaryChannelLayout = 0x636C6179,       /* 'clay' */
  kQTAudioPropertyID_TrackChannelLayout = 0x746C6179,         /* 'tlay' */
  kQTPropertyClass_Visual = 0x76697375,                       /* 'visu' */
  kQTVisualPropertyID_HasApertureModeDimensions = 0x68616D64, /* 'hamd', one byte, read only */
  kQTVisualPropertyID_ApertureMode = 0x61706D64               /* 'apmd', OSType */
};

/* Aperture modes: which of its sizes a track reports. */
enum {
  kQTApertureMode_Classic = 0x636C6173,            /* 'clas', that of the track header */
  kQTApertureMode_CleanAperture = 0x636C6561,      /* 'clea', without the edges, in square pixels */
  kQTApertureMode_ProductionAperture = 0x70726F64, /* 'prod', whole, in square pixels */
  kQTApertureMode_EncodedPixels = 0x656E636F       /* 'enco', as the samples are coded */
};

/* Properties. Rate changes, pitch and aperture mode live as long as the movie is open; the channel
   layout of a track is kept by the next save. Whether a track, or any of a movie, has aperture
   dimensions can be asked of both. Layouts are AudioChannelLayout records of 12 + 20 * n bytes.
   Outputs may be null. Fail: invalidMovie, invalidTrack; kQTPropertyNotSupportedErr (no such
   property, no sound), kQTPropertyBadValueSizeErr, kQTPropertyReadOnlyErr, paramErr for no buffer
   and an unknown mode. */
OSStatus QTGetMoviePropertyInfo(Movie movie, OSType propertyClass, OSType propertyID,
                                OSType* propertyType, ByteCount* size, UInt32* flags);
OSStatus QTGetMovieProperty(Movie movie, OSType propertyClass, OSType propertyID, ByteCount size,
                            void* value, ByteCount* used);
OSStatus QTSetMovieProperty(Movie movie, OSType propertyClass, OSType propertyID, ByteCount size,
                            const void* value);
OSStatus QTGetTrackPropertyInfo(Track track, OSType propertyClass, OSType propertyID,
                                OSType* propertyType, ByteCount* size, UInt32* flags);
OSStatus QTGetTrackProperty(Track track, OSType propertyClass, OSType propertyID, ByteCount size,
                            void* value, ByteCount* used);
OSStatus QTSetTrackProperty(Track track, OSType propertyClass, OSType propertyID, ByteCount size,
                            const void* value);

/* Aperture dimensions: the sizes of a track in the three modes, worked out from the first sample
   description of its pictures (size, clean aperture, shape of the pixels) and kept by the next
   save. The track's own size stays. Of a track that is seen but has no picture descriptions all
   three are its own size. `imageDescription`: a whole description, big-endian; nil is the track's
   first. The movie calls treat every track with picture descriptions; Remove also sets the mode to
   classic. Fail: invalidMovie, invalidTrack (also for one that is not seen),
   invalidSampleDescription (a clean aperture without size or larger than the picture, a size beyond
   32767; nothing changes then), memWZErr. */
OSErr GenerateMovieApertureModeDimensions(Movie movie);
OSErr RemoveMovieApertureModeDimensions(Movie movie);
OSErr GenerateTrackApertureModeDimensions(Track track);
OSErr RemoveTrackApertureModeDimensions(Track track);
OSErr SetTrackApertureModeDimensionsUsingSampleDescription(Track track, Handle imageDescription);

/* The projection that takes each corner of `source` to its partner in `dest`; corners in the order
   top left, top right, bottom right, bottom left. Leaves the current error.
   Fails: paramErr for a source without an area; `matrix` is then a move by the first corner. */
OSErr QuadToQuadMatrix(const FixedPoint source[4], const FixedPoint dest[4], MatrixRecord* matrix);

/* A whole number in 16.16; one that does not fit becomes the nearest that does. */
Fixed Long2Fix(SInt32 value);

/* The nearest whole number, halves away from zero, and a quotient in 16.16; both leave the current
   error. A quotient that does not fit, or by 0, is the largest number of its sign. */
SInt32 Fix2Long(Fixed value);
Fixed FixRatio(SInt16 numerator, SInt16 denominator);

/* Adds a move to a matrix, 16.16. */
void TranslateMatrix(MatrixRecord* matrix, Fixed deltaX, Fixed deltaY);

/* The same time in another scale, to the nearest unit, halves up. Without a scale above 0 on both
   sides the record stays. */
void ConvertTimeScale(TimeRecord* time, TimeScale newScale);

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

/* Puts a new track behind the last one: enabled, of identity matrix, without media and edits.
   `width`, `height`: 16.16; `trackVolume`: 8.8, 0 for none. Fails: nil with invalidMovie,
   memFullErr. */
Track NewMovieTrack(Movie movie, Fixed width, Fixed height, SInt16 trackVolume);

/* Gives a track its media, still without samples. `dataRef`: the data of a data reference of type
   `dataRefType` to the file of the samples, which is copied; nil for the movie's own file. Fails:
   nil with invalidTrack (also for a track that has media), paramErr for a time scale of 0 or less,
   cantFindHandler for type 0, invalidDataRef. */
Media NewTrackMedia(Track track, OSType mediaType, TimeScale timeScale, Handle dataRef,
                    OSType dataRefType);

/* Puts a span of the track's media into the track, at normal speed for a `rate` of 1.0 (16.16).
   `trackStart`: movie time, or -1 for the end of the track; later edits move, empty time fills a
   gap. `mediaTime`, `mediaDuration`: media time. A duration of 0 changes nothing.
   Fails: invalidTrack, invalidMedia for a track without media, paramErr for a rate of 0 or less,
   invalidTime, invalidDuration (negative, or reaching beyond the end of the media). */
OSErr InsertMediaIntoTrack(Track track, TimeValue trackStart, TimeValue mediaTime,
                           TimeValue mediaDuration, Fixed mediaRate);

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

/* Flag of a sample: it cannot be shown without others. */
enum { mediaSampleNotSync = 1 };

/* Reads the sample shown at a media time, and those behind it that are alike in description,
   duration, size and sync. `dataOut` is resized to their bytes, one sample behind the other;
   `descriptionH` to the description. `maxSizeToGrow` 0: no limit. `time`, `sampleTime` and
   `durationPerSample`: media time. `maxNumberOfSamples` 0: one sample, but of sound whose samples
   have one size the rest of the chunk. Any output may be null.
   Fails: timeNotInMedia (count and size are then 0), maxSizeToGrowTooSmall (the size is set),
   paramErr for negative limits, invalidSampleDescIndex when a description is wanted that is
   missing, endOfDataReached, couldNotResolveDataRef, invalidSampleTable, ioErr, memFullErr,
   invalidMedia. */
OSErr GetMediaSample(Media media, Handle dataOut, SInt32 maxSizeToGrow, SInt32* size,
                     TimeValue time, TimeValue* sampleTime, TimeValue* durationPerSample,
                     Handle descriptionH, SInt32* descriptionIndex, SInt32 maxNumberOfSamples,
                     SInt32* numberOfSamples, SInt16* sampleFlags);

/* Lets samples be added to a media, and ends it. New data waits for the next save.
   Fails: dataAlreadyOpenForWrite, wrPermErr when the movie's file may not be written,
   couldNotResolveDataRef when all of the media's data is in other files, invalidMedia. Ending what
   was not begun is no error. */
OSErr BeginMediaEdits(Media media);
OSErr EndMediaEdits(Media media);

/* Puts `numberOfSamples` samples of one size behind the last one of the media: together they are
   the `size` bytes of `dataIn` from `offset` on. The track does not change. `durationPerSample`:
   media time. `descriptionH`: the whole description, big-endian; a timecode description may be in
   the machine's own order. An equal one of the media is used, else it is added, in any case for
   data in the movie's own file. `sampleTime`: where the first of them begins; may be null.
   Fails: dataNotOpenForWrite outside of edits, paramErr for bytes that the handle does not have or
   that cannot be divided, invalidDuration, invalidSampleDescription, memFullErr, dskFulErr, ioErr,
   invalidMedia; nothing is added then. */
OSErr AddMediaSample(Media media, Handle dataIn, SInt32 offset, UInt32 size,
                     TimeValue durationPerSample, Handle descriptionH, SInt32 numberOfSamples,
                     SInt16 sampleFlags, TimeValue* sampleTime);

/* Language of a media: a classic code below 0x400, 0x7FFF for none, else three packed letters.
   Fail: 0 or nothing with invalidMedia. */
SInt16 GetMediaLanguage(Media media);
void SetMediaLanguage(Media media, SInt16 language);

/* Files that hold the media's data. Fails: invalidMedia. */
OSErr GetMediaDataRefCount(Media media, SInt16* count);

enum { dataRefSelfReference = 1, dataRefWasNotResolved = 2 };

/* One of them, counted from 1, as a new handle: 'alis' with an alias record, also for the movie's
   own file whatever the movie holds; 'url ' with a C string. Outputs may be null. Owns:  the caller
   disposes the handle. Fails: badDataRefIndex, invalidDataRef, invalidMedia, memFullErr. */
OSErr GetMediaDataRef(Media media, SInt16 index, Handle* dataRef, OSType* dataRefType,
                      SInt32* dataRefAttributes);

/* Puts a copy in the place of one of them: the offsets of the samples count in that file from then
   on. Fails: badDataRefIndex, invalidDataRef, invalidMedia. */
OSErr SetMediaDataRef(Media media, SInt16 index, Handle dataRef, OSType dataRefType);

/* A data reference to a file, as a new handle of type 'alis'. `flags`: 0.
   Owns:  the caller disposes the handle.
   Fails: fnfErr, errFSBadFSRef, paramErr, memFullErr. */
OSErr QTNewDataReferenceFromFSRef(const FSRef* fileRef, UInt32 flags, Handle* outDataRef,
                                  OSType* outDataRefType);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_QUICKTIME_MOVIES_H */
