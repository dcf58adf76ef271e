/* Umbrella of the movie toolbox. */
#ifndef KRZ_QUICKTIME_QUICKTIME_H
#define KRZ_QUICKTIME_QUICKTIME_H

#include <Carbon/Carbon.h>
#include <CoreAudio/CoreAudioTypes.h>
#include <QuickTime/MediaHandlers.h>
#include <QuickTime/MetaData.h>
#include <QuickTime/Movies.h>
#include <QuickTime/UserData.h>

#endif /* KRZ_QUICKTIME_QUICKTIME_H */
