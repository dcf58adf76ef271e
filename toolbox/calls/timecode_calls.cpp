// The calls of QuickTime/MediaHandlers.h for timecode media, and those of Toolbox/Toolbox.h that
// read time codes as people write them.
#include <Toolbox/Toolbox.h>

#include <algorithm>
#include <cstring>

#include "calls/handler_guard.h"
#include "calls/references.h"
#include "handlers/text_handler.h"
#include "handlers/timecode_handler.h"
#include "memory/handles.h"
#include "movie/movie.h"

using namespace toolbox::calls;
using toolbox::Bytes;
using toolbox::ByteView;
using toolbox::FourCC;
using toolbox::Result;
using toolbox::Status;
using toolbox::TimecodeDefinition;
using toolbox::TimecodeInfoAtom;
using toolbox::TimecodeRecord;
using toolbox::UserDataList;
namespace handles = toolbox::handles;

namespace {

constexpr FourCC kTimecode = toolbox::four_cc("tmcd");
constexpr size_t kSourceAt = 34;  // in a description

static_assert(sizeof(TimeCodeDef) == 14 && sizeof(TimeCodeRecord) == 4);
static_assert(sizeof(TCTextOptions) == 20 && sizeof(TimeCodeDescription) == 38);

TimecodeDefinition engine_definition(const TimeCodeDef& definition) {
  return {.flags = static_cast<uint32_t>(definition.flags),
          .time_scale = definition.fTimeScale,
          .frame_duration = definition.frameDuration,
          .frames = definition.numFrames};
}

TimeCodeDef caller_definition(const TimecodeDefinition& definition) {
  return {.flags = static_cast<SInt32>(definition.flags),
          .fTimeScale = definition.time_scale,
          .frameDuration = definition.frame_duration,
          .numFrames = definition.frames,
          .padding = 0};
}

// A record is the same four bytes on both sides.
TimecodeRecord engine_record(const TimeCodeRecord& record) {
  return TimecodeRecord::of_counter(record.c);
}

TimeCodeRecord caller_record(TimecodeRecord record) { return {.c = record.counter()}; }

template <class Out, class Value>
void put(Out* out, const Value& value) {
  if (out != nullptr) *out = value;
}

Status missing_argument() {
  return {paramErr, "a definition, a time code and a place for the result are needed"};
}

Status no_frames() {
  return {paramErr, "a definition of 0 frames a second cannot be counted with"};
}

// A list of the source reference's items, which the caller gets.
Result<UserData> source_list(ByteView items) {
  auto list = std::make_unique<UserDataList>(UserDataList::Owner::kCaller);
  list->read(items);
  TRY_ASSIGN(const UserData reference, reference_to(*list));
  static_cast<void>(list.release());  // the caller's now, by its reference
  return reference;
}

struct TimecodeOutputs {
  SInt32* frame;
  TimeCodeDef* definition;
  TimeCodeRecord* record;
  UserData* source;
};

Status give_timecode(const toolbox::Media& media, int64_t media_time, const TimecodeOutputs& out) {
  TRY_ASSIGN(const toolbox::MediaTimecode timecode, timecode_at(media, media_time));
  if (out.source != nullptr) {
    TRY_ASSIGN(*out.source, source_list(timecode.source));
  }
  // Numbers of 64 bits keep the low half.
  put(out.frame, static_cast<SInt32>(timecode.frame));
  put(out.definition, caller_definition(timecode.definition));
  put(out.record, caller_record(timecode.record));
  return {};
}

// The size at the head of a description in the byte order that it is in; false when it is in none.
bool set_description_size(Bytes& description, uint32_t old_size) {
  const auto new_size = static_cast<uint32_t>(description.size());
  if (toolbox::load_big_endian<uint32_t>(description.data()) == old_size) {
    toolbox::store_big_endian(description.data(), new_size);
    return true;
  }
  uint32_t native = 0;
  std::memcpy(&native, description.data(), sizeof native);
  if (native != old_size) return false;
  std::memcpy(description.data(), &new_size, sizeof new_size);
  return true;
}

RGBColor caller_color(const TimecodeInfoAtom::Color& color) {
  return {color[0], color[1], color[2]};
}

TimecodeInfoAtom::Color engine_color(const RGBColor& color) {
  return {color.red, color.green, color.blue};
}

}  // namespace

TOOLBOX_CALL ComponentResult TCGetTimeCodeAtTime(MediaHandler mh, TimeValue mediaTime,
                                                 SInt32* frameNum, TimeCodeDef* tcdef,
                                                 TimeCodeRecord* tcrec, UserData* srcRefH) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler& handler) -> Status {
    return give_timecode(handler.media(), mediaTime, {frameNum, tcdef, tcrec, srcRefH});
  });
}

TOOLBOX_CALL ComponentResult TCGetCurrentTimeCode(MediaHandler mh, SInt32* frameNum,
                                                  TimeCodeDef* tcdef, TimeCodeRecord* tcrec,
                                                  UserData* srcRefH) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler& handler) -> Status {
    const toolbox::Media& media = handler.media();
    const toolbox::Track& track = media.track();
    const int64_t time = track.timeline().media_time(track.movie().current_time());
    if (time < 0) {
      return {invalidTime, "the timecode track shows nothing where the movie stands"};
    }
    return give_timecode(media, time, {frameNum, tcdef, tcrec, srcRefH});
  });
}

TOOLBOX_CALL ComponentResult TCTimeCodeToFrameNumber(MediaHandler mh, TimeCodeDef* tcdef,
                                                     TimeCodeRecord* tcrec, SInt32* frameNumber) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler&) -> Status {
    if (tcdef == nullptr || tcrec == nullptr || frameNumber == nullptr) return missing_argument();
    const auto frame = frame_of_timecode(engine_definition(*tcdef), engine_record(*tcrec));
    if (!frame) return no_frames();
    *frameNumber = static_cast<SInt32>(*frame);
    return {};
  });
}

TOOLBOX_CALL ComponentResult TCFrameNumberToTimeCode(MediaHandler mh, SInt32 frameNumber,
                                                     TimeCodeDef* tcdef, TimeCodeRecord* tcrec) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler&) -> Status {
    if (tcdef == nullptr || tcrec == nullptr) return missing_argument();
    const auto record = timecode_of_frame(engine_definition(*tcdef), frameNumber);
    if (!record) return no_frames();
    *tcrec = caller_record(*record);
    return {};
  });
}

TOOLBOX_CALL ComponentResult TCTimeCodeToString(MediaHandler mh, TimeCodeDef* tcdef,
                                                TimeCodeRecord* tcrec, Str255 tcStr) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler&) -> Status {
    if (tcdef == nullptr || tcrec == nullptr || tcStr == nullptr) return missing_argument();
    const std::string text = timecode_text(engine_definition(*tcdef), engine_record(*tcrec));
    tcStr[0] = static_cast<uint8_t>(text.size());
    std::copy(text.begin(), text.end(), tcStr + 1);
    return {};
  });
}

TOOLBOX_CALL ComponentResult TCSetSourceRef(MediaHandler mh, Handle tcdH, UserData srefH) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler&) -> Status {
    if (!handles::is_live(tcdH)) return {paramErr, "a description is needed"};
    const auto old_size = static_cast<size_t>(handles::size(tcdH));
    if (old_size < kSourceAt) {
      return {invalidSampleDescription, "a timecode description has at least 34 bytes"};
    }
    const auto* begin = reinterpret_cast<const uint8_t*>(*tcdH);
    Bytes description(begin, begin + kSourceAt);
    if (srefH == nullptr) {
      description.resize(kSourceAt + 4);  // the end of an empty list
    } else {
      TRY_ASSIGN(const UserDataList* list, find_user_data(srefH));
      const Bytes items = list->flat();
      description.insert(description.end(), items.begin(), items.end());
    }
    if (!set_description_size(description, static_cast<uint32_t>(old_size))) {
      return {invalidSampleDescription, "the description does not begin with its size"};
    }
    const OSErr error = handles::assign(tcdH, description);
    return error == noErr ? Status() : Status(error, "the handle cannot take the description");
  });
}

TOOLBOX_CALL ComponentResult TCSetTimeCodeFlags(MediaHandler mh, SInt32 flags, SInt32 flagsMask) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler& handler) -> Status {
    TRY_ASSIGN(TimecodeInfoAtom display, timecode_display(handler.media()));
    const auto mask = static_cast<uint32_t>(flagsMask);
    display.flags = (display.flags & ~mask) | (static_cast<uint32_t>(flags) & mask);
    return set_timecode_display(handler.media(), display);
  });
}

TOOLBOX_CALL ComponentResult TCGetTimeCodeFlags(MediaHandler mh, SInt32* flags) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler& handler) -> Status {
    TRY_ASSIGN(const TimecodeInfoAtom display, timecode_display(handler.media()));
    put(flags, static_cast<SInt32>(display.flags));
    return {};
  });
}

TOOLBOX_CALL ComponentResult TCSetDisplayOptions(MediaHandler mh,
                                                 const TCTextOptions* textOptions) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler& handler) -> Status {
    if (textOptions == nullptr) return {paramErr, "options of the display are needed"};
    TRY_ASSIGN(TimecodeInfoAtom display, timecode_display(handler.media()));
    display.font = textOptions->txFont;
    display.face = textOptions->txFace;
    display.size = textOptions->txSize;
    display.padding = static_cast<uint16_t>(textOptions->pad);
    display.color = engine_color(textOptions->foreColor);
    display.background = engine_color(textOptions->backColor);
    const std::string name = toolbox::text_font_name(textOptions->txFont);
    display.tail.assign(1, static_cast<uint8_t>(std::min<size_t>(name.size(), UINT8_MAX)));
    display.tail.insert(display.tail.end(), name.begin(), name.begin() + display.tail[0]);
    return set_timecode_display(handler.media(), display);
  });
}

TOOLBOX_CALL ComponentResult TCGetDisplayOptions(MediaHandler mh, TCTextOptions* textOptions) {
  return guarded_handler(mh, kTimecode, [&](toolbox::MediaHandler& handler) -> Status {
    TRY_ASSIGN(const TimecodeInfoAtom display, timecode_display(handler.media()));
    put(textOptions, TCTextOptions{.txFont = display.font,
                                   .txFace = display.face,
                                   .txSize = display.size,
                                   .pad = static_cast<SInt16>(display.padding),
                                   .foreColor = caller_color(display.color),
                                   .backColor = caller_color(display.background)});
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxParseTimeCode(const char* text, const TimeCodeDef* definition,
                                        TimeCodeRecord* record) {
  return guarded([&]() -> Status {
    if (text == nullptr || definition == nullptr || record == nullptr) return missing_argument();
    TRY_ASSIGN(const TimecodeRecord read, parse_timecode(engine_definition(*definition), text));
    *record = caller_record(read);
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxCheckTimeCodeDefinition(const TimeCodeDef* definition, Handle faults) {
  return guarded([&]() -> Status {
    if (definition == nullptr || !handles::is_live(faults)) return missing_argument();
    Bytes lines;
    for (const std::string& fault : timecode_faults(engine_definition(*definition))) {
      lines.insert(lines.end(), fault.begin(), fault.end());
      lines.push_back('\n');
    }
    const OSErr error = handles::assign(faults, lines);
    return error == noErr ? Status() : Status(error, "the handle cannot take the text");
  });
}

TOOLBOX_CALL OSErr ToolboxFindTimeCode(Track track, const char* text, TimeValue* time) {
  return guarded([&]() -> Status {
    if (text == nullptr || time == nullptr) return missing_argument();
    TRY_ASSIGN(const toolbox::Track* found, find_track(track));
    TRY_ASSIGN(const int64_t tick, find_timecode(*found, text));
    *time = to_time_value(tick);
    return {};
  });
}
