/* Calls of media handlers, which only media of their type answer.

   Results are 32 bits wide: badComponentInstance for a nil or stale handler, badComponentSelector
   for a handler of another type, else the codes of Carbon/MacErrors.h. GetMoviesError() answers the
   low 16 bits. */
#ifndef KRZ_QUICKTIME_MEDIAHANDLERS_H
#define KRZ_QUICKTIME_MEDIAHANDLERS_H

#include <QuickTime/Movies.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef SInt32 ComponentResult;

/* Extensions of the next text sample, for TextMediaSetTextSampleData. */
enum {
  dropShadowOffsetType = 0x6472706F,       /* 'drpo': a Point */
  dropShadowTranslucencyType = 0x64727074, /* 'drpt': SInt16 from 0 to 256 */
  sampleEncodingType = 0x656E6364          /* 'encd': UInt32, a text encoding */
};

/* Keeps an extension for the next sample that is added, which forgets it. `data` is in the machine's
   own order. Fails: paramErr for no data or another type of it. */
ComponentResult TextMediaSetTextSampleData(MediaHandler mh, void* data, OSType dataType);

/* Makes a sample of `size` bytes of text and puts it behind the last one of the media; samples that
   are drawn alike share their description. Colours: nil is black on white, and no colour of the
   highlight. `textBox` nil: the size of the track. The text is highlighted when `hiliteEnd` lies
   behind `hiliteStart`. `duration`, `scrollDelay`: media time. `sampleTime`: where the sample
   begins, media time; may be null.
   Fails: paramErr for a text that is missing or longer than 65535 bytes, invalidDuration, and as
   AddMediaSample; nothing is added then. */
ComponentResult TextMediaAddTextSample(MediaHandler mh, Ptr text, UInt32 size, SInt16 fontNumber,
                                       SInt16 fontSize, Style textFace, const RGBColor* textColor,
                                       const RGBColor* backColor, SInt16 textJustification,
                                       const Rect* textBox, SInt32 displayFlags,
                                       TimeValue scrollDelay, SInt16 hiliteStart, SInt16 hiliteEnd,
                                       const RGBColor* hiliteColor, TimeValue duration,
                                       TimeValue* sampleTime);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_QUICKTIME_MEDIAHANDLERS_H */
