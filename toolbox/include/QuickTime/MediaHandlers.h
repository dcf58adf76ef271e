/* Calls of media handlers, which only media of their type answer.

   Results are 32 bits wide: badComponentInstance for a nil or stale handler, badComponentSelector
   for a handler of another type, else the codes of Carbon/MacErrors.h. GetMoviesError() answers the
   low 16 bits. */
#ifndef KRZ_QUICKTIME_MEDIAHANDLERS_H
#define KRZ_QUICKTIME_MEDIAHANDLERS_H

#include <QuickTime/Movies.h>
#include <QuickTime/UserData.h>

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

/* Keeps an extension for the next sample that is added, which forgets it. `data` is in the
   machine's own order. Fails: paramErr for no data or another type of it. */
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

/* Timecode. */

/* Flags of a definition. With tcCounter the others say nothing. */
enum { tcDropFrame = 1, tc24HourMax = 2, tcNegTimesOK = 4, tcCounter = 8 };

/* In the minutes of a record: the time code is negative. */
enum { tctNegFlag = 0x80 };

/* Flag of a timecode media. */
enum { tcdfShowTimeCode = 1 };

#pragma pack(push, 2)

/* How time codes count. */
typedef struct TimeCodeDef {
  SInt32 flags;
  TimeScale fTimeScale;    /* units a second */
  TimeValue frameDuration; /* in these units */
  UInt8 numFrames;         /* a second, as time codes count them: 30 at 29.97 */
  UInt8 padding;
} TimeCodeDef;

typedef struct TimeCodeTime {
  UInt8 hours;
  UInt8 minutes; /* tctNegFlag included */
  UInt8 seconds;
  UInt8 frames;
} TimeCodeTime;

/* A time code, or a counter in its place. */
typedef union TimeCodeRecord {
  TimeCodeTime t;
  SInt32 c;
} TimeCodeRecord;

/* How the time code is drawn. */
typedef struct TCTextOptions {
  SInt16 txFont;
  SInt16 txFace;
  SInt16 txSize; /* points */
  SInt16 pad;
  RGBColor foreColor;
  RGBColor backColor;
} TCTextOptions;

/* The beginning of a timecode description, in the machine's own order as callers build it. The
   items of the source reference stand behind it. */
typedef struct TimeCodeDescription {
  SInt32 descSize;
  SInt32 dataFormat; /* 'tmcd' */
  SInt32 resvd1;
  SInt16 resvd2;
  SInt16 dataRefIndex;
  SInt32 flags;
  TimeCodeDef timeCodeDef;
  SInt32 srcRef;
} TimeCodeDescription;

#pragma pack(pop)

/* The time code at a media time, or at the movie's current time. Any output may be null.
   `srcRefH` gets a new list of user data, empty when the media names no source.
   Owns:  the caller disposes the list.
   Fail: timeNotInMedia, for the movie's current time also invalidTime where the track shows
   nothing; paramErr for a definition that cannot be counted with, invalidSampleDescription,
   invalidSampleTable for a sample of another size than 4 or 8 bytes, and as reading a sample. */
ComponentResult TCGetTimeCodeAtTime(MediaHandler mh, TimeValue mediaTime, SInt32* frameNum,
                                    TimeCodeDef* tcdef, TimeCodeRecord* tcrec, UserData* srcRefH);
ComponentResult TCGetCurrentTimeCode(MediaHandler mh, SInt32* frameNum, TimeCodeDef* tcdef,
                                     TimeCodeRecord* tcrec, UserData* srcRefH);

/* Time code, frame number and text by a definition, which need not be that of the media. Labels
   that drop-frame counting leaves out are taken as they stand. Negative numbers without
   tcNegTimesOK are as many whole days later as it takes. The text is MacRoman, "01:00:00;02" when
   frames are dropped. Fail: paramErr for 0 frames a second and for arguments that are null. */
ComponentResult TCTimeCodeToFrameNumber(MediaHandler mh, TimeCodeDef* tcdef, TimeCodeRecord* tcrec,
                                        SInt32* frameNumber);
ComponentResult TCFrameNumberToTimeCode(MediaHandler mh, SInt32 frameNumber, TimeCodeDef* tcdef,
                                        TimeCodeRecord* tcrec);
ComponentResult TCTimeCodeToString(MediaHandler mh, TimeCodeDef* tcdef, TimeCodeRecord* tcrec,
                                   Str255 tcStr);

/* Puts a source reference into a description, in place of the one that it has; nil for none. The
   handle grows, its size field, in either byte order, with it.
   Fails: invalidSampleDescription, paramErr, memFullErr. */
ComponentResult TCSetSourceRef(MediaHandler mh, Handle tcdH, UserData srefH);

/* The flags of the media: those in `flagsMask` are set. */
ComponentResult TCSetTimeCodeFlags(MediaHandler mh, SInt32 flags, SInt32 flagsMask);
ComponentResult TCGetTimeCodeFlags(MediaHandler mh, SInt32* flags);

/* How the media is drawn: black on white in the system font at 12 points where nothing says. */
ComponentResult TCSetDisplayOptions(MediaHandler mh, const TCTextOptions* textOptions);
ComponentResult TCGetDisplayOptions(MediaHandler mh, TCTextOptions* textOptions);
/* Sound media. Balance, volume and what stands in the file apart, settings live as long as the
   movie is open. Outputs may be null. All fail: badComponentSelector when the media is no sound. */

/* From -128, all left, over 0 to 128, all right; what lies outside becomes the nearest of these.
   Kept by the next save. */
ComponentResult MediaSetSoundBalance(MediaHandler mh, SInt16 balance);
ComponentResult MediaGetSoundBalance(MediaHandler mh, SInt16* balance);

/* The balance that is heard: the media's own, as movies have none. */
ComponentResult MediaGetEffectiveSoundBalance(MediaHandler mh, SInt16* balance);

/* The volume that is heard, 8.8: that of the track times that of the movie, 0 when either is muted.
 */
ComponentResult MediaGetEffectiveVolume(MediaHandler mh, SInt16* volume);

#pragma pack(push, 2)
/* Centre frequencies of bands in Hz, unsigned 16.16, in the machine's own order. */
typedef struct MediaEQSpectrumBandsRecord {
  SInt16 count;
  UInt32* frequency;
} MediaEQSpectrumBandsRecord;
#pragma pack(pop)

typedef struct LevelMeterInfo {
  SInt16 numChannels; /* at most 2 */
  UInt8 leftMeter;
  UInt8 rightMeter; /* 0 for one channel */
} LevelMeterInfo;

/* Chooses the bands that are measured; the frequencies are copied.
   Fails: paramErr for no record, no frequencies or a count below 1. */
ComponentResult MediaSetSoundEqualizerBands(MediaHandler mh,
                                            MediaEQSpectrumBandsRecord* spectrumInfo);

/* How loud each band is: one byte for each band that was set, in their order, 255 for a sine wave
   of full scale. A band reaches half way, as ears count, to the bands beside it. Measured over
   about a tenth of a second around the movie's current time, of the loudest channel. All 0 while
   metering is off, where the track shows nothing, and for formats that are not decoded (see levels
   below). Fails: as MediaGetSoundLevelMeterInfo. */
ComponentResult MediaGetSoundEqualizerBandLevels(MediaHandler mh, UInt8* bandLevels);

/* Metering is off at first. */
ComponentResult MediaSetSoundLevelMeteringEnabled(MediaHandler mh, Boolean enabled);
ComponentResult MediaGetSoundLevelMeteringEnabled(MediaHandler mh, Boolean* enabled);

/* The channels of the media and the peaks of the first two around the movie's current time, 255 for
   full scale: 20 * log10(level / 255) is the level in dB. Volume and balance are not taken in. All
   0 while metering is off. Decoded are raw, NONE, twos, sowt, in24, in32, fl32, fl64, lpcm, ulaw,
   alaw and ima4; the levels of all others are 0. Fails: endOfDataReached for sound that its file
   does not hold, couldNotResolveDataRef, invalidSampleTable, invalidSampleDescription, ioErr,
   memFullErr. */
ComponentResult MediaGetSoundLevelMeterInfo(MediaHandler mh, LevelMeterInfo* levelInfo);

/* 0 is flat; any value is kept. */
ComponentResult MediaSetSoundBassAndTreble(MediaHandler mh, SInt16 bass, SInt16 treble);
ComponentResult MediaGetSoundBassAndTreble(MediaHandler mh, SInt16* bass, SInt16* treble);

/* Which device plays the sound, a number that nobody here looks at; nil is the system's own. */
ComponentResult MediaSetSoundOutputComponent(MediaHandler mh, Component outputComponent);
ComponentResult MediaGetSoundOutputComponent(MediaHandler mh, Component* outputComponent);

/* How the pictures of a media are drawn over those below, and the colour that some modes need, nil
   for the one it has. Of the mode the low 16 bits are kept. Kept by the next save.
   Fail: badComponentSelector when the media is not to be seen; featureUnsupported when its header
   has no place for it. */
ComponentResult MediaSetGraphicsMode(MediaHandler mh, SInt32 mode, const RGBColor* opColor);
ComponentResult MediaGetGraphicsMode(MediaHandler mh, SInt32* mode, RGBColor* opColor);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_QUICKTIME_MEDIAHANDLERS_H */
