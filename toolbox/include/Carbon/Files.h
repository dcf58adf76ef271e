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

#ifdef __cplusplus
}
#endif

#endif /* KRZ_CARBON_FILES_H */
