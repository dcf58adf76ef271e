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

struct Processes {
  double krz, atomic_parsley, exiftool;
};

bool is_installed(const char* tool) {
  return std::system((std::string("command -v ") + tool + " >/dev/null 2>&1").c_str()) == 0;
}

/// Each tool on a file of its own.
Processes time_tools(const fs::path& krz, const fs::path& folder, uint64_t media_bytes,
                     int rounds) {
  std::vector<Command> commands;
  std::vector<int> places = {0, -1, -1};
  const auto file = [&](const char* name) {
    const fs::path path = folder / name;
    write_two_hours(path, media_bytes, BuiltMovie::Brand::kIso);
    return path.string();
  };
  commands.push_back(without_flushes(
      {"krz", {krz.string(), "meta", "set", file("krz.mp4"), "title=A title", "-i"}}));
  if (is_installed("AtomicParsley")) {
    places[1] = static_cast<int>(commands.size());
    commands.push_back(
        {"AtomicParsley",
         {"AtomicParsley", file("parsley.mp4"), "--title", "A title", "--overWrite"}});
  }
  if (is_installed("exiftool")) {
    places[2] = static_cast<int>(commands.size());
    commands.push_back({"exiftool",
                        {"exiftool", "-q", "-overwrite_original", "-api", "LargeFileSupport=1",
                         "-ItemList:Title=A title", file("exif.mp4")}});
  }
  std::vector<Timing> timings;
  if (rounds == 1) {
    for (const Command& command : commands) timings.push_back(time_once(command));
  } else {
    timings = time_in_turn(commands, rounds);
  }
  for (const char* name : {"krz.mp4", "parsley.mp4", "exif.mp4"}) fs::remove(folder / name);
  const auto least = [&](int place) { return place < 0 ? 0 : timings[place].least_ms; };
  return {least(places[0]), least(places[1]), least(places[2])};
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
  const Processes tools = time_tools(krz, folder, 12 * kMiB, 5);
  speed.krz = tools.krz;
  speed.atomic_parsley = tools.atomic_parsley;
  speed.exiftool = tools.exiftool;
  if (std::getenv("KRZ_BENCH_LARGE") != nullptr) {
    const Processes many = time_tools(krz, folder, 12 * 1024 * kMiB, 1);
    speed.krz_large = many.krz;
    speed.atomic_parsley_large = many.atomic_parsley;
    speed.exiftool_large = many.exiftool;
  }
  return speed;
}

}  // namespace bench
