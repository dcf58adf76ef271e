// What movies and tracks have of time codes.
#include "host/encodings.h"
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "host/registration.h"
#include "host/strings.h"
#include "movie/movie.h"
#include "text/text_track.h"
#include "timecode/timecode.h"
#include "track/track.h"

namespace krz {
namespace {

constexpr OSType kSourceNameType = 0x6E616D65;  // 'name'
constexpr Size kLongestName = 1024;

Track first_time_code_track(Movie movie) {
  return GetMovieIndTrackType(movie, 1, TimeCodeMediaType, movieTrackMediaType);
}

QTTimeCodeClassData& time_code_data(REALobject object) {
  return instance_data<QTTimeCodeClassData>(object, QTTimeCodeClass);
}

/// The name of a source; nil for none.
REALstring source_name(UserData source) {
  const OwnedHandle text(NewHandleClear(kLongestName));
  if (!text || GetUserDataText(source, text.get(), kSourceNameType, 1, 0) != noErr) return nullptr;
  return HandleToString(text.get(), kMacRoman);
}

REALobject new_time_code(SInt32 frame, const TimeCodeDef& definition, const TimeCodeRecord& record,
                         REALstring name) {
  const REALobject object = REALnewInstance("QTTimeCodeKRZ");
  if (object) time_code_data(object) = {frame, definition, record, name};
  return object;
}

/// The handler for a conversion of `timecode`; the track's error is -1 from here on.
MediaHandler handler_for(REALobject object, REALobject timecode) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  return timecode ? getMediaHandler(data) : nullptr;
}

/// The first timecode track, its handler and the flags of its display; nothing where one is
/// missing.
struct DisplayedTrack {
  Track track = nullptr;
  MediaHandler handler = nullptr;
  SInt32 flags = 0;

  explicit DisplayedTrack(REALmovieStruct* host_movie) {
    const Movie movie = movie_of(host_movie);
    if (!movie) return;
    track = first_time_code_track(movie);
    if (!track) return;
    const Media media = GetTrackMedia(first_time_code_track(movie));
    if (!media) return;
    handler = GetMediaHandler(media);
    if (handler) TCGetTimeCodeFlags(handler, &flags);
  }
};

}  // namespace

ComponentResult QTTC_ShowCurrentTimeCode(Movie movie, Str255 text) {
  text[0] = 0;
  const Track track = first_time_code_track(movie);
  if (!track) return -1;
  const Media media = GetTrackMedia(track);
  if (!media) return -1;
  const MediaHandler handler = GetMediaHandler(media);
  if (!handler) return -1;
  TimeCodeDef definition = {};
  TimeCodeRecord record = {};
  if (TCGetCurrentTimeCode(handler, nullptr, &definition, &record, nullptr) != noErr) return -1;
  return TCTimeCodeToString(handler, &definition, &record, text);
}

void QTTC_DeleteTimeCodeTracks(Movie movie) {
  while (const Track track = first_time_code_track(movie)) {
    QTUtils_DeleteAllReferencesToTrack(track);
    DisposeMovieTrack(track);
  }
}

void DeleteTimeCodeTracks(REALmovieStruct* host_movie) {
  if (const Movie movie = movie_of(host_movie)) QTTC_DeleteTimeCodeTracks(movie);
}

bool MovieHasTimeCodeTrack(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  return movie && first_time_code_track(movie);
}

REALstring GetCurrentTimeCodeString(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  Str255 text;
  if (!movie || QTTC_ShowCurrentTimeCode(movie, text) != noErr) return nullptr;
  return REALBuildUnicodeString(text + 1, text[0], kASCII);
}

bool Movie_GetTimeCodeDisplay(REALmovieStruct* movie) {
  return (DisplayedTrack(movie).flags & tcdfShowTimeCode) != 0;
}

void Movie_SetTimeCodeDisplay(REALmovieStruct* movie, bool value) {
  const DisplayedTrack displayed(movie);
  if (!displayed.handler) return;
  TCSetTimeCodeFlags(
      displayed.handler,
      value ? displayed.flags | tcdfShowTimeCode : displayed.flags & ~tcdfShowTimeCode,
      tcdfShowTimeCode);
  SetTrackEnabled(displayed.track, value);
}

REALobject rbTCGetTimeCodeAtTime(REALobject object, int32_t MediaTime) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  const MediaHandler handler = getMediaHandler(data);
  if (!handler) return nullptr;
  SInt32 frame = 0;
  TimeCodeDef definition = {};
  TimeCodeRecord record = {};
  data.lasterror = TCGetTimeCodeAtTime(handler, MediaTime, &frame, &definition, &record, nullptr);
  if (data.lasterror != noErr) return nullptr;
  UserData source = nullptr;
  TCGetTimeCodeAtTime(handler, MediaTime, nullptr, nullptr, nullptr, &source);
  REALstring name = nullptr;
  if (source) {
    name = source_name(source);
    DisposeUserData(source);
  }
  return new_time_code(frame, definition, record, name);
}

REALobject rbTCGetCurrentTimeCode(REALobject object) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  const MediaHandler handler = getMediaHandler(data);
  if (!handler) return nullptr;
  SInt32 frame = 0;
  TimeCodeDef definition = {};
  TimeCodeRecord record = {};
  data.lasterror = TCGetCurrentTimeCode(handler, &frame, &definition, &record, nullptr);
  if (data.lasterror != noErr) return nullptr;
  // The source is asked for, and stays unread: its name is only known at a time of the media.
  UserData source = nullptr;
  TCGetCurrentTimeCode(handler, nullptr, nullptr, nullptr, &source);
  return new_time_code(frame, definition, record, nullptr);
}

void rbTCFrameNumberToTimeCode(REALobject object, REALobject timecode) {
  const MediaHandler handler = handler_for(object, timecode);
  if (!handler) return;
  QTTimeCodeClassData& code = time_code_data(timecode);
  track_data(object).lasterror =
      TCFrameNumberToTimeCode(handler, code.frame_number, &code.definition, &code.record);
}

// Unlike the way back, whose result is kept, this one leaves the error at -1.
void rbTCTimeCodeToFrameNumber(REALobject object, REALobject timecode) {
  const MediaHandler handler = handler_for(object, timecode);
  if (!handler) return;
  QTTimeCodeClassData& code = time_code_data(timecode);
  SInt32 frame = code.frame_number;
  TCTimeCodeToFrameNumber(handler, &code.definition, &code.record, &frame);
  code.frame_number = frame;
}

// So does this one.
REALstring rbTCTimeCodeToString(REALobject object, REALobject timecode) {
  const MediaHandler handler = handler_for(object, timecode);
  if (!handler) return nullptr;
  QTTimeCodeClassData& code = time_code_data(timecode);
  Str255 text;
  if (TCTimeCodeToString(handler, &code.definition, &code.record, text) != noErr) return nullptr;
  return REALBuildUnicodeString(text + 1, text[0], kASCII);
}

}  // namespace krz
