#include "movies.h"

#include <cstdio>
#include <cstdlib>

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

}  // namespace

Movies make_movies(const std::filesystem::path& folder) {
  const Movies movies = {folder / "ten-seconds.mov", folder / "ten-million-samples.mov",
                         folder / "two-hundred-tracks.mov"};
  toolbox::BuiltMovie small;
  small.tracks = {toolbox::video_track(320, 240, 250, 24), toolbox::sound_track(2, 441000)};
  write(small, movies.ten_seconds);

  toolbox::BuiltMovie large;
  large.tracks = {long_track(10'000'000)};
  write(large, movies.ten_million_samples);

  toolbox::BuiltMovie many;
  for (int i = 0; i < 200; ++i) many.tracks.push_back(toolbox::video_track(64, 48, 250, 24));
  write(many, movies.two_hundred_tracks);
  return movies;
}

}  // namespace bench
