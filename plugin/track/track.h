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
int32_t rbTrackCreationTime(REALobject object);
int32_t rbTrackModificationTime(REALobject object);
bool rbNextInterestingTime(REALobject object, int32_t* time, int32_t* duration);
bool rbNextInterestingTimeWithRate(REALobject object, int32_t* time, int32_t* duration,
                                   double rate);

// track_display.cpp
int32_t rbTrackVolume(REALobject object);
bool rbTrackEnabled(REALobject object);
int32_t rbTrackWidth(REALobject object);
int32_t rbTrackHeight(REALobject object);
int32_t rbTrackLayer(REALobject object);
void rbGetTrackRawMatrix(REALobject object, int32_t* matrix00, int32_t* matrix01, int32_t* matrix02,
                         int32_t* matrix10, int32_t* matrix11, int32_t* matrix12, int32_t* matrix20,
                         int32_t* matrix21, int32_t* matrix22);

// track_media.cpp
REALstring rbMediaType(REALobject object);
int32_t rbMediaHandle(REALobject object);
int32_t rbMediaHandlerHandle(REALobject object);
int32_t rbMediaSampleCount(REALobject object);
int32_t rbMediaSampleDescriptionCount(REALobject object);
int32_t rbFileCount(REALobject object);
REALmemoryBlockStruct* rbMediaSampleDescriptionRaw(REALobject object, int32_t index);

}  // namespace krz
