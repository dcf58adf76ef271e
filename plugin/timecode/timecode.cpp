// The class "QTTimeCodeKRZ": one time code, how it counts, its frame number and the name of its
// source.
#include "timecode/timecode.h"

#include <cstring>

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

void set_flag(REALobject object, uint32_t flag, bool on) {
  uint32_t flags = time_code_data(object).definition.flags;
  flags = on ? flags | flag : flags & ~flag;
  time_code_data(object).definition.flags = flags;
}

template <uint32_t Flag>
bool get_flag(REALobject object, intptr_t) {
  return (time_code_data(object).definition.flags & Flag) != 0;
}

template <uint32_t Flag>
void set_flag(REALobject object, intptr_t, bool value) {
  set_flag(object, Flag, value);
}

// A time code is what a counter is not.
bool get_use_time_code(REALobject object, intptr_t) {
  return (time_code_data(object).definition.flags & kTimeCodeCounter) == 0;
}

void set_use_time_code(REALobject object, intptr_t, bool value) {
  set_flag(object, kTimeCodeCounter, !value);
}

/// The raw masked value, not 1: any byte but zero is true to the host.
Boolean get_is_negative(REALobject object, intptr_t) {
  return static_cast<Boolean>(time_code_data(object).definition.flags & kTimeCodeNegativeOK);
}

void set_is_negative(REALobject object, intptr_t, Boolean value) {
  set_flag(object, kTimeCodeNegativeOK, value != 0);
}

int32_t get_number_of_frames(REALobject object, intptr_t) {
  return time_code_data(object).definition.frames;
}

void set_number_of_frames(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).definition.frames = static_cast<uint8_t>(value);
}

int32_t get_flags(REALobject object, intptr_t) {
  return static_cast<int32_t>(time_code_data(object).definition.flags);
}

void set_flags(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).definition.flags = static_cast<uint32_t>(value);
}

int32_t get_time_scale(REALobject object, intptr_t) {
  return time_code_data(object).definition.time_scale;
}

void set_time_scale(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).definition.time_scale = value;
}

int32_t get_frame_duration(REALobject object, intptr_t) {
  return time_code_data(object).definition.frame_duration;
}

void set_frame_duration(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).definition.frame_duration = value;
}

// The counter and the four parts of a time code are the same bytes.
int32_t get_counter(REALobject object, intptr_t) {
  int32_t counter;
  std::memcpy(&counter, time_code_data(object).record.bytes, sizeof counter);
  return counter;
}

void set_counter(REALobject object, intptr_t, int32_t value) {
  std::memcpy(time_code_data(object).record.bytes, &value, sizeof value);
}

enum Part : int { kHours, kMinutes, kSeconds, kFrames };

template <Part part>
int32_t get_part(REALobject object, intptr_t) {
  return time_code_data(object).record.bytes[part];
}

template <Part part>
void set_part(REALobject object, intptr_t, int32_t value) {
  time_code_data(object).record.bytes[part] = static_cast<uint8_t>(value);
}

PropertyEntry time_code_properties[] = {
    PROPERTY(get_use_time_code, set_use_time_code, "UseTimeCode", "Boolean"),
    PROPERTY(get_flag<kTimeCodeDropFrame>, set_flag<kTimeCodeDropFrame>, "DropFrames", "Boolean"),
    PROPERTY(get_is_negative, set_is_negative, "IsNeg", "Boolean"),
    PROPERTY(get_flag<kTimeCode24Hours>, set_flag<kTimeCode24Hours>, "Use24Hours", "Boolean"),
    PROPERTY(get_number_of_frames, set_number_of_frames, "NumberOfFrames", "Integer"),
    PROPERTY(get_flags, set_flags, "Flags", "Integer"),
    PROPERTY(get_time_scale, set_time_scale, "TimeScale", "Integer"),
    PROPERTY(get_frame_duration, set_frame_duration, "FrameDuration", "Integer"),
    PROPERTY(get_counter, set_counter, "Counter", "Integer"),
    PROPERTY(get_part<kHours>, set_part<kHours>, "Hours", "Integer"),
    PROPERTY(get_part<kMinutes>, set_part<kMinutes>, "Minutes", "Integer"),
    PROPERTY(get_part<kSeconds>, set_part<kSeconds>, "Seconds", "Integer"),
    PROPERTY(get_part<kFrames>, set_part<kFrames>, "Frames", "Integer"),
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
