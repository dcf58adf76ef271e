#include "handlers/timecode_handler.h"

#include <algorithm>

#include "atoms/atom_reader.h"
#include "atoms/atom_writer.h"
#include "metadata/child_atoms.h"
#include "movie/movie.h"
#include "movie/read_samples.h"

namespace toolbox {

namespace {

constexpr FourCC kInfo = four_cc("gmhd");
constexpr size_t kAtomHeaderBytes = 8;
constexpr size_t kDefinitionBytes = 34;  // of a description, up to the source reference
constexpr size_t kInfoFieldsBytes = 24;  // up to the font's name

// Whether an item of user data stands there.
bool is_item(ByteView bytes) {
  ChildAtom item;
  return take_child(bytes, item) && item.type >> 24 >= ' ';
}

Status no_rate(const TimecodeDefinition& definition) {
  return {paramErr, "the timecode description states " + std::to_string(definition.frames) +
                        " frames a second, " + std::to_string(definition.time_scale) +
                        " units a second and " + std::to_string(definition.frame_duration) +
                        " units a frame; none may be 0"};
}

// A sample and what it takes to count on from it.
struct TimecodeSample {
  int64_t start = 0;     // media ticks
  int64_t duration = 0;  // media ticks
  int64_t frame = 0;
  TimecodeDefinition definition;
  ByteView description;
};

Result<int64_t> frame_in(const ReadSamples& read, const TimecodeDefinition& definition) {
  const Bytes& data = read.data;
  switch (read.bytes) {
    case sizeof(uint32_t): {
      const auto frame = load_big_endian<uint32_t>(data.data());
      // A number has a sign only where negative ones may be.
      const bool is_signed =
          definition.is_counter() || (definition.flags & TimecodeDefinition::kNegativeAllowed) != 0;
      return is_signed ? int64_t{static_cast<int32_t>(frame)} : int64_t{frame};
    }
    case sizeof(uint64_t):
      return clamped_time(load_big_endian<int64_t>(data.data()));
    default:
      return Status(invalidSampleTable, "a timecode sample has 4 or 8 bytes, this one has " +
                                            std::to_string(read.bytes));
  }
}

Result<TimecodeSample> sample_at(const Media& media, int64_t media_time) {
  // More than a sample may have is not read.
  TRY_ASSIGN(const ReadSamples read,
             read_samples(media, {.time = media_time, .most_samples = 1, .most_bytes = 64}));
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, media.descriptions());
  const uint32_t number = read.first.description;
  if (number == 0 || number > descriptions->size()) {
    return Status(invalidSampleDescIndex, "the timecode sample has description " +
                                              std::to_string(number) + ", which is missing");
  }
  TimecodeSample sample;
  sample.description = (*descriptions)[number - 1];
  TRY_ASSIGN(sample.definition, timecode_definition(sample.description));
  TRY_ASSIGN(sample.frame, frame_in(read, sample.definition));
  sample.start = read.first.times.display;
  sample.duration = read.first.times.delta;
  const TimecodeDefinition& definition = sample.definition;
  if (definition.time_scale <= 0 || definition.frame_duration <= 0 ||
      (definition.frames == 0 && !definition.is_counter())) {
    return no_rate(definition);
  }
  return sample;
}

// Frames that pass in a time of the media, rounded down.
int64_t frames_in(int64_t media_ticks, const Media& media, const TimecodeDefinition& definition) {
  return divide_down(Int128{media_ticks} * definition.time_scale,
                     Int128{media.time_scale()} * definition.frame_duration);
}

// The first media tick of a frame of a sample, from the sample's start.
int64_t ticks_of(int64_t frames, const Media& media, const TimecodeDefinition& definition) {
  return divide_up(Int128{frames} * media.time_scale() * definition.frame_duration,
                   definition.time_scale);
}

// The first tick in a part of a sample at which it has the time code; nothing when it has not.
std::optional<int64_t> find_in(const TimecodeSample& sample, const Media& media, int64_t from,
                               int64_t until, TimecodeRecord wanted) {
  const std::optional<int64_t> wanted_frame = frame_of_timecode(sample.definition, wanted);
  if (!wanted_frame) return std::nullopt;
  int64_t frames = *wanted_frame - sample.frame;
  const int64_t first = frames_in(from - sample.start, media, sample.definition);
  if ((sample.definition.flags & TimecodeDefinition::k24Hours) != 0 &&
      !sample.definition.is_counter()) {
    // The label comes again each day: the first that is not over yet.
    const int64_t day = sample.definition.frames_a_day();
    frames += divide_up(Int128{first} - frames, day) * day;
  }
  if (frames < first) return std::nullopt;
  const int64_t tick = std::max(sample.start + ticks_of(frames, media, sample.definition), from);
  if (tick >= until) return std::nullopt;
  return tick;
}

// The bytes of the media's own header: what was set, else what the file has; empty for none.
Result<Bytes> info_bytes(const Media& media) {
  if (const AtomChanges::Change* change = media.info_atom_changes().find(kInfo)) {
    return change->atom.value_or(Bytes());
  }
  if (media.atom() == kNoAtom) return Bytes();
  const AtomTree& tree = media.track().movie().opened().tree;
  const AtomIndex gmhd = tree.find_path(media.atom(), {four_cc("minf"), kInfo});
  if (gmhd == kNoAtom) return Bytes();
  const ByteRange whole = tree.whole(gmhd);
  if (whole.size > kLargestLoadedAtom) {
    return Status(memFullErr, "the header of the timecode media is too large");
  }
  Bytes bytes(whole.size);
  TRY(whole.source->read(whole.offset, bytes));
  return bytes;
}

// The payload of the first child of that type; nothing when there is none.
std::optional<ByteView> find_payload(ByteView children, FourCC type) {
  ChildAtom child;
  while (take_child(children, child)) {
    if (child.type == type) return child.payload;
  }
  return std::nullopt;
}

bool is_pascal_string(ByteView bytes) {
  if (bytes.empty()) return false;
  const size_t end = size_t{1} + bytes[0];
  return end <= bytes.size() && std::all_of(bytes.begin() + static_cast<ptrdiff_t>(end),
                                            bytes.end(), [](uint8_t byte) { return byte == 0; });
}

TimecodeInfoAtom read_display(ByteView payload) {
  constexpr size_t kPaddingAt = 10;
  Bytes padded = to_bytes(payload);
  const bool lacks_padding =
      payload.size() >= kInfoFieldsBytes - 1 &&
      !is_pascal_string(payload.subspan(std::min(kInfoFieldsBytes, payload.size()))) &&
      is_pascal_string(payload.subspan(kInfoFieldsBytes - 2));
  if (lacks_padding) padded.insert(padded.begin() + kPaddingAt, 2, 0);
  AtomReader reader({nullptr, 0, padded.size()}, padded);
  TimecodeInfoAtom display;
  reader.full_header(display.version, display.flags, TimecodeInfoAtom::kType.max_version);
  display.fields(reader);
  reader.tail(display.tail);
  return reader.ok() ? display : TimecodeInfoAtom{};
}

// Writes the children of an atom again, with `write` in the place of the first of that type, or
// behind them. Loose bytes stay at the end.
template <class Write>
void rewrite(AtomWriter& writer, ByteView children, FourCC type, Write write) {
  bool is_written = false;
  ByteView rest = children;
  ChildAtom child;
  for (ByteView from = rest; take_child(rest, child); from = rest) {
    if (child.type == type && !is_written) {
      write(child.payload);
      is_written = true;
    } else {
      writer.raw(from.first(from.size() - rest.size()));
    }
  }
  if (!is_written) write({});
  writer.raw(rest);
}

}  // namespace

Result<TimecodeDefinition> timecode_definition(ByteView description) {
  if (description.size() < kDefinitionBytes) {
    return Status(invalidSampleDescription, "the timecode description has " +
                                                std::to_string(description.size()) +
                                                " bytes; it takes 34");
  }
  const ByteView payload = description.subspan(kAtomHeaderBytes);
  AtomReader reader({nullptr, 0, payload.size()}, payload);
  TimecodeDescription stored;
  stored.fields(reader);
  TimecodeDefinition definition{.flags = stored.flags,
                                .time_scale = static_cast<int32_t>(stored.time_scale),
                                .frame_duration = static_cast<int32_t>(stored.frame_duration),
                                .frames = stored.frames};
  if (definition.time_scale > 0 && definition.frame_duration > 0 && !definition.is_counter()) {
    const int64_t needed = divide_up(definition.time_scale, definition.frame_duration);
    const int64_t nearest = divide_nearest(definition.time_scale, definition.frame_duration);
    if (needed == nearest && needed == definition.frames + 1 && needed <= UINT8_MAX) {
      definition.frames = static_cast<uint8_t>(needed);
    }
  }
  return definition;
}

ByteView timecode_source(ByteView description) {
  for (const size_t place : {kDefinitionBytes, kDefinitionBytes + 2}) {
    if (place < description.size() && is_item(description.subspan(place))) {
      return description.subspan(place);
    }
  }
  return {};
}

Result<MediaTimecode> timecode_at(const Media& media, int64_t media_time) {
  TRY_ASSIGN(const TimecodeSample sample, sample_at(media, media_time));
  MediaTimecode timecode{
      .frame = sample.frame + frames_in(media_time - sample.start, media, sample.definition),
      .definition = sample.definition,
      .record = {},
      .source = timecode_source(sample.description)};
  timecode.record =
      timecode_of_frame(timecode.definition, timecode.frame).value_or(TimecodeRecord());
  return timecode;
}

Result<int64_t> find_timecode(const Track& track, std::string_view text) {
  const Media* const media = track.media();
  if (media == nullptr || media->type() != four_cc("tmcd")) {
    return Status(invalidMedia, "track " + std::to_string(track.id()) + " is no timecode track");
  }
  // Edits may show the same samples again and again, in damaged files without end.
  constexpr int kMostSamples = 1'000'000;
  int looked_at = 0;
  Status unread;  // why no sample could have the label
  bool is_read = false;
  const EditTimeline& timeline = track.timeline();
  for (const EditSpan& span : timeline.spans()) {
    if (span.is_empty() || span.duration == 0) continue;
    const int64_t end =
        span.is_held() ? span.media_start + 1 : span.media_time(span.end(), timeline.scales());
    for (int64_t at = span.media_start; at < end;) {
      if (++looked_at > kMostSamples) {
        return Status(featureUnsupported,
                      "the track shows more timecode samples than are searched");
      }
      Result<TimecodeSample> found = sample_at(*media, at);
      if (found.status().code() == timeNotInMedia) break;  // an edit may reach beyond its media
      TRY_ASSIGN(const TimecodeSample sample, std::move(found));
      const int64_t until = std::min(end, sample.start + std::max<int64_t>(sample.duration, 1));
      Result<TimecodeRecord> wanted = parse_timecode(sample.definition, text);
      if (!wanted.ok()) {
        unread = wanted.take_status();
      } else {
        is_read = true;
        if (const auto tick = find_in(sample, *media, at, until, wanted.value())) {
          const int64_t shown =
              span.is_held() ? span.start : span.first_tick(*tick, timeline.scales());
          if (shown < span.end()) return std::max(shown, span.start);
        }
      }
      at = std::max(until, at + 1);
    }
  }
  if (!is_read && !unread.ok()) return unread;
  return Status(timeNotInTrack, "the timecode track never shows " + std::string(text));
}

Result<TimecodeInfoAtom> timecode_display(const Media& media) {
  TRY_ASSIGN(const Bytes info, info_bytes(media));
  if (info.size() < kAtomHeaderBytes) return TimecodeInfoAtom();
  const auto tmcd = find_payload(ByteView(info).subspan(kAtomHeaderBytes), four_cc("tmcd"));
  const auto tcmi = tmcd ? find_payload(*tmcd, four_cc("tcmi")) : std::nullopt;
  return tcmi ? read_display(*tcmi) : TimecodeInfoAtom();
}

Status set_timecode_display(Media& media, const TimecodeInfoAtom& display) {
  TRY_ASSIGN(const Bytes info, info_bytes(media));
  ByteView children = info;
  children = children.subspan(std::min(children.size(), kAtomHeaderBytes));
  AtomWriter writer;
  const auto gmhd = writer.begin(kInfo);
  if (!find_payload(children, four_cc("gmin"))) writer.atom(GenericMediaInfoAtom());
  rewrite(writer, children, four_cc("tmcd"), [&](ByteView payload) {
    const auto tmcd = writer.begin(four_cc("tmcd"));
    rewrite(writer, payload, four_cc("tcmi"), [&](ByteView) { writer.atom(display); });
    writer.end(tmcd);
  });
  writer.end(gmhd);
  // The header that says nothing makes way for the one that says this.
  AtomChanges& atoms = media.change_info_atoms();
  if (info.empty()) atoms.remove(four_cc("nmhd"));
  atoms.replace(kInfo, writer.take());
  return {};
}

}  // namespace toolbox
