/* Channel layouts of sound: which channel is which loudspeaker. */
#ifndef KRZ_COREAUDIO_COREAUDIOTYPES_H
#define KRZ_COREAUDIO_COREAUDIOTYPES_H

#include <stdint.h>

typedef struct AudioChannelDescription {
  uint32_t mChannelLabel; /* which loudspeaker: 1 left, 2 right, 3 centre and so on */
  uint32_t mChannelFlags; /* whether the coordinates count, and what they are */
  float mCoordinates[3];  /* where it stands: degrees and metres, or metres along three axes */
} AudioChannelDescription;

/* Variable length: the descriptions stand 20 bytes apart, from byte 12. */
typedef struct AudioChannelLayout {
  uint32_t mChannelLayoutTag; /* a known layout; 0: the descriptions say it, 0x10000: the bitmap */
  uint32_t mChannelBitmap;    /* a bit for each loudspeaker */
  uint32_t mNumberChannelDescriptions;
  AudioChannelDescription mChannelDescriptions[1];
} AudioChannelLayout;

#endif /* KRZ_COREAUDIO_COREAUDIOTYPES_H */
