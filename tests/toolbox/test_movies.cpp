#include "test_movies.h"

#include <cstdio>
#include <cstdlib>

namespace toolbox {

const char* const kTestMovies[6] = {"two-tracks", "edited", "chapters",
                                    "timecode",   "tables", "empty"};

namespace {

BuiltTrack small_video() { return video_track(320, 240, 100, 60); }

BuiltTrack track_with_all_tables() {
  BuiltTrack track = video_track(16, 16, 12, 50);
  track.sample_size = 0;
  track.size_of = [](uint32_t sample) { return 20 + sample % 3; };
  track.durations = Rows::of({{4, 50, 0}, {8, 25, 0}});
  track.display_offsets = Rows::of({{6, 50, 0}, {6, static_cast<uint32_t>(-25), 0}});
  track.sync_samples = Rows::of({{1}, {5}, {9}});
  track.partial_sync_samples = Rows::of({{3}});
  track.sample_dependencies = Bytes(12, 0x20);
  track.samples_per_chunk = 5;
  track.wide_chunk_offsets = true;
  for (uint32_t sample = 0; sample < 12; ++sample) {
    track.data.insert(track.data.end(), track.size_of(sample), static_cast<uint8_t>(sample));
  }
  return track;
}

}  // namespace

BuiltMovie test_movie(std::string_view name) {
  BuiltMovie movie;
  if (name == "two-tracks") {
    movie.tracks = {small_video(), sound_track(2, 441000)};
  } else if (name == "edited") {
    movie.tracks = {small_video()};
    movie.tracks[0].edits.emplace();
    movie.tracks[0].edits->entries = {{300, -1, kFixedOne}, {4800, 1200, kFixedOne}};
  } else if (name == "chapters") {
    movie.tracks = {small_video(), text_track({{"One", 1200}, {"Two", 1800}, {"Three", 3000}})};
    movie.tracks[0].references = {{four_cc("chap"), {2}}};
    movie.tracks[1].header.flags &= ~uint32_t{TrackHeaderAtom::kEnabled};
  } else if (name == "timecode") {
    constexpr uint32_t kDropFrame = 1;
    movie.tracks = {small_video(), timecode_track(107892, 300300, 30000, 1001, 30, kDropFrame)};
    movie.tracks[0].references = {{four_cc("tmcd"), {2}}};
  } else if (name == "tables") {
    movie.tracks = {track_with_all_tables()};
  } else if (name != "empty") {
    std::fprintf(stderr, "there is no test movie \"%.*s\"\n", static_cast<int>(name.size()),
                 name.data());
    std::abort();
  }
  return movie;
}

}  // namespace toolbox
