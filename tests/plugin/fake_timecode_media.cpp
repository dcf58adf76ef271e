// The toolbox calls behind timecode tracks, scripted.
#include <cstring>

#include "plugin/fake_calls.h"

using namespace fake_toolbox;

namespace {

std::string bytes_of(Handle handle) {
  return {*handle, static_cast<size_t>(GetHandleSize(handle))};
}

ComponentResult give(const char* name, MediaHandler handler, int64_t time, SInt32* frame,
                     TimeCodeDef* definition, TimeCodeRecord* record, UserData* source) {
  const auto error = static_cast<ComponentResult>(answer(name, handler, time, frame != nullptr,
                                                         definition != nullptr, record != nullptr,
                                                         source != nullptr));
  if (error != noErr) return error;
  if (frame) *frame = static_cast<SInt32>(toolbox().answers["frame"]);
  if (definition) *definition = toolbox().time_code_definition;
  if (record) *record = toolbox().time_code_record;
  if (source) *source = reference<UserData>(toolbox().answers["source"]);
  return noErr;
}

}  // namespace

extern "C" {

OSErr PtrToHand(const void* bytes, Handle* handle, Size size) {
  *handle = NewHandle(0);
  fill_handle(*handle, {static_cast<const char*>(bytes), static_cast<size_t>(size)});
  return static_cast<OSErr>(answer("PtrToHand", size));
}
TimeValue GetMovieDuration(Movie movie) {
  return static_cast<TimeValue>(answer("GetMovieDuration", movie));
}

ComponentResult TCGetTimeCodeAtTime(MediaHandler handler, TimeValue time, SInt32* frame,
                                    TimeCodeDef* definition, TimeCodeRecord* record,
                                    UserData* source) {
  return give("TCGetTimeCodeAtTime", handler, time, frame, definition, record, source);
}
ComponentResult TCGetCurrentTimeCode(MediaHandler handler, SInt32* frame, TimeCodeDef* definition,
                                     TimeCodeRecord* record, UserData* source) {
  return give("TCGetCurrentTimeCode", handler, -1, frame, definition, record, source);
}
ComponentResult TCTimeCodeToFrameNumber(MediaHandler handler, TimeCodeDef* definition,
                                        TimeCodeRecord* record, SInt32* frame) {
  toolbox().time_code_definition = *definition;
  toolbox().time_code_record = *record;
  *frame = static_cast<SInt32>(toolbox().answers["frame"]);
  return static_cast<ComponentResult>(answer("TCTimeCodeToFrameNumber", handler));
}
ComponentResult TCFrameNumberToTimeCode(MediaHandler handler, SInt32 frame, TimeCodeDef*,
                                        TimeCodeRecord* record) {
  *record = toolbox().time_code_record;
  return static_cast<ComponentResult>(answer("TCFrameNumberToTimeCode", handler, frame));
}
ComponentResult TCTimeCodeToString(MediaHandler handler, TimeCodeDef*, TimeCodeRecord*,
                                   Str255 out) {
  std::memcpy(out, "\x08time\x8E code", 9);
  return static_cast<ComponentResult>(answer("TCTimeCodeToString", handler));
}
ComponentResult TCSetSourceRef(MediaHandler handler, Handle description, UserData list) {
  return static_cast<ComponentResult>(
      answer("TCSetSourceRef", handler, GetHandleSize(description), list));
}
ComponentResult TCSetTimeCodeFlags(MediaHandler handler, SInt32 flags, SInt32 mask) {
  return static_cast<ComponentResult>(answer("TCSetTimeCodeFlags", handler, flags, mask));
}
ComponentResult TCGetTimeCodeFlags(MediaHandler handler, SInt32* flags) {
  *flags = static_cast<SInt32>(toolbox().answers["flags"]);
  return static_cast<ComponentResult>(answer("TCGetTimeCodeFlags", handler));
}
ComponentResult TCSetDisplayOptions(MediaHandler handler, const TCTextOptions* options) {
  toolbox().display_options = *options;
  return static_cast<ComponentResult>(answer("TCSetDisplayOptions", handler));
}
ComponentResult TCGetDisplayOptions(MediaHandler handler, TCTextOptions* options) {
  *options = toolbox().display_options;
  return static_cast<ComponentResult>(answer("TCGetDisplayOptions", handler));
}

OSErr AddMediaSample(Media media, Handle data, SInt32 offset, UInt32 size, TimeValue duration,
                     Handle description, SInt32 count, SInt16 flags, TimeValue* time) {
  toolbox().added_sample = bytes_of(data);
  toolbox().added_description = bytes_of(description);
  return static_cast<OSErr>(answer("AddMediaSample", media, offset, size, duration, count, flags,
                                   static_cast<const void*>(time)));
}

}  // extern "C"
