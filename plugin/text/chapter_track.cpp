// The class "QTChapterTrackKRZ": a track whose samples are the chapters of another track.
#include <algorithm>
#include <utility>

#include "host/class_table.h"
#include "host/encodings.h"
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "host/registration.h"
#include "host/strings.h"
#include "text/text_track.h"
#include "track/track.h"

namespace krz {
namespace {

Track track_of(const QTTrackClassData& data) { return to_reference<Track>(data.track); }

int32_t rbGetChapterCount(REALobject object) {
  return QTText_GetChapterCount(track_of(track_data(object)));
}

int32_t rbGetChapterTime(REALobject object, int32_t index) {
  const QTTrackClassData& data = track_data(object);
  return data.track ? QTText_GetIndChapterTime(track_of(data), index) : 0;
}

int32_t rbGetFirstChapterTime(REALobject object) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return 0;
  TimeValue time = 0;
  data.lasterror = QTText_GetFirstChapterTime(track_of(data), &time);
  return time;
}

int32_t rbGetNextChapterTime(REALobject object, int32_t time) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return 0;
  TimeValue next = time;
  data.lasterror = QTText_GetNextChapterTime(track_of(data), &next);
  return next;
}

/// The text of a sample: a 16-bit length, the text, and extensions that are left alone.
REALstring text_of_sample(uint8_t* bytes, Size size) {
  constexpr Size kLengthBytes = 2;
  constexpr Size kMarkBytes = 2;
  if (size < kLengthBytes) return nullptr;
  // Lengths count as signed 16 bits all along: a text of 32768 bytes and more is none, but one that
  // is 32768 bytes with its mark is read.
  auto length = static_cast<SInt16>(bytes[0] << 8 | bytes[1]);
  uint8_t* const text = bytes + kLengthBytes;
  Size available = size - kLengthBytes;  // a length that says more ends with the sample
  if (available < kMarkBytes || text[0] != 0xFE || text[1] != 0xFF) {
    return REALBuildUnicodeString(text, std::min<Size>(length, available), kASCII);
  }
  length = static_cast<SInt16>(length - kMarkBytes);
  available -= kMarkBytes;
  length = static_cast<SInt16>(std::min<Size>(length, available));
  uint8_t* const units = text + kMarkBytes;
  for (int32_t i = 0; i + 1 < length; i += 2) std::swap(units[i], units[i + 1]);
  return REALBuildUnicodeString(units, length, kUTF16);
}

REALstring rbGetChapterText(REALobject object, int32_t time) {
  QTTrackClassData& data = track_data(object);
  const OwnedHandle sample(NewHandleClear(0));
  if (!sample) {
    data.lasterror = -1;
    return nullptr;
  }
  // A nil track reaches the toolbox, which answers for it.
  const Media media = GetTrackMedia(track_of(data));
  const TimeValue media_time = TrackTimeToMediaTime(time, track_of(data));
  SInt32 size = 0;
  const OSErr status = GetMediaSample(media, sample.get(), 0, &size, media_time, nullptr, nullptr,
                                      nullptr, nullptr, 0, nullptr, nullptr);
  REALstring text = nullptr;
  if (status == noErr && GetHandleSize(sample.get()) > 0) {
    HLock(sample.get());
    text = text_of_sample(reinterpret_cast<uint8_t*>(*sample.get()), GetHandleSize(sample.get()));
    HUnlock(sample.get());
  }
  data.lasterror = status;
  return text;
}

MethodEntry chapter_track_methods[] = {
    METHOD(rbGetNextChapterTime, "GetNextChapterTime(time as integer) as integer"),
    METHOD(rbGetFirstChapterTime, "GetFirstChapterTime as integer"),
    METHOD(rbGetChapterCount, "ChapterCount as integer"),
    METHOD(rbGetChapterText, "ChapterText(time as integer) as string"),
    METHOD(rbGetChapterTime, "GetChapterTime(index as integer) as integer"),
};

}  // namespace

REALclassDefinition QTChapterTrackClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTChapterTrackKRZ",
    .superclass = "QTTrackKRZ",
    .methods = chapter_track_methods,
    .method_count = std::size(chapter_track_methods),
};

REALobject MakeChapterTrackObject(Track track, REALmovieStruct* movie) {
  if (!track || !movie) return nullptr;
  const REALobject object = REALnewInstance("QTChapterTrackKRZ");
  if (!object) return nullptr;
  QTTrackClassData& data = track_data(object);
  data.movie = movie;
  data.track = to_token(track);
  REALLockObject(reinterpret_cast<REALobject>(movie));
  return object;
}

}  // namespace krz
