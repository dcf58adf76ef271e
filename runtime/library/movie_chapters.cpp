// Functions for chapters beyond what the module's classes say: the text of samples as people read
// it, the short chapter list, languages. Tracks are named by their handle, as
// QTTrackKRZ.TrackHandle gives it.
#include <Toolbox/Toolbox.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "language/script.h"
#include "library/movie.h"
#include "library/parts.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "object/text_codec.h"
#include "registry/tables.h"

namespace krz {

namespace {

constexpr TimeValue kLastTime = 0x7FFFFFFF;

struct HandleDeleter {
  void operator()(Handle handle) const { DisposeHandle(handle); }
};
using OwnedHandle = std::unique_ptr<Ptr, HandleDeleter>;

std::string_view bytes_of(const OwnedHandle& handle) {
  return {*handle.get(), static_cast<size_t>(GetHandleSize(handle.get()))};
}

Track track_of(int32_t handle) {
  return reinterpret_cast<Track>(static_cast<uintptr_t>(static_cast<uint32_t>(handle)));
}

void raise_failure(OSErr status) { raise_exception("IOException", ToolboxErrorDetail(), status); }

bool is_marked_utf16(std::string_view text) {
  return text.starts_with("\xFE\xFF") || text.starts_with("\xFF\xFE");
}

/// The text in UTF-8: a mark decides, else it is UTF-8 if it can be, else MacRoman. What tools
/// write into the encoding extension of samples is not what their text is in.
std::string decoded(std::string_view text) {
  if (is_marked_utf16(text)) {
    std::string units(text.substr(2));
    const bool is_big_endian = text.starts_with('\xFE');
    for (size_t i = 0; is_big_endian && i + 1 < units.size(); i += 2)
      std::swap(units[i], units[i + 1]);
    return transcode(units, encoding::kUtf16, encoding::kUtf8);
  }
  const bool is_utf8 = is_valid_utf8(text);
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  return is_utf8 ? std::string(text) : transcode(text, encoding::kMacRoman, encoding::kUtf8);
}

/// The text of a sample: its length in 16 bits, which may be more than there is, then the text.
std::string_view text_part(std::string_view sample) {
  constexpr size_t kLengthBytes = 2;
  if (sample.size() < kLengthBytes) return {};
  const size_t length =
      static_cast<uint8_t>(sample[0]) * size_t{256} + static_cast<uint8_t>(sample[1]);
  return sample.substr(kLengthBytes, length);
}

/// The texts of a track's samples, one at a time.
class SampleTexts {
 public:
  explicit SampleTexts(int32_t handle)
      : track_(track_of(handle)), media_(GetTrackMedia(track_)), sample_(NewHandle(0)) {}

  /// What is shown at a time of the movie, as it is stored; "" where nothing is. Good until the
  /// next one is asked for. Raises what is wrong.
  std::string_view at(TimeValue time) {
    const TimeValue media_time = TrackTimeToMediaTime(time, track_);
    if (!sample_ || media_time < 0) return {};
    SInt32 size = 0;
    const OSErr status = GetMediaSample(media_, sample_.get(), 0, &size, media_time, nullptr,
                                        nullptr, nullptr, nullptr, 1, nullptr, nullptr);
    if (status == noErr) return text_part(bytes_of(sample_));
    raise_failure(status);
    return {};
  }

 private:
  Track track_;
  Media media_;
  OwnedHandle sample_;
};

REALstring sample_text(int32_t track, int32_t time) {
  return make_string(decoded(SampleTexts(track).at(time)));
}

/// Takes the lock of a string in the slot over. False when memory does not hold more, which the
/// caller of the function hears of.
bool append(ArrayObject& array, const Slot& slot) {
  if (!reserve_elements(array, array.elements.size() + 1)) {
    unlock_slot(array.element_type, slot);
    return false;
  }
  array.elements.push_back(slot);
  array.upper_bounds[0] = static_cast<int32_t>(array.elements.size()) - 1;
  return true;
}

bool append_time(ArrayObject& times, TimeValue time) {
  Slot slot;
  slot.integer = time;
  return append(times, slot);
}

// The texts that a track shows, one a sample. `times` gets where each begins, and at last where the
// last one ends, in movie time.
REALobject track_texts(int32_t handle, REALobject times) {
  constexpr Fixed kForward = 0x10000;
  constexpr SInt16 kThisOrNext = nextTimeMediaSample | nextTimeEdgeOK;
  ArrayObject* const starts = as_array(times);
  if (!starts) {
    raise_exception("NilObjectException", "the times have no array to go to");
    return nullptr;
  }
  starts->elements.clear();
  starts->upper_bounds[0] = -1;
  ArrayObject* const texts = new_array({Kind::kString}, {-1});
  SampleTexts samples(handle);
  TimeValue end = -1;
  for (TimeValue time = 0; texts && !Script::is_interrupted(); ++time) {
    TimeValue duration = 0;
    GetTrackNextInterestingTime(track_of(handle), kThisOrNext, time, kForward, &time, &duration);
    if (GetMoviesError() != noErr || time < 0) break;
    Slot slot;
    slot.string = make_string(decoded(samples.at(time)));
    if (!append(*texts, slot) || !append_time(*starts, time)) break;
    end = static_cast<TimeValue>(std::min<int64_t>(int64_t{time} + duration, kLastTime));
    if (exception_pending() || time == kLastTime) break;
  }
  if (end >= 0) append_time(*starts, end);
  return texts;
}

REALstring sample_encoding(int32_t track, int32_t time) {
  SampleTexts samples(track);
  const std::string_view text = samples.at(time);
  return make_string(is_marked_utf16(text) ? "UTF-16" : is_valid_utf8(text) ? "UTF-8" : "MacRoman");
}

// Languages of media are three letters packed in 15 bits, or numbers of the classic system.
constexpr int32_t kLeastPacked = 0x400;
constexpr int32_t kUnspecified = 0x7FFF;
constexpr std::string_view kClassicLanguages[] = {
    "eng", "fra", "deu", "ita", "nld", "swe", "spa", "dan", "por", "nor", "heb", "jpn",
    "ara", "fin", "ell", "isl", "mlt", "tur", "hrv", "zho", "urd", "hin", "tha", "kor",
    "lit", "pol", "hun", "est", "lav", "sme", "fao", "fas", "rus", "zho"};

REALstring language(int32_t track) {
  const auto code = static_cast<uint16_t>(GetMediaLanguage(GetTrackMedia(track_of(track))));
  if (code < std::size(kClassicLanguages)) return make_string(kClassicLanguages[code]);
  if (code < kLeastPacked || code == kUnspecified) return make_string("und");
  const char letters[] = {static_cast<char>(0x60 + (code >> 10 & 0x1F)),
                          static_cast<char>(0x60 + (code >> 5 & 0x1F)),
                          static_cast<char>(0x60 + (code & 0x1F))};
  return make_string({letters, 3});
}

void set_language(int32_t track, REALstring name) {
  const std::string_view text = string_bytes(name);
  uint32_t code = 0;
  for (const char letter : text)
    code = code << 5 |
           (letter >= 'a' && letter <= 'z' ? static_cast<uint32_t>(letter - 0x60) : 0x8000u);
  if (text.size() != 3 || code > kUnspecified) {
    raise_exception(
        "InvalidArgumentException",
        "\"" + std::string(text) + "\" is no language; it is three letters, as \"eng\"");
    return;
  }
  SetMediaLanguage(GetTrackMedia(track_of(track)), static_cast<SInt16>(code));
  if (GetMoviesError() != noErr) raise_failure(GetMoviesError());
}

constexpr size_t kEntryTitleAt = 9;

/// Calls visit(start, title) for each entry of the movie's short chapter list.
template <class Visit>
void each_short_chapter(REALobject movie, Visit visit) {
  const OwnedHandle entries(NewHandle(0));
  if (!entries) return;
  if (const OSErr status = ToolboxGetShortChapters(movie_reference(movie), entries.get());
      status != noErr) {
    raise_failure(status);
    return;
  }
  std::string_view rest = bytes_of(entries);
  while (rest.size() >= kEntryTitleAt) {
    uint64_t start = 0;
    for (size_t i = 0; i < 8; ++i) start = start << 8 | static_cast<uint8_t>(rest[i]);
    const size_t length = static_cast<uint8_t>(rest[8]);
    visit(static_cast<int64_t>(start), rest.substr(kEntryTitleAt, length));
    rest.remove_prefix(std::min(rest.size(), kEntryTitleAt + length));
  }
}

/// A new array with one slot for each entry of the list.
template <class SlotOf>
REALobject short_chapter_array(REALobject movie, Kind kind, SlotOf slot_of) {
  ArrayObject* const array = new_array({kind}, {-1});
  if (!array) return nullptr;
  each_short_chapter(
      movie, [&](int64_t start, std::string_view title) { append(*array, slot_of(start, title)); });
  return array;
}

REALobject short_chapter_times(REALobject movie) {
  return short_chapter_array(movie, Kind::kInt64, [](int64_t start, std::string_view) {
    Slot slot;
    slot.int64 = start;
    return slot;
  });
}

REALobject short_chapter_titles(REALobject movie) {
  return short_chapter_array(movie, Kind::kString, [](int64_t, std::string_view title) {
    Slot slot;
    slot.string = make_string(decoded(title));
    return slot;
  });
}

// Times in units of 100 ns. A title's bytes in UTF-8 must be 255 at most.
void set_short_chapters(REALobject movie, REALobject times, REALobject titles) {
  const ArrayObject* const starts = as_array(times);
  const ArrayObject* const texts = as_array(titles);
  if (!starts || !texts || starts->elements.size() != texts->elements.size()) {
    raise_exception("InvalidArgumentException", "each chapter of the list has a time and a title");
    return;
  }
  std::string entries;
  for (size_t i = 0; i < starts->elements.size(); ++i) {
    const std::string title = string_utf8(texts->elements[i].string);
    if (title.size() > 255) {
      raise_exception("InvalidArgumentException",
                      "title " + std::to_string(i + 1) + " has more than the 255 bytes that fit");
      return;
    }
    const auto start = static_cast<uint64_t>(starts->elements[i].int64);
    for (int shift = 56; shift >= 0; shift -= 8)
      entries.push_back(static_cast<char>(start >> shift));
    entries.push_back(static_cast<char>(title.size()));
    entries += title;
  }
  const OSErr status = ToolboxSetShortChapters(movie_reference(movie), entries.data(),
                                               static_cast<uint32_t>(entries.size()));
  if (status != noErr) raise_failure(status);
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(sample_text, "SampleText(trackHandle as integer, time as integer) as string"),
    KRZ_FUNCTION(track_texts, "TrackTexts(trackHandle as integer, times() as integer) as string()"),
    KRZ_FUNCTION(sample_encoding,
                 "SampleEncoding(trackHandle as integer, time as integer) as string"),
    KRZ_FUNCTION(language, "TrackLanguage(trackHandle as integer) as string"),
    KRZ_FUNCTION(set_language, "SetTrackLanguage(trackHandle as integer, language as string)"),
    KRZ_FUNCTION(short_chapter_times, "ShortChapterTimes(movie as Movie) as int64()"),
    KRZ_FUNCTION(short_chapter_titles, "ShortChapterTitles(movie as Movie) as string()"),
    KRZ_FUNCTION(set_short_chapters,
                 "SetShortChapters(movie as Movie, times() as int64, titles() as string)"),
};

}  // namespace

void register_movie_chapters(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
