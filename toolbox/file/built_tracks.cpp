// Ready-made tracks for movie_builder.h.
#include "atoms/atom_writer.h"
#include "file/movie_builder.h"

namespace toolbox {

namespace {

BuiltTrack plain_track(FourCC media_type, uint32_t time_scale) {
  BuiltTrack track;
  track.header.flags = TrackHeaderAtom::kEnabled | TrackHeaderAtom::kInMovie |
                       TrackHeaderAtom::kInPreview | TrackHeaderAtom::kInPoster;
  track.media.time_scale = time_scale;
  track.handler.component_type = four_cc("mhlr");
  track.handler.subtype = media_type;
  return track;
}

void set_samples(BuiltTrack& track, uint32_t count, uint32_t size, uint32_t ticks) {
  track.sample_count = count;
  track.sample_size = size;
  if (count > 0) track.durations = Rows::of({{count, ticks, 0}});
}

/// A description from its struct, with its size and data format in front.
template <class Description>
Bytes description_bytes(FourCC format, const Description& description) {
  AtomWriter writer;
  writer.atom(format, description);
  return writer.take();
}

Bytes text_description() {
  AtomWriter writer;
  DescriptionHeader header;
  header.tail.resize(59 - 16);  // display flags, box, style; an empty font name
  header.tail[27] = 16;         // line height
  header.tail[29] = 13;         // ascent
  header.tail[35] = 12;         // size
  writer.atom(four_cc("text"), header);
  return writer.take();
}

}  // namespace

BuiltTrack video_track(uint16_t width, uint16_t height, uint32_t frames, uint32_t frame_ticks,
                       uint32_t time_scale) {
  BuiltTrack track = plain_track(four_cc("vide"), time_scale);
  track.header.width = width << 16;
  track.header.height = height << 16;
  VideoDescription description;
  description.width = width;
  description.height = height;
  track.descriptions = {description_bytes(four_cc("raw "), description)};
  set_samples(track, frames, uint32_t{width} * height * 3, frame_ticks);
  return track;
}

BuiltTrack sound_track(uint16_t channels, uint32_t frames, uint32_t rate) {
  BuiltTrack track = plain_track(four_cc("soun"), rate);
  track.header.volume = 0x0100;
  SoundDescription description;
  description.channels = channels;
  description.sample_rate = rate << 16;
  track.descriptions = {description_bytes(four_cc("twos"), description)};
  set_samples(track, frames, uint32_t{channels} * 2, 1);
  track.samples_per_chunk = rate;
  return track;
}

BuiltTrack text_track(const std::vector<std::pair<std::string, uint32_t>>& texts,
                      uint32_t time_scale) {
  BuiltTrack track = plain_track(four_cc("text"), time_scale);
  track.descriptions = {text_description()};
  std::vector<Rows::Row> durations;
  std::vector<uint32_t> sizes;
  for (const auto& [text, ticks] : texts) {
    durations.push_back({1, ticks, 0});
    sizes.push_back(static_cast<uint32_t>(text.size()) + 2);
    track.data.push_back(static_cast<uint8_t>(text.size() >> 8));
    track.data.push_back(static_cast<uint8_t>(text.size()));
    track.data.insert(track.data.end(), text.begin(), text.end());
  }
  track.sample_count = static_cast<uint32_t>(texts.size());
  track.size_of = [sizes = std::move(sizes)](uint32_t sample) { return sizes[sample]; };
  track.durations = Rows::of(std::move(durations));
  return track;
}

BuiltTrack timecode_track(uint32_t first_frame, uint32_t duration, uint32_t time_scale,
                          uint32_t frame_duration, uint8_t frames_per_second, uint32_t flags) {
  BuiltTrack track = plain_track(four_cc("tmcd"), time_scale);
  DescriptionHeader header;
  AtomWriter fields;
  const std::array<uint32_t, 4> numbers = {0, flags, time_scale, frame_duration};
  for (uint32_t number : numbers) fields(nullptr, number);
  const std::array<uint8_t, 6> rest = {
      frames_per_second};  // padding, and an empty source reference
  fields.raw(rest);
  header.tail = fields.take();
  track.descriptions = {description_bytes(four_cc("tmcd"), header)};
  set_samples(track, 1, 4, duration);
  track.data.resize(4);
  store_big_endian(track.data.data(), first_frame);
  return track;
}

BuiltTrack other_track(FourCC media_type, Bytes description, uint32_t samples, uint32_t sample_size,
                       uint32_t sample_ticks, uint32_t time_scale) {
  BuiltTrack track = plain_track(media_type, time_scale);
  track.descriptions = {std::move(description)};
  set_samples(track, samples, sample_size, sample_ticks);
  return track;
}

}  // namespace toolbox
