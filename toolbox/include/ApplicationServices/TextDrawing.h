/* Text as coverage: what hosts draw strings with on pixels of their own.

   As QuickDraw's, these calls live in "ApplicationServices.framework" and are found by name at run
   time. */
#ifndef KRZ_APPLICATIONSERVICES_TEXTDRAWING_H
#define KRZ_APPLICATIONSERVICES_TEXTDRAWING_H

#include <Carbon/Carbon.h>

#ifdef __cplusplus
extern "C" {
#endif

/* How a text looks. */
typedef struct ToolboxTextStyle {
  const char* family; /* UTF-8; nil or "" is the application font */
  SInt32 size;        /* pixels; below 1 is 1, above 1000 is 1000 */
  Boolean bold;
} ToolboxTextStyle;

/* Coverage of one glyph, 0 to 255 a pixel. Its upper left pixel lies `left` to the right of where
   the text began and `top` below the line that it stands on (mostly above: negative). */
typedef struct ToolboxGlyph {
  SInt32 left;
  SInt32 top;
  SInt32 width;
  SInt32 height;
  SInt32 bytesPerRow;
  const UInt8* coverage; /* ends with the call that it was handed to */
} ToolboxGlyph;

typedef void (*ToolboxGlyphProc)(const ToolboxGlyph* glyph, void* context);

/* Hands over the glyphs of a text in UTF-8, from left to right; characters that the font lacks come
   from others. The first 4096 characters are drawn. Without a proc it only measures.
   Answers: how far the text moves on, in pixels; 0 when no font is installed. */
double ToolboxDrawText(const char* text, size_t length, const ToolboxTextStyle* style,
                       ToolboxGlyphProc proc, void* context);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_APPLICATIONSERVICES_TEXTDRAWING_H */
