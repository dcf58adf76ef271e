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
typedef struct PixMapType** PixMapHandle; /* leads to a record that begins as a BitMap does */
/* A handle of the Memory Manager with a region's record, big-endian as in movie files: its size (16
   bits, 10 for a rectangle), its box (top, left, bottom, right), and unless it is a rectangle its
   rows: y, the x where inside and outside change against the row above, 0x7FFF; behind the last row
   0x7FFF. Movies and drawing share it; both look at the record again at every call. */
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

/* Drawing into the current port, in its colours: 1 bits of a pattern in the foreground, 0 bits in
   white, eight pixels by eight from the origin on. What lies outside of the port is left out. */
void FillRect(const Rect* rect, const Pattern* pattern);
void FillRgn(RgnHandle region, const Pattern* pattern);

/* The foreground: the high bytes of the components. Black at first. */
void RGBForeColor(const RGBColor* color);

/* Copies pixels between bitmaps or worlds of any depth; each is the nearest one where the
   rectangles differ in size. `mask` (may be nil) is in the places of the destination. `mode`: 0
   copy, 1 or, 2 exclusive or, 3 clear, 4 to 7 the same inverted, 36 all but white; 0x40 more mixes
   black and white where the destination has no grey. Black becomes the foreground of the
   destination's port. A bitmap that is no port's is one bit deep. */
void CopyBits(const BitMap* source, const BitMap* destination, const Rect* sourceRect,
              const Rect* destinationRect, SInt16 mode, RgnHandle mask);

/* Offscreen worlds of depth 1, 2, 4, 8 (grey), 16, 24 (packed red, green, blue) or 32; 0 stands for
   32. They begin white. Colour tables and devices are not looked at.
   Owns:  the caller disposes the world.
   Fails: paramErr for a rectangle without pixels, cDepthErr, memFullErr (also beyond 512 MiB);
   `*world` is then nil. */
QDErr NewGWorld(GWorldPtr* world, SInt16 depth, const Rect* bounds, CTabHandle colors,
                GDHandle device, GWorldFlags flags);

/* Gives a world another depth and rectangle. Flags: bit 28 keeps what it shows from the top left
   corner on, bit 29 scales it, bit 30 mixes black and white where the new depth has no grey;
   without the first two it becomes white. Answers flags: bit 17 new depth, 19 new row bytes, 20
   reallocated, 31 failed, the error in the low half; the world is then unchanged. */
GWorldFlags UpdateGWorld(GWorldPtr* world, SInt16 depth, const Rect* bounds, CTabHandle colors,
                         GDHandle device, GWorldFlags flags);
void DisposeGWorld(GWorldPtr world);

/* The current port. There is always one: where none was set, and behind one that was disposed, a
   port without pixels. Devices are nil. */
void SetGWorld(CGrafPtr port, GDHandle device);
void GetGWorld(CGrafPtr* port, GDHandle* device);

/* Writes the bounds and answers `bounds`; all zero for a port without pixels. */
Rect* GetPortBounds(CGrafPtr port, Rect* bounds);

/* The pixels of a port, as long as it lives; nil for one without. Row bytes are whole numbers here;
   in the record of a pixel map they have 14 bits below two marks. */
PixMapHandle GetPortPixMap(CGrafPtr port);
PixMapHandle GetGWorldPixMap(GWorldPtr world);
const BitMap* GetPortBitMapForCopyBits(CGrafPtr port);
Boolean LockPixels(PixMapHandle pixels);
void UnlockPixels(PixMapHandle pixels);
Ptr GetPixBaseAddr(PixMapHandle pixels);
SInt32 GetPixRowBytes(PixMapHandle pixels);
SInt16 GetPixDepth(PixMapHandle pixels);

/* An empty region, and its end. Fails: nil without memory; nil and unknown handles are ignored. */
RgnHandle NewRgn(void);
void DisposeRgn(RgnHandle region);

/* Makes a region the pixels of a bitmap that are 1. Fails: pixMapTooDeepErr for more than one bit a
   pixel, rgnTooBigErr for more edges than a record holds, paramErr, memFullErr; the region is then
   unchanged. */
OSErr BitMapToRegion(RgnHandle region, const BitMap* bits);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_APPLICATIONSERVICES_QUICKDRAW_H */
