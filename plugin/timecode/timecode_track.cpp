// Builds a timecode track as a parameters object describes it.
#include <ApplicationServices/ApplicationServices.h>

#include <bit>
#include <cstring>

#include "host/instance_data.h"
#include "host/memory.h"
#include "host/registration.h"
#include "host/strings.h"
#include "movie/movie.h"
#include "timecode/creation_parameters.h"
#include "timecode/timecode.h"

namespace krz {
namespace {

using Parameters = QTTimeCodeCreationParametersClassData;

constexpr Fixed kNormalRate = 0x10000;
constexpr SInt16 kUsualSize = 12;               // points
constexpr SInt16 kSpace = 2;                    // pixels around a line of text
constexpr OSType kSourceNameType = 0x6E616D65;  // 'name'

/// The height of a line in a font, as a track has heights; the port keeps the font.
Fixed line_height(SInt16 font, SInt16 face, SInt16 size) {
  TextFont(font);
  TextFace(face);
  TextSize(size);
  FontInfo info = {};
  GetFontInfo(&info);
  return FixRatio(static_cast<SInt16>(info.ascent + info.descent + kSpace), 1);
}

TimeCodeDef definition_of(const Parameters& parameters) {
  SInt32 flags = tcCounter;
  if (parameters.use_time_code) {
    flags = (parameters.drop_frames ? tcDropFrame : 0) |
            (parameters.is_negative ? tcNegTimesOK : 0) |
            (parameters.use_24_hours ? tc24HourMax : 0);
  }
  return {.flags = flags,
          .fTimeScale = parameters.time_scale,
          .frameDuration = parameters.frame_duration,
          .numFrames = static_cast<UInt8>(parameters.number_of_frames),
          .padding = 0};
}

TimeCodeRecord record_of(const Parameters& parameters) {
  if (!parameters.use_time_code) return {.c = parameters.counter_start_value};
  const auto sign = parameters.is_negative ? UInt8{tctNegFlag} : UInt8{0};
  return {.t = {.hours = static_cast<UInt8>(parameters.hours),
                .minutes = static_cast<UInt8>(static_cast<UInt8>(parameters.minutes) | sign),
                .seconds = static_cast<UInt8>(parameters.seconds),
                .frames = static_cast<UInt8>(parameters.frames)}};
}

/// Red is what lies above the green, all of it: a colour with more than 24 bits gives another red.
RGBColor color_of(uint32_t color) {
  const auto component = [](uint32_t channel) { return static_cast<UInt16>(channel * 257); };
  return {component(color >> 16), component(color >> 8 & 0xFF), component(color & 0xFF)};
}

TCTextOptions set_display(MediaHandler handler, const Parameters& parameters, SInt16 font) {
  TCTextOptions options = {};
  TCGetDisplayOptions(handler, &options);
  if (parameters.font_face >= 0) options.txFace = static_cast<SInt16>(parameters.font_face);
  if (parameters.font_size >= 0) options.txSize = static_cast<SInt16>(parameters.font_size);
  options.txFont = font;
  options.foreColor = color_of(parameters.font_fore_color);
  options.backColor = color_of(parameters.font_back_color);
  TCSetDisplayOptions(handler, &options);
  return options;
}

/// Puts the name of the source into a description. Whatever fails leaves it out.
OSErr set_source_name(MediaHandler handler, Handle description, ConstStr255Param name) {
  UserData source = nullptr;
  OSErr error = NewUserData(&source);
  if (error != noErr) return error;
  Handle text = nullptr;
  error = PtrToHand(name + 1, &text, name[0]);
  if (error == noErr) error = AddUserDataText(source, text, kSourceNameType, 1, 0);
  if (error == noErr) TCSetSourceRef(handler, description, source);
  if (text) DisposeHandle(text);
  DisposeUserData(source);
  return error;
}

/// The description, in the machine's own order; nil without memory.
Handle new_description(const TimeCodeDef& definition) {
  const Handle handle = NewHandleClear(sizeof(TimeCodeDescription));
  if (!handle) return nullptr;
  TimeCodeDescription description = {};
  description.descSize = sizeof description;
  description.dataFormat = TimeCodeMediaType;
  description.timeCodeDef = definition;
  std::memcpy(*handle, &description, sizeof description);
  return handle;
}

/// The frame that the track begins with, big-endian.
void fill_sample(Handle sample, MediaHandler handler, Handle description, TimeCodeRecord record) {
  TimeCodeDef definition = {};
  std::memcpy(&definition, *description + offsetof(TimeCodeDescription, timeCodeDef),
              sizeof definition);
  SInt32 frame = 0;
  TCTimeCodeToFrameNumber(handler, &definition, &record, &frame);
  auto bytes = std::bit_cast<uint32_t>(frame);
  if constexpr (std::endian::native == std::endian::little) bytes = __builtin_bswap32(bytes);
  std::memcpy(*sample, &bytes, sizeof bytes);
}

struct NewTrack {
  Movie movie;
  Track video;
  Track track;
  Media media;
  MediaHandler handler;
};

/// Shows `duration` of the media and lets the video track refer to it.
OSErr finish(const NewTrack& made, TimeValue duration) {
  OSErr error = EndMediaEdits(made.media);
  if (error == noErr) error = InsertMediaIntoTrack(made.track, 0, 0, duration, kNormalRate);
  if (error == noErr)
    error = AddTrackReference(made.video, made.track, kTrackReferenceTimeCode, nullptr);
  return error;
}

/// One sample for the whole movie. What fails on the way leaves the edits open.
OSErr add_sample(const NewTrack& made, const TimeCodeDef& definition, const TimeCodeRecord& record,
                 ConstStr255Param source_name) {
  // The track is finished as an empty one when its media cannot be edited.
  if (BeginMediaEdits(made.media) != noErr) return finish(made, 0);
  const OwnedHandle description(new_description(definition));
  if (!description) return noErr;
  const OSErr name_error = set_source_name(made.handler, description.get(), source_name);
  const OwnedHandle sample(NewHandle(sizeof(UInt32)));
  if (!sample) return name_error;
  fill_sample(sample.get(), made.handler, description.get(), record);
  const TimeValue duration = GetMovieDuration(made.movie);
  const OSErr error =
      AddMediaSample(made.media, sample.get(), 0, static_cast<UInt32>(GetHandleSize(sample.get())),
                     duration, description.get(), 1, 0, nullptr);
  return error != noErr ? error : finish(made, duration);
}

}  // namespace

int32_t AddTimeCodeToMovie(REALmovieStruct* host_movie, REALobject object) {
  const Movie movie = movie_of(host_movie);
  // Without parameters there is nothing to read; a host that passes nil gets the same answer.
  if (!movie || !object) return -1;
  auto& parameters = instance_data<Parameters>(object, QTTimeCodeCreationParametersClass);
  Str255 source_name;
  Str255 font_name;
  PutSystemString(source_name, parameters.source_name);
  PutSystemString(font_name, parameters.font_name);
  SInt16 font = 0;
  GetFNum(font_name, &font);
  const Fixed least_height = line_height(
      font, parameters.font_face >= 0 ? static_cast<SInt16>(parameters.font_face) : 0,
      parameters.font_size >= 0 ? static_cast<SInt16>(parameters.font_size) : kUsualSize);

  const Track video = GetMovieIndTrackType(movie, 1, VideoMediaType, movieTrackMediaType);
  if (!video) return trackNotInMovie;
  Fixed width = 0;
  Fixed height = 0;
  GetTrackDimensions(video, &width, &height);
  // A height in whole pixels is below any in 16.16, and is raised.
  if (parameters.height < least_height) parameters.height = least_height;

  NewTrack made = {
      .movie = movie, .video = video, .track = nullptr, .media = nullptr, .handler = nullptr};
  made.track = NewMovieTrack(movie, width, parameters.height, 0);
  if (!made.track) return noErr;
  made.media = NewTrackMedia(made.track, TimeCodeMediaType, GetMovieTimeScale(movie), nullptr, 0);
  if (!made.media) return noErr;
  made.handler = GetMediaHandler(made.media);
  if (!made.handler) return noErr;

  TimeCodeDef definition = definition_of(parameters);
  TimeCodeRecord record = record_of(parameters);
  const TCTextOptions options = set_display(made.handler, parameters, font);
  Str255 text;
  TCTimeCodeToString(made.handler, &definition, &record, text);
  SetTrackDimensions(made.track, width,
                     line_height(options.txFont, options.txFace, options.txSize));

  MatrixRecord matrix = {};
  GetTrackMatrix(made.track, &matrix);
  if (parameters.display_below_video) TranslateMatrix(&matrix, 0, height);
  SetTrackMatrix(made.track, &matrix);
  SetTrackEnabled(made.track, parameters.display_time_code != 0);
  TCSetTimeCodeFlags(made.handler, parameters.display_time_code ? tcdfShowTimeCode : 0,
                     tcdfShowTimeCode);
  return add_sample(made, definition, record, source_name);
}

}  // namespace krz
