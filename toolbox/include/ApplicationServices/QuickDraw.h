/* QuickDraw: offscreen worlds, regions, text settings, fonts.

   libtoolbox does not export these calls. They live in framework bundles that are loaded when
   somebody draws: GetFNum and GetFontName in "Carbon.framework", all others in
   "ApplicationServices.framework". Whoever calls them finds them by name at run time. */
#ifndef KRZ_APPLICATIONSERVICES_QUICKDRAW_H
#define KRZ_APPLICATIONSERVICES_QUICKDRAW_H

#include <Carbon/Carbon.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct GrafPortType* CGrafPtr;
typedef CGrafPtr GWorldPtr;
typedef struct GDeviceType** GDHandle;
typedef struct ColorTableType** CTabHandle;
typedef struct PixMapType** PixMapHandle;
typedef struct RegionType** RgnHandle;
typedef UInt32 GWorldFlags;
typedef SInt16 QDErr;

/* Pixels somewhere in memory, as CopyBits takes them. */
typedef struct BitMap {
  Ptr baseAddr;
  SInt16 rowBytes;
  Rect bounds;
} BitMap;

/* Eight rows of eight bits: 1 the foreground colour, 0 the background colour. */
typedef struct Pattern {
  UInt8 pat[8];
} Pattern;

/* Measures of a font in pixels. */
typedef struct FontInfo {
  SInt16 ascent;
  SInt16 descent;
  SInt16 widMax;
  SInt16 leading;
} FontInfo;

/* The number of a font, in any case of letters; 0 when it is unknown, which is also that of the
   system font. */
void GetFNum(ConstStr255Param name, SInt16* fontNumber);

/* The name of a font; empty when the number is unknown. Texts are MacRoman. */
void GetFontName(SInt16 fontNumber, Str255 name);

/* Font, face and size (0 is 12 points) of the text of the current port. A face is a sum of 1 bold,
   2 italic, 4 underline, 8 outline, 16 shadow, 32 condense, 64 extend. */
void TextFont(SInt16 fontNumber);
void TextFace(SInt16 face);
void TextSize(SInt16 size);

/* Measures of the font that the current port is set to, rounded up to whole pixels. An unknown font
   is measured as the application font. */
void GetFontInfo(FontInfo* info);

void FillRect(const Rect* rect, const Pattern* pattern);
void FillRgn(RgnHandle region, const Pattern* pattern);
void RGBForeColor(const RGBColor* color);
void CopyBits(const BitMap* source, const BitMap* destination, const Rect* sourceRect,
              const Rect* destinationRect, SInt16 mode, RgnHandle mask);

QDErr NewGWorld(GWorldPtr* world, SInt16 depth, const Rect* bounds, CTabHandle colors,
                GDHandle device, GWorldFlags flags);
GWorldFlags UpdateGWorld(GWorldPtr* world, SInt16 depth, const Rect* bounds, CTabHandle colors,
                         GDHandle device, GWorldFlags flags);
void DisposeGWorld(GWorldPtr world);
void SetGWorld(CGrafPtr port, GDHandle device);
void GetGWorld(CGrafPtr* port, GDHandle* device);
Rect* GetPortBounds(CGrafPtr port, Rect* bounds);

PixMapHandle GetPortPixMap(CGrafPtr port);
PixMapHandle GetGWorldPixMap(GWorldPtr world);
const BitMap* GetPortBitMapForCopyBits(CGrafPtr port);
Boolean LockPixels(PixMapHandle pixels);
void UnlockPixels(PixMapHandle pixels);
Ptr GetPixBaseAddr(PixMapHandle pixels);
SInt32 GetPixRowBytes(PixMapHandle pixels);
SInt16 GetPixDepth(PixMapHandle pixels);

RgnHandle NewRgn(void);
void DisposeRgn(RgnHandle region);
OSErr BitMapToRegion(RgnHandle region, const BitMap* bits);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_APPLICATIONSERVICES_QUICKDRAW_H */
