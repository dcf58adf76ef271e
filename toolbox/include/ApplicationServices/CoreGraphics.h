/* Bitmap contexts: pixels that are drawn on, and images made of them.

   References are tokens below 2^32; nil and stale ones are answered with nil, 0 or nothing.
   Coordinates run upward from the bottom left corner, one unit a pixel; rows lie in memory from the
   top one down. */
#ifndef KRZ_APPLICATIONSERVICES_COREGRAPHICS_H
#define KRZ_APPLICATIONSERVICES_COREGRAPHICS_H

#include <ApplicationServices/QuickDraw.h>
#include <Carbon/Carbon.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct CGContext* CGContextRef;
typedef struct CGImage* CGImageRef;
typedef struct CGColorSpace*
    CGColorSpaceRef; /* nil: the only one, red, green and blue as they are */
typedef double CGFloat;
typedef UInt32 CGBitmapInfo; /* an alpha info and a byte order, added */

typedef struct CGRect {
  CGFloat x; /* of the bottom left corner */
  CGFloat y;
  CGFloat width;
  CGFloat height;
} CGRect;

/* Where alpha lies in a pixel, and whether colours are multiplied by it. Skipped bytes mean
   nothing. */
typedef UInt32 CGImageAlphaInfo;
enum {
  kCGImageAlphaNone = 0,
  kCGImageAlphaPremultipliedLast = 1,
  kCGImageAlphaPremultipliedFirst = 2,
  kCGImageAlphaLast = 3,
  kCGImageAlphaFirst = 4,
  kCGImageAlphaNoneSkipLast = 5,
  kCGImageAlphaNoneSkipFirst = 6,
  kCGImageAlphaOnly = 7
};
enum {
  kCGBitmapAlphaInfoMask = 0x1F,
  kCGBitmapByteOrderMask = 0x7000,
  kCGBitmapByteOrderDefault = 0, /* the components' own order in memory */
  kCGBitmapByteOrder16Little = 0x1000,
  kCGBitmapByteOrder32Little = 0x2000,
  kCGBitmapByteOrder16Big = 0x3000,
  kCGBitmapByteOrder32Big = 0x4000
};

/* A context over pixels, which are the caller's and must live as long as it does; nil for pixels of
   its own, all zero. Sizes in pixels and bytes; 0 bytes a row stand for as many as needed.
   Pixels:  8 bits a component: 32 bits with an alpha or skipped byte, 24 with kCGImageAlphaNone, 8
            with kCGImageAlphaOnly. 5 bits a component with kCGImageAlphaNoneSkipFirst: 16.
   Owns:    the caller the context, until CGContextRelease.
   Fails:   nil for other pixels, for sizes that are not 1 to 32767, short rows, and without
            memory. */
CGContextRef CGBitmapContextCreate(void* pixels, size_t width, size_t height,
                                   size_t bitsPerComponent, size_t bytesPerRow,
                                   CGColorSpaceRef space, CGBitmapInfo info);
void CGContextRelease(CGContextRef context);

void* CGBitmapContextGetData(CGContextRef context);
size_t CGBitmapContextGetWidth(CGContextRef context);
size_t CGBitmapContextGetHeight(CGContextRef context);
size_t CGBitmapContextGetBitsPerPixel(CGContextRef context);
size_t CGBitmapContextGetBytesPerRow(CGContextRef context);
CGImageAlphaInfo CGBitmapContextGetAlphaInfo(CGContextRef context);
CGBitmapInfo CGBitmapContextGetBitmapInfo(CGContextRef context);

/* What a context shows now; the caller's. Fails: nil without memory. */
CGImageRef CGBitmapContextCreateImage(CGContextRef context);
void CGImageRelease(CGImageRef image);

/* Draws an image over what is there, scaled to the rectangle, whose edges are rounded to whole
   pixels: smaller by averaging, larger by interpolation. What lies outside is not drawn. */
void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image);

/* Lend the pixels of a port of depth 16, 24 or 32 to a context, and take them back, which ends the
   context and sets it nil. A port is lent once at a time; it may not be updated or disposed
   meanwhile. Fail: paramErr for other ports and other contexts, memFullErr; a begun context is then
   nil. */
OSStatus QDBeginCGContext(CGrafPtr port, CGContextRef* context);
OSStatus QDEndCGContext(CGrafPtr port, CGContextRef* context);

/* Nothing: drawing is there at once. */
void CGContextFlush(CGContextRef context);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_APPLICATIONSERVICES_COREGRAPHICS_H */
