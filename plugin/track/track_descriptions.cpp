// Makes sample description objects from the records of a track's media, one factory for each kind.
#include "host/encodings.h"
#include "host/memory.h"
#include "track/description_record.h"
#include "track/sample_description.h"
#include "track/track.h"

namespace krz {
namespace {

using Data = QTSampleDescriptionClassData;

/// What every record begins with: size, data format, reserved bytes, data reference index.
constexpr Size kLeastRecord = 16;

/// A kind of description: the media it belongs to, the class of its objects, and how a record fills
/// one. `accepts` tells whether an object is made of a record at all.
struct DescriptionKind {
  OSType media_type;
  const char* class_name;
  bool (*accepts)(const DescriptionRecord& record);
  void (*fill)(Data& data, const DescriptionRecord& record);
};

bool accept_any(const DescriptionRecord&) { return true; }

void fill_video(Data& data, const DescriptionRecord& record) {
  data.codec_vendor = record.code(20);
  data.temporal_quality = record.int32(24);
  data.spatial_quality = record.int32(28);
  data.width = record.int16(32);
  data.height = record.int16(34);
  data.horizontal_resolution = record.fixed(36);
  data.vertical_resolution = record.fixed(40);
  data.data_size = record.int32(44);
  data.frame_count = record.int16(48);
  data.codec_name = record.pascal_string(50, kASCII);
  data.depth = record.int16(82);
}

int16_t sound_version(const DescriptionRecord& record) { return record.int16(16); }

/// The layout of other versions is not known.
bool accept_sound(const DescriptionRecord& record) {
  return sound_version(record) >= 0 && sound_version(record) <= 2;
}

void fill_sound(Data& data, const DescriptionRecord& record) {
  data.version = sound_version(record);
  data.codec_vendor = record.code(20);
  if (data.version == 2) {
    data.channel_count = record.int32(48);
    data.sample_size = record.int32(56);
    data.sample_rate = record.float64(40);
  } else {
    data.channel_count = record.int16(24);
    data.sample_size = record.int16(26);
    data.sample_rate = record.uint32(32) * (1.0 / 65536);  // unsigned: 44100 has the top bit set
  }
}

void fill_text(Data& data, const DescriptionRecord& record) {
  data.display_flags = record.int32(16);
  data.text_justification = record.int32(20);
  data.background_color = record.color(24);
  data.top = record.int16(30);
  data.left = record.int16(32);
  data.height = record.int16(34) - record.int16(30);
  data.width = record.int16(36) - record.int16(32);
  data.text_height = record.int16(42);
  data.text_ascent = record.int16(44);
  data.text_font_id = record.int16(46);
  // The style shows in the flags alone; "TextFace" stays 0.
  const uint8_t face = record.byte(48);
  data.bold = (face & 0x01) != 0;
  data.italic = (face & 0x02) != 0;
  data.underline = (face & 0x04) != 0;
  data.outline = (face & 0x08) != 0;
  data.shadow = (face & 0x10) != 0;
  data.condense = (face & 0x20) != 0;
  data.extend = (face & 0x40) != 0;
  data.text_size = record.int16(50);
  data.text_color = record.color(52);
  data.default_font_name = record.pascal_string(58, kMacRoman);
}

void fill_decompressor(Data& data, const DescriptionRecord& record) {
  data.decompressor_type = record.code(20);
}

void fill_three_dee(Data& data, const DescriptionRecord& record) {
  data.renderer_type = record.code(20);
  data.decompressor_type = record.code(24);
}

void fill_nothing(Data&, const DescriptionRecord&) {}

constexpr DescriptionKind kVideo = {VideoMediaType, "QTVideoSampleDescriptionKRZ", accept_any,
                                    fill_video};
constexpr DescriptionKind kSound = {SoundMediaType, "QTSoundSampleDescriptionKRZ", accept_sound,
                                    fill_sound};
constexpr DescriptionKind kSprite = {SpriteMediaType, "QTSpriteSampleDescriptionKRZ", accept_any,
                                     fill_decompressor};
constexpr DescriptionKind kText = {TextMediaType, "QTTextSampleDescriptionKRZ", accept_any,
                                   fill_text};
constexpr DescriptionKind kMusic = {MusicMediaType, "QTMusicSampleDescriptionKRZ", accept_any,
                                    fill_nothing};
constexpr DescriptionKind kThreeDee = {ThreeDeeMediaType, "QTThreeDeeSampleDescriptionKRZ",
                                       accept_any, fill_three_dee};
constexpr DescriptionKind kFlash = {FlashMediaType, "QTFlashSampleDescriptionKRZ", accept_any,
                                    fill_decompressor};
constexpr const DescriptionKind* kTyped[] = {&kFlash,  &kMusic, &kThreeDee, &kSound,
                                             &kSprite, &kText,  &kVideo};

OSType media_type_of(Media media) {
  OSType type = 0;
  GetMediaHandlerDescription(media, &type, nullptr, nullptr);
  return type;
}

REALobject object_of(const DescriptionKind& kind, Handle description) {
  const Size size = GetHandleSize(description);
  if (size < kLeastRecord) return nullptr;
  HLock(description);
  const DescriptionRecord record(*description, size);
  const REALobject object = kind.accepts(record) ? REALnewInstance(kind.class_name) : nullptr;
  if (object) {
    Data& data = sample_description_data(object);
    data.codec_type = record.code(4);
    kind.fill(data, record);
  }
  HUnlock(description);
  return object;
}

/// The object of description `index`, whatever the type of the media.
REALobject read_description(QTTrackClassData& track, Media media, int32_t index,
                            const DescriptionKind& kind) {
  const OwnedHandle description(NewHandle(0));
  if (!description) return nullptr;
  GetMediaSampleDescription(media, index, description.get());
  track.lasterror = GetMoviesError();
  return object_of(kind, description.get());
}

REALobject make_description(REALobject object, int32_t index, const DescriptionKind& kind) {
  QTTrackClassData& track = track_data(object);
  track.lasterror = -1;
  const Media media = getTrackMedia(track);
  if (!media || media_type_of(media) != kind.media_type) return nullptr;
  return read_description(track, media, index, kind);
}

}  // namespace

REALobject rbMediaVideoSampleDescription(REALobject object, int32_t index) {
  return make_description(object, index, kVideo);
}

REALobject rbMediaSoundSampleDescription(REALobject object, int32_t index) {
  return make_description(object, index, kSound);
}

REALobject rbMediaSpriteSampleDescription(REALobject object, int32_t index) {
  return make_description(object, index, kSprite);
}

REALobject rbMediaTextSampleDescription(REALobject object, int32_t index) {
  return make_description(object, index, kText);
}

REALobject rbMediaMusicSampleDescription(REALobject object, int32_t index) {
  return make_description(object, index, kMusic);
}

REALobject rbMediaThreeDeeSampleDescription(REALobject object, int32_t index) {
  return make_description(object, index, kThreeDee);
}

REALobject rbMediaFlashSampleDescription(REALobject object, int32_t index) {
  return make_description(object, index, kFlash);
}

REALobject rbMediaSampleDescription(REALobject object, int32_t index) {
  QTTrackClassData& track = track_data(object);
  track.lasterror = -1;
  const Media media = getTrackMedia(track);
  if (!media) return nullptr;
  const OSType type = media_type_of(media);
  for (const DescriptionKind* kind : kTyped) {
    if (kind->media_type == type) return make_description(object, index, *kind);
  }
  constexpr DescriptionKind kOther = {0, "QTSampleDescriptionKRZ", accept_any, fill_nothing};
  return read_description(track, media, index, kOther);
}

}  // namespace krz
