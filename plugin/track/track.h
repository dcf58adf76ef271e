// Track objects: their data, how they are made, and the functions behind the rows of their class.
#pragma once

#include <QuickTime/QuickTime.h>
#include <krz/abi.h>

#include "track/track_data.h"

namespace krz {

/// The data of a "QTTrackKRZ" or an object of a subclass.
QTTrackClassData& track_data(REALobject object);

/// A new "QTTrackKRZ" that keeps `movie` locked while it lives; nil for a nil track or without
/// memory.
REALobject MakeTrackObject(Track track, REALmovieStruct* movie);

/// The track's media and its handler; nil when there is no track.
Media getTrackMedia(const QTTrackClassData& data);
Media RBGetTrackMedia(REALobject object);
MediaHandler getMediaHandler(const QTTrackClassData& data);
MediaHandler RBGetMediaHandler(REALobject object);

// Rows of the class, by what they are about. Times are in the movie's time scale.

// track_times.cpp
int32_t rbTrackDuration(REALobject object);
int32_t rbTrackOffset(REALobject object);
void rbSetTrackOffset(REALobject object, int32_t value);
int32_t rbTrackCreationTime(REALobject object);
int32_t rbTrackModificationTime(REALobject object);
bool rbNextInterestingTime(REALobject object, int32_t* time, int32_t* duration);
bool rbNextInterestingTimeWithRate(REALobject object, int32_t* time, int32_t* duration,
                                   double rate);

// track_display.cpp
int32_t rbTrackVolume(REALobject object);
void rbSetTrackVolume(REALobject object, int32_t value);
bool rbTrackEnabled(REALobject object);
void rbSetTrackEnabled(REALobject object, bool value);
void rbSetTrackDimensions(REALobject object, double width, double height);
int32_t rbTrackWidth(REALobject object);
int32_t rbTrackHeight(REALobject object);
int32_t rbTrackLayer(REALobject object);
void rbSetTrackLayer(REALobject object, int32_t value);
void rbSetTrackMatrix(REALobject object, int32_t x, int32_t y, int32_t w, int32_t h);
void rbSetTrackRawMatrix(REALobject object, int32_t matrix00, int32_t matrix01, int32_t matrix02,
                         int32_t matrix10, int32_t matrix11, int32_t matrix12, int32_t matrix20,
                         int32_t matrix21, int32_t matrix22);
void rbGetTrackRawMatrix(REALobject object, int32_t* matrix00, int32_t* matrix01, int32_t* matrix02,
                         int32_t* matrix10, int32_t* matrix11, int32_t* matrix12, int32_t* matrix20,
                         int32_t* matrix21, int32_t* matrix22);

// track_segments.cpp
void rbScaleTrackSegment(REALobject object, int32_t startTime, int32_t oldDuration,
                         int32_t newDuration);
void rbInsertTrackSegment(REALobject object, REALobject dest, int32_t srcIn, int32_t srcDuration,
                          int32_t dstIn);
void rbInsertEmptyTrackSegment(REALobject object, int32_t time, int32_t duration);
void rbDeleteTrackSegment(REALobject object, int32_t time, int32_t duration);
REALobject rbAddClonedTrackToMovie(REALobject object, REALmovieStruct* dest, int32_t flags);
void rbDeleteTrackReference(REALobject object, REALstring type, int32_t index);

// track_audio.cpp
REALobject rbAudioChannelLayout(REALobject object);
void rbSetAudioChannelLayout(REALobject object, REALobject value);

// track_sound.cpp
int32_t rbSoundBalance(REALobject object);
void rbSetSoundBalance(REALobject object, int32_t value);
int32_t rbSoundEffectiveBalance(REALobject object);
int32_t rbSoundEffectiveVolume(REALobject object);
int32_t rbSoundOutputComponent(REALobject object);
void rbSetSoundOutputComponent(REALobject object, int32_t value);
int32_t rbSoundBass(REALobject object);
void rbSetSoundBass(REALobject object, int32_t value);
int32_t rbSoundTreble(REALobject object);
void rbSetSoundTreble(REALobject object, int32_t value);

// track_levels.cpp
int32_t rbSoundSetEqualizerBands(REALobject object, int32_t count, REALmemoryBlockStruct* values);
int32_t rbSoundSetDefaultEqualizerBands(REALobject object);
REALmemoryBlockStruct* rbSoundGetEqualizerBandLevels(REALobject object, int32_t count);
void rbSoundLevelMeterInfo(REALobject object, int32_t* numChannels, int32_t* leftMeter,
                           int32_t* rightMeter);
bool rbSoundLevelMeteringEnabled(REALobject object);
void rbSetSoundLevelMeteringEnabled(REALobject object, bool value);

// track_graphics.cpp
void rbMediaSetGraphicsMode(REALobject object, int32_t Mode, uint32_t TheColor);
void rbMediaGetGraphicsMode(REALobject object, int32_t* Mode, uint32_t* TheColor);

// track_apertures.cpp
int32_t rbGenerateTrackApertureModeDimensions(REALobject object);
int32_t rbRemoveTrackApertureModeDimensions(REALobject object);
int32_t rbSetTrackApertureModeDimensionsUsingSampleDescription(REALobject object);

// track_media.cpp
void rbDisposeTrackMedia(REALobject object);
REALstring rbMediaType(REALobject object);
int32_t rbMediaHandle(REALobject object);
int32_t rbMediaHandlerHandle(REALobject object);
int32_t rbMediaSampleCount(REALobject object);
int32_t rbMediaSampleDescriptionCount(REALobject object);
int32_t rbFileCount(REALobject object);
REALfolderItemStruct* rbFile(REALobject object, int32_t index);
int32_t rbSetFile(REALobject object, int32_t index, REALfolderItemStruct* file);
REALmemoryBlockStruct* rbMediaSampleDescriptionRaw(REALobject object, int32_t index);

// track_descriptions.cpp: objects of the classes in sample_description.h, nil and "Lasterror" on
// failure.
REALobject rbMediaVideoSampleDescription(REALobject object, int32_t index);
REALobject rbMediaSoundSampleDescription(REALobject object, int32_t index);
REALobject rbMediaSpriteSampleDescription(REALobject object, int32_t index);
REALobject rbMediaTextSampleDescription(REALobject object, int32_t index);
REALobject rbMediaMusicSampleDescription(REALobject object, int32_t index);
REALobject rbMediaThreeDeeSampleDescription(REALobject object, int32_t index);
REALobject rbMediaFlashSampleDescription(REALobject object, int32_t index);
REALobject rbMediaSampleDescription(REALobject object, int32_t index);

// track_samples.cpp
bool rbGetMediaSample(REALobject object, REALmemoryBlockStruct** data, int32_t* time,
                      int32_t* durationPerSample, REALmemoryBlockStruct** description,
                      int32_t* sampleDescriptionIndex, int32_t maxNumberOfSample,
                      int32_t* numberOfSamples, int32_t* flags);
void rbBeginMediaEdits(REALobject object);
void rbEndMediaEdits(REALobject object);

}  // namespace krz
