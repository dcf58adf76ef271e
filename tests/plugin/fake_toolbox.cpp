#include "plugin/fake_toolbox.h"

#include <dlfcn.h>

using namespace fake_toolbox;

namespace {

/// Calls the function of that name in the library behind this program, unless the test answers.
template <class Result, class... Parameters>
Result pass(const char* name, Result (*)(Parameters...),
            std::type_identity_t<Parameters>... arguments) {
  const auto answer = toolbox().answers.find(name);
  if (answer != toolbox().answers.end()) {
    if constexpr (std::is_pointer_v<Result>) {
      return reference<Result>(answer->second);
    } else if constexpr (!std::is_void_v<Result>) {
      return static_cast<Result>(answer->second);
    }
  }
  return reinterpret_cast<Result (*)(Parameters...)>(dlsym(RTLD_NEXT, name))(arguments...);
}

template <class Pointer>
std::string color(Pointer given) {
  return given ? text(given->red) + "/" + text(given->green) + "/" + text(given->blue) : "nil";
}

}  // namespace

#define PASS(name, ...) pass(#name, &::name __VA_OPT__(, ) __VA_ARGS__)
#define WRITE_DOWN_AND_PASS(name, ...) (write_down(#name, __VA_ARGS__), PASS(name, __VA_ARGS__))

extern "C" {

OSErr GetMoviesError() { return PASS(GetMoviesError); }
Boolean GetTrackEnabled(Track track) { return PASS(GetTrackEnabled, track); }
void SetTrackEnabled(Track track, Boolean enabled) {
  WRITE_DOWN_AND_PASS(SetTrackEnabled, track, enabled);
}
Media GetTrackMedia(Track track) { return WRITE_DOWN_AND_PASS(GetTrackMedia, track); }
MediaHandler GetMediaHandler(Media media) { return WRITE_DOWN_AND_PASS(GetMediaHandler, media); }
Track GetMovieIndTrackType(Movie movie, SInt32 index, OSType type, SInt32 flags) {
  return WRITE_DOWN_AND_PASS(GetMovieIndTrackType, movie, index, type, flags);
}
OSStatus QTGetMovieProperty(Movie movie, OSType kind, OSType id, ByteCount size, void* value,
                            ByteCount* used) {
  return PASS(QTGetMovieProperty, movie, kind, id, size, value, used);
}

void HLock(Handle handle) {
  ++toolbox().locks;
  PASS(HLock, handle);
}
void HUnlock(Handle handle) {
  --toolbox().locks;
  PASS(HUnlock, handle);
}

Track NewMovieTrack(Movie movie, Fixed width, Fixed height, SInt16 volume) {
  return WRITE_DOWN_AND_PASS(NewMovieTrack, movie, width, height, volume);
}
Media NewTrackMedia(Track track, OSType type, TimeScale scale, Handle data, OSType data_type) {
  return WRITE_DOWN_AND_PASS(NewTrackMedia, track, type, scale, data, data_type);
}
OSErr BeginMediaEdits(Media media) { return WRITE_DOWN_AND_PASS(BeginMediaEdits, media); }
OSErr EndMediaEdits(Media media) { return WRITE_DOWN_AND_PASS(EndMediaEdits, media); }
OSErr AddMediaSample(Media media, Handle data, SInt32 offset, UInt32 size, TimeValue duration,
                     Handle description, SInt32 count, SInt16 flags, TimeValue* time) {
  return WRITE_DOWN_AND_PASS(AddMediaSample, media, data, offset, size, duration, description,
                             count, flags, time);
}
OSErr InsertMediaIntoTrack(Track track, TimeValue start, TimeValue media_time, TimeValue duration,
                           Fixed rate) {
  return WRITE_DOWN_AND_PASS(InsertMediaIntoTrack, track, start, media_time, duration, rate);
}
OSErr AddTrackReference(Track track, Track other, OSType type, SInt32* index) {
  return WRITE_DOWN_AND_PASS(AddTrackReference, track, other, type, index);
}
OSErr AddUserDataText(UserData list, Handle bytes, OSType type, SInt32 index, SInt16 region) {
  return PASS(AddUserDataText, list, bytes, type, index, region);
}

OSErr GetMediaSample(Media media, Handle data, SInt32 limit, SInt32* size, TimeValue time,
                     TimeValue* sample_time, TimeValue* duration, Handle description,
                     SInt32* description_index, SInt32 most, SInt32* count, SInt16* flags) {
  if (toolbox().sample.empty()) {
    return PASS(GetMediaSample, media, data, limit, size, time, sample_time, duration, description,
                description_index, most, count, flags);
  }
  SetHandleSize(data, static_cast<Size>(toolbox().sample.size()));
  std::copy(toolbox().sample.begin(), toolbox().sample.end(), *data);
  return noErr;
}

ComponentResult TextMediaAddTextSample(MediaHandler handler, Ptr bytes, UInt32 size, SInt16 font,
                                       SInt16 font_size, Style face, const RGBColor* text_color,
                                       const RGBColor* back_color, SInt16 justification,
                                       const Rect* box, SInt32 flags, TimeValue delay, SInt16 start,
                                       SInt16 end, const RGBColor* highlight, TimeValue duration,
                                       TimeValue* time) {
  write_down("TextMediaAddTextSample", font, font_size, face, justification, flags, delay, start,
             end, duration);
  toolbox().look = "text " + color(text_color) + ", back " + color(back_color) + ", highlight " +
                   color(highlight) + ", box " + text(box->top) + " " + text(box->left) + " " +
                   text(box->bottom) + " " + text(box->right);
  return PASS(TextMediaAddTextSample, handler, bytes, size, font, font_size, face, text_color,
              back_color, justification, box, flags, delay, start, end, highlight, duration, time);
}

ComponentResult TCTimeCodeToFrameNumber(MediaHandler handler, TimeCodeDef* definition,
                                        TimeCodeRecord* record, SInt32* frame) {
  toolbox().time_code_definition = *definition;
  toolbox().time_code_record = *record;
  return PASS(TCTimeCodeToFrameNumber, handler, definition, record, frame);
}
ComponentResult TCSetDisplayOptions(MediaHandler handler, const TCTextOptions* options) {
  toolbox().display_options = *options;
  return PASS(TCSetDisplayOptions, handler, options);
}

OSStatus QTMetaDataGetPropertyInfo(QTMetaDataRef metadata, OSType kind, OSType id, OSType* type,
                                   ByteCount* size, UInt32* flags) {
  write_down("QTMetaDataGetPropertyInfo", kind, id);
  return PASS(QTMetaDataGetPropertyInfo, metadata, kind, id, type, size, flags);
}
OSStatus QTMetaDataGetProperty(QTMetaDataRef metadata, OSType kind, OSType id, ByteCount size,
                               void* value, ByteCount* used) {
  write_down("QTMetaDataGetProperty", kind, id, size);
  return PASS(QTMetaDataGetProperty, metadata, kind, id, size, value, used);
}

}  // extern "C"
