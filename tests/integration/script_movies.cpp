#include "integration/script_movies.h"

#include <algorithm>
#include <fstream>
#include <sstream>

#include "atoms/atom_writer.h"
#include "integration/described_movie.h"
#include "integration/sound_movies.h"
#include "toolbox/test_movies.h"

namespace krz::test {
namespace {

using toolbox::BuiltMovie;
using toolbox::BuiltTrack;
using toolbox::Bytes;
using toolbox::four_cc;
using toolbox::kFixedOne;
using toolbox::TrackHeaderAtom;

BuiltTrack small_video() { return toolbox::video_track(16, 16, 10, 60); }

BuiltTrack with_id(BuiltTrack track, uint32_t id, bool enabled) {
  track.header.track_id = id;
  if (!enabled) track.header.flags &= ~uint32_t{TrackHeaderAtom::kEnabled};
  return track;
}

BuiltMovie lookup() {
  BuiltMovie movie;
  movie.tracks = {with_id(small_video(), 70, false), with_id(toolbox::sound_track(1, 100), 3, true),
                  with_id(small_video(), 2000, true),
                  with_id(toolbox::sound_track(1, 50), 5, false),
                  with_id(toolbox::text_track({{"text", 60}}), 9, true)};
  return movie;
}

BuiltMovie headers() {
  BuiltMovie movie;
  BuiltTrack track = small_video();
  track.header.creation_time = 0xE0000000;  // after 2^31 seconds
  track.header.modification_time = 0xFFFFFFFF;
  track.header.layer = -3;
  track.header.volume = -384;
  track.header.width = 0x0280'E666;  // 640.9
  track.header.height = -0x8000;     // minus a half
  track.header.matrix = {0x8000, 1, -2, -0x10000, 0, 3, 0x00640000, -0x00140000, 0x40000000};
  movie.tracks = {track};
  return movie;
}

BuiltMovie old_headers() {
  BuiltMovie movie;
  BuiltTrack track = toolbox::sound_track(1, 88200);
  track.header.creation_time = 0x1'0000'0005;
  track.header.modification_time = 0x1'8000'0000;
  track.header.volume = 0x0180;
  track.header.layer = 32767;
  movie.tracks = {track};
  return movie;
}

BuiltMovie rates() {
  BuiltMovie movie;
  movie.tracks = {small_video()};
  movie.tracks[0].edits.emplace();
  movie.tracks[0].edits->entries = {
      {600, 0, kFixedOne / 2}, {150, 300, 2 * kFixedOne}, {100, 130, 0}};
  return movie;
}

BuiltMovie ntsc() {
  BuiltMovie movie;
  movie.tracks = {toolbox::video_track(16, 16, 3, 1001, 30000)};
  return movie;
}

BuiltMovie ntsc_long() {
  BuiltMovie movie;
  movie.tracks = {toolbox::video_track(16, 16, 1800, 1001, 30000)};
  return movie;
}

BuiltMovie long_movie() {
  BuiltMovie movie;
  movie.tracks = {toolbox::video_track(16, 16, 4, 0x4000'0000)};
  return movie;
}

BuiltMovie descriptions() {
  BuiltMovie movie;
  BuiltTrack track = small_video();
  // Twenty bytes: size, format, six reserved bytes, the second file, four bytes of its own.
  const Bytes second = {0, 0, 0, 20, 'j', 'p', 'e', 'g', 0, 0, 0, 0, 0, 0, 0, 2, 1, 2, 3, 0xFF};
  track.descriptions.push_back(second);
  const Bytes in_this_file = {0, 0, 0, 1};
  const Bytes elsewhere = {0, 0, 0, 0, 'f', 'i', 'l', 'e', ':', '/', '/', '/', 'x', 0};
  track.data_references = {toolbox::atom_bytes(four_cc("url "), in_this_file),
                           toolbox::atom_bytes(four_cc("url "), elsewhere)};
  movie.tracks = {track};
  return movie;
}

/// A text track of samples as they are, 60 ticks each.
BuiltTrack raw_text_track(const std::vector<std::string>& samples) {
  std::vector<std::pair<std::string, uint32_t>> places(samples.size(), {"", 60});
  BuiltTrack track = toolbox::text_track(places);
  track.data.clear();
  for (const std::string& sample : samples)
    track.data.insert(track.data.end(), sample.begin(), sample.end());
  track.size_of = [samples](uint32_t sample) {
    return static_cast<uint32_t>(samples[sample].size());
  };
  return track;
}

BuiltMovie odd_text() {
  using namespace std::string_literals;
  BuiltMovie movie;
  // A sample of no bytes at all is missing: the builder takes a size of 0 for none given.
  movie.tracks = {
      small_video(),
      raw_text_track({
          "\0\6\xFE\xFF\0H\0i\0\0\0\x0C"s + "encd\0\0\1\0"s,  // marked, big-endian
          "\0\6\xFF\xFEH\0i\0"s,                              // marked, little-endian
          "\0\5\xEF\xBB\xBFHi"s,                              // UTF-8 with its mark
          "\0\3\xC3\xA9x\0\0\0\x0C"s + "encd\0\0\1\0"s,       // UTF-8 as other tools write it
          "\0\2\x8Ex"s,                                       // MacRoman
          "\0\0"s,                                            // empty
          "\xFF\xFFshort"s,                                   // lies about its length
          "\0\2Hi\xFF\xFF\xFF\xFFhlit"s,                      // a lying extension
          "\0\2Hi\0\0\0\0\0\0\0\0"s,                          // an extension without a size
          "\0"s,                                              // half a length
          "\0\3\xFE\xFF\0"s,                                  // half a character
      })};
  movie.tracks[0].references = {{four_cc("chap"), {2}}};
  return movie;
}

/// Chapters of chapters: each track names the other, and the text track itself, too.
BuiltMovie circles() {
  BuiltMovie movie;
  movie.tracks = {small_video(), toolbox::text_track({{"one", 300}, {"two", 300}})};
  movie.tracks[0].references = {{four_cc("chap"), {2, 2, 99}}, {four_cc("sync"), {2}}};
  movie.tracks[1].references = {{four_cc("chap"), {2, 1}}};
  return movie;
}

BuiltMovie silent() {
  BuiltMovie movie;
  movie.tracks = {toolbox::sound_track(2, 0)};
  return movie;
}

BuiltMovie damaged() {
  BuiltMovie movie;
  movie.tracks = {small_video()};
  TrackHeaderAtom header;
  header.track_id = 2;
  header.flags = TrackHeaderAtom::kEnabled;
  header.layer = -7;
  toolbox::AtomWriter track;
  const auto mark = track.begin(four_cc("trak"));
  track.atom(header);
  track.end(mark);
  movie.more_in_movie = track.take();
  return movie;
}

/// Samples of no bytes, of a gibibyte that is not there, and of a description that is not there.
BuiltMovie huge_samples() {
  BuiltMovie movie;
  BuiltTrack empty = small_video();
  empty.size_of = [](uint32_t sample) { return sample == 1 ? 5u : 0u; };
  empty.sample_size = 0;
  empty.data = {1, 2, 3, 4, 5};
  BuiltTrack huge = small_video();
  huge.stated_sample_size = 1 << 30;
  BuiltTrack undescribed = small_video();
  undescribed.chunk_runs = {{1, 1, 1}, {2, 1, 9}};
  movie.tracks = {empty, huge, undescribed};
  return movie;
}

BuiltMovie clipped() {
  BuiltMovie movie;
  movie.tracks = {toolbox::video_track(32, 48, 2, 60)};
  const Bytes region = {0,    36,   0, 0,  0,    0,    0, 40, 0,    30,   0,    0,
                        0,    0,    0, 10, 0x7F, 0xFF, 0, 20, 0,    10,   0,    30,
                        0x7F, 0xFF, 0, 40, 0,    0,    0, 30, 0x7F, 0xFF, 0x7F, 0xFF};
  movie.tracks[0].more_in_track =
      toolbox::atom_bytes(four_cc("clip"), toolbox::atom_bytes(four_cc("crgn"), region));
  return movie;
}

/// Lets the first table of durations in a file claim far more rows than it has.
void claim_too_many_durations(const std::string& path) {
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  const size_t type = content.str().find("stts");
  constexpr size_t kFromTypeToCount = 8;
  file.seekp(static_cast<std::streamoff>(type + kFromTypeToCount));
  file.write("\x7F\xFF\xFF\xFF", 4);
}

struct NamedMovie {
  std::string_view name;
  BuiltMovie (*make)();
};

constexpr NamedMovie kMovies[] = {
    {"lookup", lookup},
    {"headers", headers},
    {"old-headers", old_headers},
    {"rates", rates},
    {"ntsc", ntsc},
    {"ntsc-long", ntsc_long},
    {"descriptions", descriptions},
    {"odd-text", odd_text},
    {"circles", circles},
    {"silent", silent},
    {"long", long_movie},
    {"damaged", damaged},
    {"described", described_movie},
    {"huge-samples", huge_samples},
    {"tone", tone_movie},
    {"broken-sound", broken_sound_movie},
    {"anamorphic", anamorphic_movie},
    {"bad-apertures", bad_aperture_movie},
    {"clipped", clipped},
};

}  // namespace

toolbox::Status write_script_movie(std::string_view name, const std::string& path) {
  const auto& common = toolbox::kTestMovies;
  if (std::find(std::begin(common), std::end(common), name) != std::end(common)) {
    return toolbox::write_movie(toolbox::test_movie(name), path);
  }
  for (const NamedMovie& movie : kMovies) {
    if (movie.name != name) continue;
    TRY(toolbox::write_movie(movie.make(), path));
    if (name == "damaged") claim_too_many_durations(path);
    return {};
  }
  return {paramErr, "there is no test movie \"" + std::string(name) + "\""};
}

}  // namespace krz::test
