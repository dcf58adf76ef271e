// Functions for time codes beyond what the module's classes say: reading what people write, finding
// a time code in a movie, naming what is wrong with a definition. Tracks are named by their handle,
// as QTTrackKRZ.TrackHandle gives it.
#include <Toolbox/Toolbox.h>

#include "library/parts.h"
#include "object/exceptions.h"
#include "object/string.h"
#include "registry/tables.h"

namespace krz {

namespace {

Track track_of(int32_t handle) {
  return reinterpret_cast<Track>(static_cast<uintptr_t>(static_cast<uint32_t>(handle)));
}

// What was written is wrong, or what it was looked for in.
void raise_failure(OSErr status) {
  raise_exception(status == paramErr ? "InvalidArgumentException" : "IOException",
                  ToolboxErrorDetail(), status);
}

TimeCodeDef definition(int32_t flags, int32_t time_scale, int32_t frame_duration, int32_t frames) {
  return {.flags = flags,
          .fTimeScale = time_scale,
          .frameDuration = frame_duration,
          .numFrames = static_cast<UInt8>(frames),
          .padding = 0};
}

// The time code as QTTimeCodeKRZ.Counter holds it.
int32_t parse(REALstring text, int32_t flags, int32_t frames) {
  const TimeCodeDef counted = definition(flags, 0, 0, frames);
  TimeCodeRecord record = {};
  const OSErr status = ToolboxParseTimeCode(string_utf8(text).c_str(), &counted, &record);
  if (status != noErr) raise_failure(status);
  return record.c;
}

// A line for each fault.
REALstring faults(int32_t flags, int32_t time_scale, int32_t frame_duration, int32_t frames) {
  const TimeCodeDef checked = definition(flags, time_scale, frame_duration, frames);
  const Handle lines = NewHandle(0);
  const OSErr status = ToolboxCheckTimeCodeDefinition(&checked, lines);
  if (status != noErr) raise_failure(status);
  const REALstring text =
      make_string(std::string_view(*lines, static_cast<size_t>(GetHandleSize(lines))));
  DisposeHandle(lines);
  return text;
}

int32_t find(int32_t track, REALstring text) {
  TimeValue time = -1;
  const OSErr status = ToolboxFindTimeCode(track_of(track), string_utf8(text).c_str(), &time);
  if (status != noErr) raise_failure(status);
  return time;
}

// The media time that a track shows at a time of the movie; -1 where it shows none.
int32_t media_time(int32_t track, int32_t time) {
  return TrackTimeToMediaTime(time, track_of(track));
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(parse,
                 "ParseTimeCode(text as string, flags as integer, numberOfFrames as integer) as "
                 "integer"),
    KRZ_FUNCTION(faults,
                 "TimeCodeFaults(flags as integer, timeScale as integer, frameDuration as integer, "
                 "numberOfFrames as integer) as string"),
    KRZ_FUNCTION(find, "TimeOfTimeCode(trackHandle as integer, text as string) as integer"),
    KRZ_FUNCTION(media_time, "TrackMediaTime(trackHandle as integer, time as integer) as integer"),
};

}  // namespace

void register_movie_timecode(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
