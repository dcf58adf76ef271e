// The toolbox calls behind text tracks, scripted.
#include "plugin/fake_calls.h"

using namespace fake_toolbox;

namespace {

std::string color(const RGBColor* given) {
  return given ? std::to_string(given->red) + "/" + std::to_string(given->green) + "/" +
                     std::to_string(given->blue)
               : "nil";
}

}  // namespace

extern "C" {

TimeScale GetMovieTimeScale(Movie) {
  return static_cast<TimeScale>(toolbox().answers["movie scale"]);
}
TimeScale GetMediaTimeScale(Media) {
  return static_cast<TimeScale>(toolbox().answers["media scale"]);
}
TimeValue GetMediaDuration(Media media) {
  return static_cast<TimeValue>(answer("GetMediaDuration", media));
}
Movie GetTrackMovie(Track track) { return reference<Movie>(answer("GetTrackMovie", track)); }

Track NewMovieTrack(Movie movie, Fixed width, Fixed height, SInt16 volume) {
  return reference<Track>(answer("NewMovieTrack", movie, width, height, volume));
}
Media NewTrackMedia(Track track, OSType type, TimeScale scale, Handle data, OSType data_type) {
  return reference<Media>(answer("NewTrackMedia", track, type, scale, data, data_type));
}
OSErr InsertMediaIntoTrack(Track track, TimeValue start, TimeValue media_time, TimeValue duration,
                           Fixed rate) {
  return static_cast<OSErr>(
      answer("InsertMediaIntoTrack", track, start, media_time, duration, rate));
}
void DisposeMovieTrack(Track track) {
  answer("DisposeMovieTrack", track);
  toolbox().answers["GetMovieIndTrackType"] = 0;
}

OSErr AddTrackReference(Track track, Track other, OSType type, SInt32*) {
  return static_cast<OSErr>(answer("AddTrackReference", track, other, type));
}
Track GetTrackReference(Track track, OSType type, SInt32 index) {
  return reference<Track>(answer("GetTrackReference", track, type, index));
}
SInt32 GetTrackReferenceCount(Track track, OSType type) {
  return static_cast<SInt32>(answer("GetTrackReferenceCount", track, type));
}
OSType GetNextTrackReferenceType(Track track, OSType type) {
  // One type is all that a track has here.
  const auto only = static_cast<OSType>(answer("GetNextTrackReferenceType", track, type));
  return type == 0 ? only : 0;
}
TimeValue TrackTimeToMediaTime(TimeValue time, Track track) {
  return static_cast<TimeValue>(answer("TrackTimeToMediaTime", time, track));
}

SInt32 Fix2Long(Fixed value) { return (value + 0x8000) >> 16; }
Fixed FixRatio(SInt16 numerator, SInt16 denominator) { return numerator * 0x10000 / denominator; }
void TranslateMatrix(MatrixRecord* matrix, Fixed x, Fixed y) {
  matrix->matrix[2][0] += x;
  matrix->matrix[2][1] += y;
}
void ConvertTimeScale(TimeRecord* time, TimeScale scale) {
  time->value.lo = static_cast<UInt32>(int64_t{time->value.lo} * scale / time->scale);
  time->scale = scale;
}

ComponentResult TextMediaSetTextSampleData(MediaHandler handler, void* data, OSType type) {
  return static_cast<ComponentResult>(
      answer("TextMediaSetTextSampleData", handler, *static_cast<UInt32*>(data), type));
}
ComponentResult TextMediaAddTextSample(MediaHandler handler, Ptr text_bytes, UInt32 size,
                                       SInt16 font, SInt16 font_size, Style face,
                                       const RGBColor* text_color, const RGBColor* back_color,
                                       SInt16 justification, const Rect* box, SInt32 flags,
                                       TimeValue delay, SInt16 start, SInt16 end,
                                       const RGBColor* highlight, TimeValue duration, TimeValue*) {
  toolbox().texts.emplace_back(text_bytes, size);
  toolbox().looks.push_back("text " + color(text_color) + ", back " + color(back_color) +
                            ", highlight " + color(highlight) + ", box " + text(box->top) + " " +
                            text(box->left) + " " + text(box->bottom) + " " + text(box->right));
  return static_cast<ComponentResult>(answer("TextMediaAddTextSample", handler, size, font,
                                             font_size, face, justification, flags, delay, start,
                                             end, duration));
}

}  // extern "C"
