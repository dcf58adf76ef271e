/* What a host needs beyond the classic calls: opening and closing movies by path, and error texts
 * for people. */
#ifndef KRZ_TOOLBOX_TOOLBOX_H
#define KRZ_TOOLBOX_TOOLBOX_H

#include <QuickTime/QuickTime.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Version of the toolbox, as "1.2.3"; static. */
const char* ToolboxVersion(void);

/* Opens the movie of a file for reading. Reads the movie atom only, never the media data.
   `path`: UTF-8, relative to the working directory or absolute.
   Owns:  the caller disposes the movie with DisposeMovie; the file stays open until then.
   Fails: fnfErr, permErr, ioErr, noMovieFound, badPublicMovieAtom, memFullErr; `*movie` is then
   null and ToolboxErrorDetail() names the file, the atom path and the offset. */
OSErr ToolboxOpenMovie(const char* path, Movie* movie);

/* Makes a movie without tracks and without a file; what is added to it waits for the first save.
   `timeScale`: units a second.
   Owns:  the caller disposes the movie with DisposeMovie.
   Fails: paramErr for a time scale of 0 or less or no place for the movie, memFullErr; `*movie` is
   then null. */
OSErr ToolboxNewMovie(TimeScale timeScale, Movie* movie);

/* Opens a movie for reading and saving; the file is locked against other writers until the movie is
   disposed. Changes are made in memory and reach the file with ToolboxSaveMovie.
   Owns:  as ToolboxOpenMovie.
   Fails: as ToolboxOpenMovie; wrPermErr (may not be written), fBsyErr (another program has it). */
OSErr ToolboxOpenMovieForWriting(const char* path, Movie* movie);

/* Whether samples of other movies that are put into this one are copied into it, so that it stands
   by itself when it is saved into its own file; from the start they are only referred to. As long
   as the movie is open. Fails: invalidMovie. */
OSErr ToolboxSetMovieCopiesSamples(Movie movie, Boolean copies);
Boolean ToolboxMovieCopiesSamples(Movie movie);

/* Whether data references of a movie are followed out of its folder. They are not at first: a movie
   from somewhere else must not make anybody read any file it likes. Fails: invalidMovie. */
OSErr ToolboxAllowExternalFiles(Movie movie, Boolean allowed);

/* Saves a movie into its own file. At every moment, whatever fails, the file is the old movie or
   the new one; media data is never copied, and what lies in other files stays there. A movie that
   was not modified is not written. Fails: wrPermErr (not open for writing, or without a file),
   fBsyErr (the file changed underneath), dskFulErr, ioErr, cantPutPublicMovieAtom, invalidMovie;
   the file is then the old movie and the movie keeps its changes. */
OSErr ToolboxSaveMovie(Movie movie);

/* Writes a movie as a new file, movie atom first, media data copied inside the kernel, that in
   other files as well; the movie then stands over that file. With `overwrite`, a file of that name
   is replaced once the new one is whole. Fails: dupFNErr (there is such a file), wrPermErr,
   fBsyErr, dskFulErr, ioErr, cantPutPublicMovieAtom, invalidMovie, couldNotResolveDataRef (a file
   with media data of the movie is not to be had; ToolboxErrorDetail() names it), endOfDataReached
   (it is too short); nothing is left behind then. */
OSErr ToolboxSaveMovieAs(Movie movie, const char* path, Boolean overwrite);

/* As ToolboxSaveMovieAs, and leaves out what no edit shows: samples, but for those from the sync
   sample before each shown range on, and media data that no sample table uses.
   Fails: as ToolboxSaveMovieAs, featureUnsupported (samples with auxiliary data, which cannot be
   cut); samples that are not shown may be gone from the movie in memory then. */
OSErr ToolboxSaveShownMovieAs(Movie movie, const char* path, Boolean overwrite);

/* Is told how much of a long piece of work is done. */
typedef void (*ToolboxWorkProc)(uint64_t done, uint64_t total, void* context);

/* Who is told while ToolboxSaveMovieAs and ToolboxSaveShownMovieAs write (bytes, every 64 MiB or
   more often) and while samples are digested (samples); null for nobody, as at first. `context` is
   handed on. */
void ToolboxWatchWork(ToolboxWorkProc proc, void* context);

/* Whether a movie differs from its file. */
Boolean ToolboxMovieIsModified(Movie movie);

enum { kToolboxSaveNothing = 0, kToolboxSaveAppend, kToolboxSaveReuse, kToolboxSaveRewrite };

/* What ToolboxSaveMovie would do, or ToolboxSaveMovieAs. Sizes in bytes. */
typedef struct ToolboxSavePlan {
  uint32_t method; /* kToolboxSave... */
  uint64_t bytesWritten;
  uint64_t movieAtomBytes;
} ToolboxSavePlan;

/* Nothing is written; the movie may be open for reading only.
   Fails: as the saving calls before their first write. */
OSErr ToolboxPlanSave(Movie movie, Boolean asNewFile, ToolboxSavePlan* plan);

/* The saves of a file that can be taken back, counted from 0, the latest: their number, and when
   the one at `index` was made, in seconds since 1904 UTC (0 for none). Outputs may be null. Fails:
   as ToolboxOpenMovie. */
OSErr ToolboxGetUndoStep(const char* path, uint32_t index, uint32_t* count, uint64_t* time);

/* Takes the latest save of a file back: the movie atom that it replaced counts again.
   Fails: paramErr (no save can be taken back), and as ToolboxOpenMovieForWriting. */
OSErr ToolboxUndoSave(const char* path);

/* Overwrites with zeros what a file keeps for undo; `*overwritten` (may be null) is how many bytes.
   Fails: as ToolboxOpenMovieForWriting; ioErr. */
OSErr ToolboxCommitSaves(const char* path, uint64_t* overwritten);

/* Looks whether the tables of every media can be what they claim: samples, descriptions and data
   references. Opening leaves them alone, so that a movie with one damaged track can still be looked
   into. Reads the heads of the tables, not the tables.
   Fails: invalidSampleTable, invalidSampleDescription, invalidDataRef and as ToolboxOpenMovie, for
   the first damage met; invalidMovie. */
OSErr ToolboxCheckMovie(Movie movie);

/* One edit of a track as it plays: what an edit list leaves open is filled in. */
typedef struct ToolboxTrackEdit {
  int64_t start;      /* movie time scale */
  int64_t duration;   /* movie time scale */
  int64_t mediaStart; /* media time scale; -1 for an empty edit */
  int32_t rate;       /* 16.16 */
} ToolboxTrackEdit;

/* The edits of a track, counted from 1. Fails: invalidTrack, badEditIndex. */
SInt32 ToolboxGetTrackEditCount(Track track);
OSErr ToolboxGetTrackEdit(Track track, SInt32 index, ToolboxTrackEdit* edit);

/* The references of a track to others, of all types together, counted from 1, those to tracks that
   do not exist included. Outputs may be null. Fails: invalidTrack, badTrackIndex. */
OSErr ToolboxGetTrackReferenceID(Track track, SInt32 index, OSType* type, SInt32* trackID);

/* Takes out the references of a track that lead to no track; `*removed` (may be null) is their
   number. Fails: invalidTrack. */
OSErr ToolboxPruneTrackReferences(Track track, SInt32* removed);

/* The size of a track in an aperture mode (kQTApertureMode_... but the classic one), 16.16, as the
   file has it. Setting one sets all three where the track had none, the others to its own size.
   Fail: invalidTrack; paramErr for another mode and a size below 0; asking also
   kQTPropertyNotSupportedErr when the track has no such sizes, and badPublicMovieAtom when they are
   damaged. */
OSErr ToolboxGetTrackAperture(Track track, OSType mode, Fixed* width, Fixed* height);
OSErr ToolboxSetTrackAperture(Track track, OSType mode, Fixed width, Fixed height);

/* Takes the levels of the sound that a track plays in an interval: of each channel the peak and the
   root of the mean square, 1 for full scale. As ToolboxSampleProc. `start`: movie time scale. */
typedef OSErr (*ToolboxSoundLevelProc)(int64_t start, uint32_t channels, const float* peaks,
                                       const float* means, void* context);

/* Measures the sound of a track between two movie times, an interval of `every` after the other,
   and hands each to `proc`; the last one may be shorter. Sound is read and decoded in small pieces.
   Empty time is silent, and so are formats that are not decoded: see MediaGetSoundLevelMeterInfo;
   `channels` is then that of the first description, and ToolboxCanMeasureSound tells it apart.
   Fails: invalidTrack, invalidMedia (no sound), paramErr for an interval below 1, and as
   MediaGetSoundLevelMeterInfo; as `proc` answers. */
OSErr ToolboxMeasureTrackSound(Track track, TimeValue from, TimeValue until, TimeValue every,
                               ToolboxSoundLevelProc proc, void* context);

/* Whether all sample descriptions of a track are of sound that can be decoded. */
Boolean ToolboxCanMeasureSound(Track track);

/* The short list of chapters in a movie's user data: entries one behind the other, each a start
   (signed 64 bits big-endian, units of 100 ns), the length of the title in bytes (8 bits) and the
   title (UTF-8). `entries` is resized to them, to nothing without a list. Setting no entries
   removes the list. Fail: invalidMovie, ioErr, eofErr, memFullErr; setting also paramErr for more
   than 255 entries or one that is not whole. */
OSErr ToolboxGetShortChapters(Movie movie, Handle entries);
OSErr ToolboxSetShortChapters(Movie movie, const void* entries, uint32_t size);

/* Reads a time code as people write it, strictly: "01:00:00:02" or "01:00:00;02", "-" in front of
   it where the definition allows, or the number of a counter. Fails: paramErr for what is none, for
   parts that are too large, and for labels that drop-frame counting leaves out;
   ToolboxErrorDetail() says which. */
OSErr ToolboxParseTimeCode(const char* text, const TimeCodeDef* definition, TimeCodeRecord* record);

/* What of a definition no reader can count on, a line for each fault in UTF-8; empty when it is
   sound. `faults` is resized to them. Fails: paramErr, memFullErr. */
OSErr ToolboxCheckTimeCodeDefinition(const TimeCodeDef* definition, Handle faults);

/* When a timecode track first shows a time code, in the movie's time scale: `text` is read as above
   by the definition of each of its samples. Fails: invalidTrack, invalidMedia (no timecode),
   timeNotInTrack (never shown), paramErr, featureUnsupported (more than a million samples), and as
   TCGetTimeCodeAtTime. */
OSErr ToolboxFindTimeCode(Track track, const char* text, TimeValue* time);

/* Looks a movie over: whether its tables agree, its references lead somewhere, its samples lie
   inside the file. `*problems` is a new handle with a line for each problem, at most a hundred, in
   UTF-8; empty when there are none. Media data is not read. Owns:  the caller disposes the handle.
   Fails: ioErr, memFullErr, invalidMovie. */
OSErr ToolboxVerifyMovie(Movie movie, Handle* problems);

/* A checksum over the bytes of all samples of a track in decode order: 32 hexadecimal digits and a
   zero byte. Fails: invalidTrack, and as reading the samples. */
OSErr ToolboxDigestTrackSamples(Track track, char digest[33]);

/* The same over the first `count` samples, as GetMediaSampleCount counts them, or over all if there
   are fewer. Fails: as ToolboxDigestTrackSamples. */
OSErr ToolboxDigestFirstSamples(Track track, uint32_t count, char digest[33]);

/* One sample of a track. Times in the media time scale. */
typedef struct ToolboxSample {
  int64_t time; /* when it is displayed */
  int64_t duration;
  uint64_t offset;      /* in the file that holds it */
  uint32_t number;      /* from 1 */
  uint32_t size;        /* bytes */
  uint32_t description; /* from 1; may point nowhere */
  Boolean isSync;
} ToolboxSample;

/* Takes samples that follow one another; they are gone when it returns. It may not call the
   toolbox. An answer other than noErr ends the list. */
typedef OSErr (*ToolboxSampleProc)(const ToolboxSample* samples, uint32_t count, void* context);

/* Hands the samples of a track to `proc` in decode order, many at a time, and costs no memory. In
   sound whose table counts frames of packets that cannot be taken apart, a packet is one sample.
   `from`, `until`: movie time; only samples that the track shows in between. `until` below 0: all
   samples of the media.
   Fails: invalidTrack, invalidMedia, invalidSampleTable, ioErr and as `proc` answers; what comes
   before damage has then been handed over. */
OSErr ToolboxListTrackSamples(Track track, TimeValue from, TimeValue until, ToolboxSampleProc proc,
                              void* context);

/* Takes bytes of samples; `number` (from 1) is that of the first of them. As ToolboxSampleProc. */
typedef OSErr (*ToolboxSampleBytesProc)(const void* bytes, uint32_t count, uint32_t number,
                                        void* context);

/* Hands the bytes of the samples `first` to `last` (from 1, both included) to `proc` in decode
   order, at most a mebibyte at a time.
   Fails: invalidSampleNum, endOfDataReached (a sample that claims more than its file has),
   couldNotResolveDataRef, and as ToolboxListTrackSamples. */
OSErr ToolboxReadTrackSamples(Track track, uint32_t first, uint32_t last,
                              ToolboxSampleBytesProc proc, void* context);

/* Closes a movie and its file; its tracks and media become stale. A stale movie sets invalidMovie.
 */
void DisposeMovie(Movie movie);

/* The text for people that belongs to the most recent failed call of this thread: what, where, what
   to try next. Never null; valid until the next toolbox call of this thread. */
const char* ToolboxErrorDetail(void);

/* Whether the framework bundles can be loaded, in which drawing and fonts are, and loads them.
   Without them the calls of ApplicationServices/QuickDraw.h cannot be had; all others can. Fails:
   fnfErr; ToolboxErrorDetail() names the file or folder and says what to do. */
OSErr ToolboxCheckFrameworks(void);

/* File records that stand for a path. Both are tokens into a table that lives as long as the
   process; equal paths give equal tokens. `path`: UTF-8; made absolute, not resolved. The file need
   not exist for an FSSpec. Fails: paramErr for a null argument, fnfErr when ToolboxMakeFSRef finds
   no such file. */
OSErr ToolboxMakeFSSpec(const char* path, FSSpec* spec);
OSErr ToolboxMakeFSRef(const char* path, FSRef* ref);

/* The absolute path that a record stands for; null for a record that ToolboxMake... did not make.
   Valid as long as the process. */
const char* ToolboxPathOfFSSpec(const FSSpec* spec);
const char* ToolboxPathOfFSRef(const FSRef* ref);

/* Number of live references for leak checks: of all kinds but the foundation's, whose bundles are
   kept as long as the process lives. */
uint32_t ToolboxLiveReferences(void);

/* Number of live Memory Manager handles, for leak checks. */
uint32_t ToolboxLiveHandles(void);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_TOOLBOX_TOOLBOX_H */
