/* Channel layouts of sound: which channel is which loudspeaker. */
#ifndef KRZ_COREAUDIO_COREAUDIOTYPES_H
#define KRZ_COREAUDIO_COREAUDIOTYPES_H

#include <stdint.h>

typedef struct AudioChannelDescription {
  uint32_t mChannelLabel;
  uint32_t mChannelFlags;
  float mCoordinates[3];
} AudioChannelDescription;

/* Variable length: the descriptions stand 20 bytes apart, from byte 12. */
typedef struct AudioChannelLayout {
  uint32_t mChannelLayoutTag;
  uint32_t mChannelBitmap;
  uint32_t mNumberChannelDescriptions;
  AudioChannelDescription mChannelDescriptions[1];
} AudioChannelLayout;

#endif /* KRZ_COREAUDIO_COREAUDIOTYPES_H */
