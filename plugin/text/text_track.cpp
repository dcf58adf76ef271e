// Builds text tracks from arrays of chapter objects.
#include "text/text_track.h"

#include "host/entries.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "host/registration.h"
#include "host/text_view.h"
#include "text/chapter_data.h"

namespace krz {
namespace {

constexpr SInt16 kTrackHeight = 20;  // pixels
constexpr Fixed kNormalRate = 0x10000;
constexpr UInt32 kUnicodeDefaultEncoding = 0x100;

/// The track that a new text track is placed below.
struct Reference {
  Track track;
  Fixed width;
  Fixed height;
};

RGBColor color_of(uint32_t color) {
  const auto component = [&](int shift) {
    return static_cast<UInt16>((color >> shift & 0xFF) * 257);
  };
  return {component(16), component(8), component(0)};
}

Style style_of(const QTChapterDataClassData& chapter) {
  const auto bit = [](Boolean is_set, unsigned value) { return is_set ? value : 0u; };
  return static_cast<Style>(bit(chapter.bold, 0x01) | bit(chapter.italic, 0x02) |
                            bit(chapter.underline, 0x04) | bit(chapter.outline, 0x08) |
                            bit(chapter.shadow, 0x10) | bit(chapter.condense, 0x20) |
                            bit(chapter.extend, 0x40));
}

Rect box_of(const QTChapterDataClassData& chapter, const Reference& reference) {
  const auto width =
      static_cast<uint32_t>(chapter.width ? chapter.width : Fix2Long(reference.width));
  const auto height =
      static_cast<uint32_t>(chapter.height ? chapter.height : Fix2Long(reference.height));
  return {.top = static_cast<SInt16>(chapter.top),
          .left = static_cast<SInt16>(chapter.left),
          .bottom = static_cast<SInt16>(static_cast<uint32_t>(chapter.top) + height),
          .right = static_cast<SInt16>(static_cast<uint32_t>(chapter.left) + width)};
}

/// A duration of the movie's time scale in that of a media.
TimeValue media_duration(int32_t duration, Movie movie, Media media) {
  TimeRecord record = {};
  record.value.lo = static_cast<UInt32>(duration);
  record.scale = GetMovieTimeScale(movie);
  ConvertTimeScale(&record, GetMediaTimeScale(media));
  return static_cast<TimeValue>(record.value.lo);
}

/// A mark that says big-endian, and the text in that order; null without memory.
Memory sample_text(const rbText& text, UInt32& size) {
  const int32_t length = text.LengthUTF16();
  Memory buffer(AllocateClearMemory(int64_t{length} * 2 + 12));
  if (!buffer) return nullptr;
  auto* byte = static_cast<uint8_t*>(buffer.get());
  *byte++ = 0xFE;
  *byte++ = 0xFF;
  const uint16_t* const units = text.GetUTF16();
  for (int32_t i = 0; i < length; ++i) {
    *byte++ = static_cast<uint8_t>(units[i] >> 8);
    *byte++ = static_cast<uint8_t>(units[i]);
  }
  size = static_cast<UInt32>(length) * 2 + 2;
  return buffer;
}

/// Adds one chapter. What fails leaves it out, and later ones move forward.
void add_sample(Movie movie, Media media, MediaHandler handler, const Reference& reference,
                const QTChapterDataClassData& chapter) {
  const Rect box = box_of(chapter, reference);
  const TimeValue duration = media_duration(chapter.frame_duration, movie, media);
  const RGBColor text_color = color_of(chapter.text_color);
  const RGBColor back_color = color_of(chapter.back_color);
  const RGBColor highlight_color = color_of(chapter.highlight_color);
  const rbText text(chapter.text);
  UInt32 size = 0;
  const Memory buffer = sample_text(text, size);
  if (!buffer) return;
  UInt32 encoding = kUnicodeDefaultEncoding;
  TextMediaSetTextSampleData(handler, &encoding, sampleEncodingType);
  TextMediaAddTextSample(
      handler, static_cast<Ptr>(buffer.get()), size, static_cast<SInt16>(chapter.font_number),
      static_cast<SInt16>(chapter.font_size), style_of(chapter),
      chapter.has_text_color ? &text_color : nullptr,
      chapter.has_back_color ? &back_color : nullptr,
      static_cast<SInt16>(chapter.text_justification), &box, chapter.display_flags,
      chapter.scroll_delay, static_cast<SInt16>(chapter.highlight_start),
      static_cast<SInt16>(chapter.highlight_end),
      chapter.has_highlight_color ? &highlight_color : nullptr, duration, nullptr);
}

void add_samples(Movie movie, Media media, MediaHandler handler, const Reference& reference,
                 REALobjectArrayStruct* chapters, SInt16 count) {
  for (int32_t i = 0; i < count; ++i) {
    const REALobject chapter = REALGetArrayObject(chapters, i);
    if (!chapter) continue;
    add_sample(movie, media, handler, reference,
               instance_data<QTChapterDataClassData>(chapter, QTChapterDataClass));
    REALUnlockObject(chapter);
  }
}

}  // namespace

Track QTText_AddTextTrack(Movie movie, REALobjectArrayStruct* chapters, SInt16 count,
                          OSType referenceType, bool isChapterTrack) {
  Reference reference = {GetMovieIndTrackType(movie, 1, referenceType, movieTrackMediaType), 0, 0};
  if (!reference.track) return nullptr;
  GetTrackDimensions(reference.track, &reference.width, &reference.height);
  const TimeScale scale = GetMediaTimeScale(GetTrackMedia(reference.track));
  const Track text = NewMovieTrack(movie, reference.width, FixRatio(kTrackHeight, 1), 0);
  if (!text) return nullptr;
  // From here on the track is answered, whatever fails.
  const Media media = NewTrackMedia(text, TextMediaType, scale, nullptr, 0);
  if (!media) return text;
  const MediaHandler handler = GetMediaHandler(media);
  if (!handler) return text;

  MatrixRecord matrix = {};
  GetTrackMatrix(text, &matrix);
  TranslateMatrix(&matrix, 0, reference.height);
  SetTrackMatrix(text, &matrix);
  SetTrackEnabled(text, true);

  if (BeginMediaEdits(media) == noErr) {
    add_samples(movie, media, handler, reference, chapters, count);
  }
  // Also when the edits could not begin.
  if (EndMediaEdits(media) != noErr) return text;
  if (InsertMediaIntoTrack(text, 0, 0, GetMediaDuration(media), kNormalRate) != noErr) return text;
  if (isChapterTrack) AddTrackReference(reference.track, text, kTrackReferenceChapterList, nullptr);
  return text;
}

OSErr QTText_SetTextTrackAsChapterTrack(Movie movie, Track textTrack, OSType type,
                                        bool isChapterTrack) {
  if (!movie) return paramErr;
  // Only an enabled track will do here, while the builder takes any.
  const Track owner =
      GetMovieIndTrackType(movie, 1, type, movieTrackMediaType | movieTrackEnabledOnly);
  if (!owner || !textTrack) return paramErr;
  return isChapterTrack ? AddTrackReference(owner, textTrack, kTrackReferenceChapterList, nullptr)
                        : DeleteTrackReference(owner, kTrackReferenceChapterList, 1);
}

OSErr QTText_RemoveIndTextTrack(Movie movie, SInt16 index) {
  bool removed = false;
  for (;;) {
    const Track track =
        GetMovieIndTrackType(movie, index ? index : 1, TextMediaType, movieTrackMediaType);
    if (!track) return removed ? OSErr{noErr} : OSErr{badTrackIndex};
    QTUtils_DeleteAllReferencesToTrack(track);
    DisposeMovieTrack(track);
    if (index) return noErr;
    removed = true;
  }
}

OSErr QTUtils_DeleteAllReferencesToTrack(Track track) {
  const Movie movie = GetTrackMovie(track);
  if (!movie) return paramErr;
  OSErr result = noErr;
  const SInt32 count = GetMovieTrackCount(movie);
  for (SInt32 i = 1; i <= count; ++i) {
    const Track other = GetMovieIndTrack(movie, i);
    if (!other || other == track) continue;
    OSType next = 0;
    for (OSType type = GetNextTrackReferenceType(other, 0); type; type = next) {
      // Asked for before the last reference of a type takes the type away.
      next = GetNextTrackReferenceType(other, type);
      for (SInt32 k = GetTrackReferenceCount(other, type); k >= 1; --k) {
        if (GetTrackReference(other, type, k) == track) {
          result = DeleteTrackReference(other, type, k);
        }
      }
    }
  }
  return result;
}

}  // namespace krz
