/* File references of the classic file system. Both records are tokens here: the path they stand for
   is kept in a side table, so that name limits never cut a path. */
#ifndef KRZ_CARBON_FILES_H
#define KRZ_CARBON_FILES_H

#include <Carbon/MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

#pragma pack(push, 2)
typedef struct FSSpec {
  SInt16 vRefNum;
  SInt32 parID;
  Str63 name;
} FSSpec;
#pragma pack(pop)

typedef struct FSRef {
  UInt8 hidden[80];
} FSRef;

typedef struct HFSUniStr255 {
  UInt16 length;
  UniChar unicode[255];
} HFSUniStr255;

enum {
  kSystemDiskDomain = -32767,        /* whatever the system was started from */
  kFrameworksFolderType = 0x6672616D /* 'fram' */
};

/* The record of a folder. Known is the folder of our framework bundles, in every domain; the
   environment variable KRZ_FRAMEWORKS may name another in its place. Nothing is ever created.
   Fails: fnfErr when there is no such folder, paramErr for no record. */
OSErr FSFindFolder(SInt16 domain, OSType folderType, Boolean createFolder, FSRef* ref);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_CARBON_FILES_H */
