#include "metadata_speed.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "metadata/metadata.h"
#include "movie/movie.h"
#include "movies.h"
#include "process.h"
#include "saving/saving.h"
#include "saving/storage.h"

namespace bench {

namespace {

namespace fs = std::filesystem;
using toolbox::BuiltMovie;

constexpr int kRounds = 15;
constexpr uint64_t kMiB = 1 << 20;

class UnflushedStorage : public toolbox::Storage {
 public:
  toolbox::Status flush(int, const std::string&) override { return {}; }
  toolbox::Status flush_folder(const std::string&) override { return {}; }
};

template <class T>
T value_of(toolbox::Result<T> result) {
  if (!result.ok()) {
    std::fprintf(stderr, "%s\n", result.status().message().c_str());
    std::exit(1);
  }
  return result.take();
}

void set_title(const fs::path& path, const std::string& title) {
  const auto movie = value_of(toolbox::Movie::load(
      value_of(toolbox::open_movie_file(path.string(), toolbox::FileAccess::kWriting))));
  toolbox::MetaData& metadata = value_of(movie->annotations())->metadata();
  const toolbox::FourCC name = toolbox::four_cc("name");
  const toolbox::ItemFilter key{toolbox::storage_format::kShortList, toolbox::key_format::kCommon,
                                toolbox::ByteView(reinterpret_cast<const uint8_t*>(&name), 4)};
  toolbox::ItemValue value{toolbox::value_type::kUtf8, toolbox::Bytes(title.begin(), title.end())};
  const auto found = metadata.next(0, key);
  const toolbox::Status status = found.ok() ? metadata.set_value(found.value(), std::move(value))
                                            : metadata.add(key, std::move(value)).take_status();
  const toolbox::Status saved = status.ok() ? toolbox::save_movie(*movie) : toolbox::Status();
  if (!status.ok() || !saved.ok()) {
    std::fprintf(stderr, "%s%s\n", status.message().c_str(), saved.message().c_str());
    std::exit(1);
  }
}

uint64_t movie_atom_bytes(const fs::path& path) {
  const auto opened = value_of(toolbox::open_movie_file(path.string()));
  return opened.tree.node(opened.tree.movie_in_file()).size;
}

/// The least of several runs, each with another title.
double least_to_set(const fs::path& path) {
  double least = 1e9;
  for (int round = 0; round < kRounds; ++round) {
    const auto begin = std::chrono::steady_clock::now();
    set_title(path, "title " + std::to_string(round));
    const auto end = std::chrono::steady_clock::now();
    least = std::min(least, std::chrono::duration<double, std::milli>(end - begin).count());
  }
  return least;
}

bool is_installed(const char* tool) {
  return std::system((std::string("command -v ") + tool + " >/dev/null 2>&1").c_str()) == 0;
}

double time_of(const Command& command) {
  const Timing timing = time_once(command);
  if (timing.exit_status == 0) return timing.least_ms;
  std::fprintf(stderr, "%s failed\n", command.label.c_str());
  std::exit(1);
}

/// The least of several rounds, each on a movie that has no title yet, and on the same movie once
/// more.
struct TitleTimes {
  ToolTimes first, again;
};

TitleTimes time_tools(const fs::path& krz, const fs::path& folder, uint64_t media_bytes,
                      int rounds) {
  const fs::path path = folder / "title.mp4";
  struct Tool {
    double ToolTimes::*time;
    Command command;
  };
  std::vector<Tool> tools = {
      {&ToolTimes::krz,
       without_flushes(
           {"krz meta set", {krz.string(), "meta", "set", path.string(), "title=A title", "-i"}})}};
  if (is_installed("AtomicParsley")) {
    tools.push_back(
        {&ToolTimes::atomic_parsley,
         {"AtomicParsley", {"AtomicParsley", path.string(), "--title", "A title", "--overWrite"}}});
  }
  if (is_installed("exiftool")) {
    tools.push_back({&ToolTimes::exiftool,
                     {"exiftool",
                      {"exiftool", "-q", "-overwrite_original", "-api", "LargeFileSupport=1",
                       "-ItemList:Title=A title", path.string()}}});
  }
  TitleTimes times;
  const auto note = [](double& least, double time) {
    least = least == 0 ? time : std::min(least, time);
  };
  for (int round = 0; round < rounds; ++round) {
    for (const Tool& tool : tools) {
      write_two_hours(path, media_bytes, BuiltMovie::Brand::kIso);
      note(times.first.*tool.time, time_of(tool.command));
      note(times.again.*tool.time, time_of(tool.command));
    }
  }
  fs::remove(path);
  return times;
}

/// A hundred thousand items over the three stores: added, walked, saved.
double add_many(const fs::path& folder) {
  constexpr int kItems = 100000;
  const fs::path path = folder / "items.mov";
  toolbox::BuiltMovie built;
  built.tracks = {toolbox::video_track(16, 16, 10, 60)};
  if (!toolbox::write_movie(built, path.string()).ok()) std::exit(1);
  const auto begin = std::chrono::steady_clock::now();
  const auto movie = value_of(toolbox::Movie::load(
      value_of(toolbox::open_movie_file(path.string(), toolbox::FileAccess::kWriting))));
  toolbox::MetaData& metadata = value_of(movie->annotations())->metadata();
  const toolbox::FourCC name = toolbox::four_cc("name");
  for (const toolbox::FourCC storage :
       {toolbox::storage_format::kUserData, toolbox::storage_format::kQuickTime,
        toolbox::storage_format::kShortList}) {
    const toolbox::ItemFilter key{storage, toolbox::key_format::kCommon,
                                  toolbox::ByteView(reinterpret_cast<const uint8_t*>(&name), 4)};
    for (int i = 0; i < kItems / 3; ++i) {
      value_of(metadata.add(key, {toolbox::value_type::kUtf8, toolbox::Bytes{'i', 't', 'e', 'm'}}));
    }
  }
  int walked = 0;
  for (auto item = metadata.next(0, {}); item.ok(); item = metadata.next(item.value(), {}))
    ++walked;
  const toolbox::Status saved = toolbox::save_movie(*movie);
  const auto end = std::chrono::steady_clock::now();
  if (walked < kItems / 3 * 3 || !saved.ok()) {
    std::fprintf(stderr, "%d of the items were walked; %s\n", walked, saved.message().c_str());
    std::exit(1);
  }
  fs::remove(path);
  return std::chrono::duration<double, std::milli>(end - begin).count();
}

}  // namespace

MetadataSpeed measure_metadata(const fs::path& krz, const fs::path& folder) {
  MetadataSpeed speed;
  const fs::path small = folder / "title-small.mp4";
  const fs::path large = folder / "title-large.mp4";
  write_two_hours(small, 12 * kMiB, BuiltMovie::Brand::kIso);
  write_two_hours(large, 12 * 1024 * kMiB, BuiltMovie::Brand::kIso);
  {
    UnflushedStorage storage;
    const toolbox::ScopedStorage scoped(storage);
    const uint64_t before = fs::file_size(small);
    set_title(small, "the first");
    speed.extra_bytes = fs::file_size(small) - before - movie_atom_bytes(small);
    speed.set_small = least_to_set(small);
    speed.set_large = least_to_set(large);
    speed.many_items = add_many(folder);
  }
  fs::remove(small);
  fs::remove(large);
  const TitleTimes times = time_tools(krz, folder, 12 * kMiB, 5);
  speed.first = times.first;
  speed.again = times.again;
  if (std::getenv("KRZ_BENCH_LARGE") != nullptr)
    speed.first_large = time_tools(krz, folder, 12 * 1024 * kMiB, 1).first;
  return speed;
}

}  // namespace bench
