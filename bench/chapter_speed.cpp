#include "chapter_speed.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>

#include "movies.h"
#include "process.h"
#include "saving/saving.h"

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr int kRounds = 7;
constexpr uint64_t kMediaBytes = 12 << 20;
constexpr int kMovieMilliseconds = 2 * 3600 * 1000;

std::string title(int number) { return "Chapter " + std::to_string(number); }

/// A list of chapters over the whole movie, as people write one.
fs::path write_list(const fs::path& folder, int count) {
  const fs::path path = folder / (std::to_string(count) + "-chapters.txt");
  std::ofstream list(path);
  for (int i = 0; i < count; ++i) {
    const auto at = static_cast<int>(static_cast<int64_t>(kMovieMilliseconds) * i / count);
    char line[64];
    std::snprintf(line, sizeof line, "%02d:%02d:%02d.%03d %s\n", at / 3600000, at / 60000 % 60,
                  at / 1000 % 60, at % 1000, title(i).c_str());
    list << line;
  }
  return path;
}

/// The same chapters for ffmpeg.
fs::path write_ffmpeg_list(const fs::path& folder, int count) {
  const fs::path path = folder / "chapters.ffmetadata";
  std::ofstream list(path);
  list << ";FFMETADATA1\n";
  for (int i = 0; i < count; ++i) {
    const auto start = static_cast<int64_t>(kMovieMilliseconds) * i / count;
    const auto end = static_cast<int64_t>(kMovieMilliseconds) * (i + 1) / count;
    list << "[CHAPTER]\nTIMEBASE=1/1000\nSTART=" << start << "\nEND=" << end
         << "\ntitle=" << title(i) << "\n";
  }
  return path;
}

double time_of(const Command& command) {
  const Timing timing = time_once(command);
  if (timing.exit_status == 0) return timing.least_ms;
  std::fprintf(stderr, "%s failed\n", command.label.c_str());
  std::exit(1);
}

double least_of(const std::function<double()>& run) {
  double least = 1e9;
  for (int round = 0; round < kRounds; ++round) least = std::min(least, run());
  return least;
}

/// Each time into a movie that has no chapters.
double import(const fs::path& krz, const fs::path& source, const fs::path& list,
              const fs::path& target) {
  return least_of([&] {
    fs::copy_file(source, target, fs::copy_options::overwrite_existing);
    return time_of(without_flushes(
        {"krz chapters import",
         {krz.string(), "chapters", "import", target.string(), list.string(), "-i"}}));
  });
}

uint64_t movie_atom_bytes(const fs::path& path) {
  const auto opened = toolbox::open_movie_file(path.string());
  if (!opened.ok()) std::exit(1);
  const toolbox::AtomTree& tree = opened.value().tree;
  return tree.node(tree.movie_in_file()).size;
}

}  // namespace

ChapterSpeed measure_chapters(const fs::path& krz, const fs::path& folder) {
  constexpr int kChapters = 2000;
  ChapterSpeed speed;
  const fs::path source = folder / "no-chapters.mov";
  const fs::path movie = folder / "chapters.mov";
  write_two_hours(source, kMediaBytes);

  const auto imported = [&](int count) {
    return import(krz, source, write_list(folder, count), movie);
  };
  const double few = imported(100);
  const double more = imported(3000);
  const double many = imported(30000);
  speed.few_each = (more - few) / 2900;
  speed.many_each = (many - more) / 27000;

  speed.import = imported(kChapters);
  uint64_t samples = 0;
  for (int i = 0; i < kChapters; ++i) {
    // Length, byte-order mark, the title in two bytes a character, and the extension that says so.
    samples += 2 + 2 + 2 * title(i).size() + 12;
  }
  speed.extra_bytes =
      fs::file_size(movie) - fs::file_size(source) - movie_atom_bytes(movie) - samples;

  speed.list = least_of([&] {
    return time_of({"krz chapters list", {krz.string(), "chapters", "list", movie.string()}});
  });
  speed.ffprobe = least_of([&] {
    return time_of(
        {"ffprobe -show_chapters", {"ffprobe", "-v", "quiet", "-show_chapters", movie.string()}});
  });
  const fs::path other = folder / "ffmpeg.mov";
  const fs::path list = write_ffmpeg_list(folder, kChapters);
  speed.ffmpeg = least_of([&] {
    return time_of(
        {"ffmpeg -map_chapters",
         {"ffmpeg", "-v", "quiet", "-y", "-i", source.string(), "-i", list.string(), "-map", "0",
          "-map_metadata", "1", "-map_chapters", "1", "-c", "copy", other.string()}});
  });
  for (const fs::path& path : {source, movie, other}) fs::remove(path);
  return speed;
}

}  // namespace bench
