#include "movies.h"

#include <cstdio>
#include <cstdlib>
#include <span>

#include "base/big_endian.h"
#include "file/movie_builder.h"

namespace bench {

namespace {

void write(const toolbox::BuiltMovie& movie, const std::filesystem::path& path) {
  const toolbox::Status status = toolbox::write_movie(movie, path.string());
  if (status.ok()) return;
  std::fprintf(stderr, "%s\n", status.message().c_str());
  std::exit(1);
}

/// Every table at full length: a time, an offset, a size and a chunk of its own for every sample.
toolbox::BuiltTrack long_track(uint32_t samples) {
  using toolbox::Rows;
  toolbox::BuiltTrack track = toolbox::video_track(1280, 720, samples, 25, 600);
  track.durations = Rows::generated(samples, [](uint32_t i) {
    return Rows::Row{1, 24 + i % 3, 0};
  });
  track.display_offsets = Rows::generated(samples, [](uint32_t i) {
    return Rows::Row{1, i % 3 * 25, 0};
  });
  track.sync_samples = Rows::generated(samples / 12, [](uint32_t i) {
    return Rows::Row{i * 12 + 1, 0, 0};
  });
  track.sample_size = 0;
  track.size_of = [](uint32_t i) { return 900 + i % 200; };
  track.wide_chunk_offsets = true;
  return track;
}

/// What a decoder of H.264 needs to know of a 320 x 240 picture, and one of AAC of its sound: whole
/// atoms that stand in the sample descriptions.
constexpr uint8_t kVideoSettings[] = {
    0x00, 0x00, 0x00, 0x34, 0x61, 0x76, 0x63, 0x43, 0x01, 0xf4, 0x00, 0x0d, 0xff,
    0xe1, 0x00, 0x18, 0x67, 0xf4, 0x00, 0x0d, 0x91, 0x96, 0x81, 0x41, 0xfb, 0x01,
    0x10, 0x00, 0x00, 0x03, 0x00, 0x10, 0x00, 0x00, 0x03, 0x03, 0x20, 0xf1, 0x42,
    0xaa, 0x01, 0x00, 0x05, 0x68, 0xce, 0x0f, 0x19, 0x20, 0xff, 0xf8, 0xf8, 0x00};
constexpr uint8_t kSoundSettings[] = {
    0x00, 0x00, 0x00, 0x36, 0x65, 0x73, 0x64, 0x73, 0x00, 0x00, 0x00, 0x00, 0x03, 0x80,
    0x80, 0x80, 0x25, 0x00, 0x02, 0x00, 0x04, 0x80, 0x80, 0x80, 0x17, 0x40, 0x15, 0x00,
    0x00, 0x00, 0x00, 0x01, 0x0e, 0x8d, 0x00, 0x01, 0x0e, 0x8d, 0x05, 0x80, 0x80, 0x80,
    0x05, 0x12, 0x08, 0x56, 0xe5, 0x00, 0x06, 0x80, 0x80, 0x80, 0x01, 0x02};

/// The same track under another data format. The samples are a hole, but the formats are those that
/// most movies hold, and the tools that decode to inspect find what they look for.
toolbox::BuiltTrack with_format(toolbox::BuiltTrack track, toolbox::FourCC format,
                                std::span<const uint8_t> settings) {
  toolbox::Bytes& description = track.descriptions.front();
  description.insert(description.end(), settings.begin(), settings.end());
  toolbox::store_big_endian(description.data(), static_cast<uint32_t>(description.size()));
  toolbox::store_big_endian(description.data() + 4, format);
  return track;
}

/// Ten seconds of H.264 video, and of AAC sound, as far as their tables go.
toolbox::BuiltTrack compressed_video() {
  toolbox::BuiltTrack track = toolbox::video_track(320, 240, 250, 24);
  track.sample_size = 4000;
  return with_format(std::move(track), toolbox::four_cc("avc1"), kVideoSettings);
}

toolbox::BuiltTrack compressed_sound() {
  toolbox::BuiltTrack track = toolbox::sound_track(2, 431);
  track.durations = toolbox::Rows::of({{431, 1024, 0}});
  track.sample_size = 371;
  track.samples_per_chunk = 10;
  return with_format(std::move(track), toolbox::four_cc("mp4a"), kSoundSettings);
}

}  // namespace

void write_two_hours(const std::filesystem::path& path, uint64_t media_bytes,
                     toolbox::BuiltMovie::Brand brand) {
  constexpr uint32_t kPictures = 2 * 3600 * 30;
  constexpr uint32_t kPackets = 2 * 3600 * 48000 / 1024;
  const auto average = static_cast<uint32_t>(media_bytes / (kPictures + kPackets));
  const auto size_of = [average](uint32_t i) { return average - average / 4 + i % (average / 2); };
  toolbox::BuiltMovie movie;
  toolbox::BuiltTrack video = toolbox::video_track(1920, 1080, kPictures, 1000, 30000);
  video.display_offsets = toolbox::Rows::generated(kPictures, [](uint32_t i) {
    return toolbox::Rows::Row{1, i % 3 * 1000, 0};
  });
  video.sync_samples = toolbox::Rows::generated(kPictures / 60, [](uint32_t i) {
    return toolbox::Rows::Row{i * 60 + 1, 0, 0};
  });
  toolbox::BuiltTrack sound = toolbox::sound_track(2, kPackets, 48000);
  sound.durations = toolbox::Rows::of({{kPackets, 1024, 0}});
  for (toolbox::BuiltTrack* track : {&video, &sound}) {
    track->sample_size = 0;
    track->size_of = size_of;
    track->samples_per_chunk = 4;
    track->wide_chunk_offsets = true;
    movie.tracks.push_back(std::move(*track));
  }
  movie.brand = brand;
  movie.place = toolbox::BuiltMovie::MoviePlace::kBehindMedia;
  write(movie, path);
}

void write_long_movie(const std::filesystem::path& path, uint32_t samples) {
  toolbox::BuiltMovie movie;
  movie.tracks = {long_track(samples)};
  write(movie, path);
}

Movies make_movies(const std::filesystem::path& folder) {
  const Movies movies = {folder / "ten-seconds.mov", folder / "ten-million-samples.mov",
                         folder / "two-hundred-tracks.mov"};
  toolbox::BuiltMovie small;
  small.tracks = {compressed_video(), compressed_sound()};
  write(small, movies.ten_seconds);

  write_long_movie(movies.ten_million_samples, 10'000'000);

  toolbox::BuiltMovie many;
  for (int i = 0; i < 100; ++i) {
    many.tracks.push_back(compressed_video());
    many.tracks.push_back(compressed_sound());
  }
  write(many, movies.two_hundred_tracks);
  return movies;
}

}  // namespace bench
