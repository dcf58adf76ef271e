/* Scalar types, points, rectangles, colours and strings that every toolbox header builds on. */
#ifndef KRZ_CARBON_MACTYPES_H
#define KRZ_CARBON_MACTYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint8_t UInt8;
typedef int8_t SInt8;
typedef uint16_t UInt16;
typedef int16_t SInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef uint64_t UInt64;
typedef int64_t SInt64;

typedef UInt8 Boolean;
typedef SInt16 OSErr;
typedef SInt32 OSStatus;
typedef UInt32 OSType;
typedef OSType ResType;
typedef SInt32 Fixed; /* 16.16 */
typedef SInt32 Fract; /* 2.30 */
typedef UInt8 Style;
typedef UInt16 UniChar;
typedef UInt32 ItemCount;
typedef size_t ByteCount;

typedef char* Ptr;
/* A relocatable block: a pointer to a master pointer to the bytes. A real double pointer; callers
 * dereference it. */
typedef Ptr* Handle;
typedef SInt32 Size; /* A byte count of the Memory Manager; negative is an error. */

typedef UInt8 Str255[256]; /* Pascal string: a length byte, then that many bytes. */
typedef UInt8 Str63[64];
typedef UInt8* StringPtr;
typedef const UInt8* ConstStr255Param;

#pragma pack(push, 2)
typedef struct Point {
  SInt16 v;
  SInt16 h;
} Point;

typedef struct Rect {
  SInt16 top;
  SInt16 left;
  SInt16 bottom;
  SInt16 right;
} Rect;

typedef struct RGBColor {
  UInt16 red;
  UInt16 green;
  UInt16 blue;
} RGBColor;

typedef struct FixedPoint {
  Fixed x;
  Fixed y;
} FixedPoint;
#pragma pack(pop)

#ifdef __cplusplus
}
#endif

#endif /* KRZ_CARBON_MACTYPES_H */
