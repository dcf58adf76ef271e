/* User data: lists of typed items, text or bytes, that belong to a movie, a track or the caller.

   Every call answers a code unless it gives a value, and sets the current error that
   GetMoviesError() answers. A nil, stale or made-up list: paramErr; calls that give a value answer
   0. All indexes count from 1 among the items of one type. Output handles are resized to exactly
   what they are given. */
#ifndef KRZ_QUICKTIME_USERDATA_H
#define KRZ_QUICKTIME_USERDATA_H

#include <QuickTime/Movies.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct UserDataRecord* UserData;

/* An empty list, and one read from the flattened form: items one behind the other, four zero bytes
   at the end or not. The caller disposes the list, and still owns the handle.
   Fail: memFullErr; paramErr for bytes that are not such a list; `*theUserData` is nil then. */
OSErr NewUserData(UserData* theUserData);
OSErr NewUserDataFromHandle(Handle h, UserData* theUserData);

/* Disposes a list that the caller made. Fails: paramErr for the list of a movie or track, which
   lives on. */
OSErr DisposeUserData(UserData theUserData);

/* The flattened form: items with their size and type, big-endian, then four zero bytes. */
OSErr PutUserDataIntoHandle(UserData theUserData, Handle h);

/* The list of a movie or track itself, valid while its owner lives; never to be disposed.
   Fail: nil with invalidMovie, invalidTrack, memFullErr, ioErr. */
UserData GetMovieUserData(Movie theMovie);
UserData GetTrackUserData(Track theTrack);

/* Items as bytes. Of text items that is all: lengths, languages and texts.
   Fail: userDataItemNotFound; Add: paramErr for the types 0 and 'meta'. */
OSErr AddUserData(UserData theUserData, Handle data, OSType udType);
OSErr GetUserData(UserData theUserData, Handle data, OSType udType, SInt32 index);
OSErr RemoveUserData(UserData theUserData, OSType udType, SInt32 index);
SInt16 CountUserDataType(UserData theUserData, OSType udType);

/* The type behind `udType` in order of first appearance, the first for 0; 0 behind the last. */
OSType GetNextUserDataType(UserData theUserData, OSType udType);

/* Texts of an item, one for each region. Add replaces the text of that region, and makes the first
   item of a type. Asked for region 0, a text in English or of no particular language will do. Texts
   that are stored in Unicode are given in MacRoman, with "?" for what it lacks.
   Fail: userDataItemNotFound; Add: paramErr for more than 65535 bytes. */
OSErr AddUserDataText(UserData theUserData, Handle data, OSType udType, SInt32 index,
                      SInt16 itlRegionTag);
OSErr GetUserDataText(UserData theUserData, Handle data, OSType udType, SInt32 index,
                      SInt16 itlRegionTag);
OSErr RemoveUserDataText(UserData theUserData, OSType udType, SInt32 index, SInt16 itlRegionTag);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_QUICKTIME_USERDATA_H */
