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

/* Looks whether the tables of every media can be what they claim: samples, descriptions and data
   references. Opening leaves them alone, so that a movie with one damaged track can still be looked
   into. Reads the heads of the tables, not the tables.
   Fails: invalidSampleTable, invalidSampleDescription, invalidDataRef and as ToolboxOpenMovie, for
   the first damage met; invalidMovie. */
OSErr ToolboxCheckMovie(Movie movie);

/* Closes a movie and its file; its tracks and media become stale. A stale movie sets invalidMovie.
 */
void DisposeMovie(Movie movie);

/* The text for people that belongs to the most recent failed call of this thread: what, where, what
   to try next. Never null; valid until the next toolbox call of this thread. */
const char* ToolboxErrorDetail(void);

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

/* Number of live references of all kinds, for leak checks. */
uint32_t ToolboxLiveReferences(void);

/* Number of live Memory Manager handles, for leak checks. */
uint32_t ToolboxLiveHandles(void);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_TOOLBOX_TOOLBOX_H */
