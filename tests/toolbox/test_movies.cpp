#include "test_movies.h"

#include <cstdio>
#include <cstdlib>

#include "built_fragments.h"

namespace toolbox {

const char* const kTestMovies[7] = {"two-tracks", "edited",    "chapters", "timecode",
                                    "tables",     "fragments", "empty"};

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

// A second of video and sound, and its media data.
Bytes small_fragment(uint32_t number, uint64_t video_time, uint64_t sound_time) {
  using Run = TrackRunAtom;
  constexpr uint32_t kSoundBytes = 100;
  BuiltPart video;
  video.header.track_id = 1;
  video.header.flags = TrackFragmentHeaderAtom::kDefaultBaseIsFragment;
  video.decode_time = video_time;
  BuiltRun pictures{
      .flags = Run::kDataOffset | Run::kFirstSampleFlags | Run::kSizes | Run::kDisplayOffsets,
      .sample_count = 10,
      .first_sample_flags = 0x02000000};
  uint32_t media_bytes = kSoundBytes;
  for (uint32_t i = 0; i < pictures.sample_count; ++i) {
    pictures.add(20 + i);
    pictures.add((i % 2) * 60);
    media_bytes += 20 + i;
  }
  video.runs = {pictures};
  BuiltPart sound;
  sound.header.track_id = 2;
  sound.decode_time = sound_time;
  BuiltRun frames{.flags = Run::kDurations, .sample_count = 4};
  for (const uint32_t ticks : {2000, 2000, 2000, 2000}) frames.add(ticks);
  sound.runs = {frames};
  std::vector<BuiltPart> parts = {video, sound};
  const size_t length = fragment_bytes(number, parts).size();
  parts[0].runs[0].data_offset = static_cast<int32_t>(length) + 8;
  Bytes fragment = fragment_bytes(number, parts);
  const Bytes data = atom_bytes(four_cc("mdat"), Bytes(media_bytes));
  fragment.insert(fragment.end(), data.begin(), data.end());
  return fragment;
}

BuiltMovie fragmented_movie() {
  BuiltMovie movie;
  movie.tracks = {video_track(16, 16, 10, 60), sound_track(1, 0, 8000)};
  TrackExtendsAtom video;
  video.track_id = 1;
  video.sample_duration = 60;
  video.sample_flags = 0x01010000;
  TrackExtendsAtom sound;
  sound.track_id = 2;
  sound.sample_size = 25;
  movie.more_in_movie = movie_extends_bytes({video, sound});
  movie.behind_movie = small_fragment(1, 600, 0);
  const Bytes second = small_fragment(2, 1230, 8000);  // behind a gap
  movie.behind_movie.insert(movie.behind_movie.end(), second.begin(), second.end());
  return movie;
}

}  // namespace

std::vector<std::filesystem::path> corpus() {
  std::vector<std::filesystem::path> files;
  std::error_code missing;
  for (const auto& entry : std::filesystem::directory_iterator(
           std::filesystem::path(KRZ_SOURCE_DIR) / "../shared/corpus", missing)) {
    if (entry.path().extension() != ".tsv") files.push_back(entry.path());
  }
  return files;
}

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
  } else if (name == "fragments") {
    movie = fragmented_movie();
  } else if (name != "empty") {
    std::fprintf(stderr, "there is no test movie \"%.*s\"\n", static_cast<int>(name.size()),
                 name.data());
    std::abort();
  }
  return movie;
}

}  // namespace toolbox
