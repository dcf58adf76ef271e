// The class "QTTimeCodeKRZ": one time code, how it counts, its frame number and the name of its
// source.
#include "timecode/timecode.h"

#include "host/class_table.h"
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/registration.h"

namespace krz {
namespace {

QTTimeCodeClassData& time_code_data(REALobject object) {
  return instance_data<QTTimeCodeClassData>(object, QTTimeCodeClass);
}

void TimeCodeConstructor(REALobject) {}

/// Also the method "Close": a later destruction finds nothing left to release.
void TimeCodeDestructor(REALobject object) {
  QTTimeCodeClassData& data = time_code_data(object);
  if (!data.source_name) return;
  REALUnlockString(data.source_name);
  data.source_name = nullptr;
}

void set_flag(REALobject object, SInt32 flag, bool on) {
  TimeCodeDef& definition = time_code_data(object).definition;
  definition.flags = on ? definition.flags | flag : definition.flags & ~flag;
}

template <SInt32 Flag>
bool get_flag(REALobject object, intptr_t) {
  return (time_code_data(object).definition.flags & Flag) != 0;
}

template <SInt32 Flag>
void set_flag(REALobject object, intptr_t, bool value) {
  set_flag(object, Flag, value);
}

// A time code is what a counter is not.
bool get_use_time_code(REALobject object, intptr_t) {
  return (time_code_data(object).definition.flags & tcCounter) == 0;
}

void set_use_time_code(REALobject object, intptr_t, bool value) {
  set_flag(object, tcCounter, !value);
}

/// The raw masked value, not 1: any byte but zero is true to the host.
Boolean get_is_negative(REALobject object, intptr_t) {
  return static_cast<Boolean>(time_code_data(object).definition.flags & tcNegTimesOK);
}

void set_is_negative(REALobject object, intptr_t, Boolean value) {
  set_flag(object, tcNegTimesOK, value != 0);
}

int32_t get_number_of_frames(REALobject object, intptr_t) {
  return time_code_data(object).definition.numFrames;
}

void set_number_of_frames(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).definition.numFrames = static_cast<uint8_t>(value);
}

int32_t get_flags(REALobject object, intptr_t) { return time_code_data(object).definition.flags; }

void set_flags(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).definition.flags = value;
}

int32_t get_time_scale(REALobject object, intptr_t) {
  return time_code_data(object).definition.fTimeScale;
}

void set_time_scale(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).definition.fTimeScale = value;
}

int32_t get_frame_duration(REALobject object, intptr_t) {
  return time_code_data(object).definition.frameDuration;
}

void set_frame_duration(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).definition.frameDuration = value;
}

// The counter and the four parts of a time code are the same bytes.
int32_t get_counter(REALobject object, intptr_t) { return time_code_data(object).record.c; }

void set_counter(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).record.c = value;
}

template <UInt8 TimeCodeTime::*part>
int32_t get_part(REALobject object, intptr_t) {
  return time_code_data(object).record.t.*part;
}

template <UInt8 TimeCodeTime::*part>
void set_part(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).record.t.*part = static_cast<UInt8>(value);
}

PropertyEntry time_code_properties[] = {
    PROPERTY(get_use_time_code, set_use_time_code, "UseTimeCode", "Boolean"),
    PROPERTY(get_flag<tcDropFrame>, set_flag<tcDropFrame>, "DropFrames", "Boolean"),
    PROPERTY(get_is_negative, set_is_negative, "IsNeg", "Boolean"),
    PROPERTY(get_flag<tc24HourMax>, set_flag<tc24HourMax>, "Use24Hours", "Boolean"),
    PROPERTY(get_number_of_frames, set_number_of_frames, "NumberOfFrames", "Integer"),
    PROPERTY(get_flags, set_flags, "Flags", "Integer"),
    PROPERTY(get_time_scale, set_time_scale, "TimeScale", "Integer"),
    PROPERTY(get_frame_duration, set_frame_duration, "FrameDuration", "Integer"),
    PROPERTY(get_counter, set_counter, "Counter", "Integer"),
    PROPERTY(get_part<&TimeCodeTime::hours>, set_part<&TimeCodeTime::hours>, "Hours", "Integer"),
    PROPERTY(get_part<&TimeCodeTime::minutes>, set_part<&TimeCodeTime::minutes>, "Minutes",
             "Integer"),
    PROPERTY(get_part<&TimeCodeTime::seconds>, set_part<&TimeCodeTime::seconds>, "Seconds",
             "Integer"),
    PROPERTY(get_part<&TimeCodeTime::frames>, set_part<&TimeCodeTime::frames>, "Frames", "Integer"),
    DIRECT_FIELD(QTTimeCodeClassData, source_name, "SourceName", "String"),
    DIRECT_FIELD(QTTimeCodeClassData, frame_number, "FrameNumber", "Integer"),
};

MethodEntry time_code_methods[] = {
    METHOD(TimeCodeDestructor, "Close"),
};

}  // namespace

REALclassDefinition QTTimeCodeClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTTimeCodeKRZ",
    .data_size = sizeof(QTTimeCodeClassData),
    .constructor = HOST_FUNCTION(TimeCodeConstructor),
    .destructor = HOST_FUNCTION(TimeCodeDestructor),
    .properties = time_code_properties,
    .property_count = std::size(time_code_properties),
    .methods = time_code_methods,
    .method_count = std::size(time_code_methods),
};

}  // namespace krz
