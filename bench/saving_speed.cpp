#include "saving_speed.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "base/big_endian.h"
#include "file/movie_builder.h"
#include "movie/edit_segments.h"
#include "movies.h"
#include "process.h"
#include "saving/saving.h"
#include "saving/storage.h"

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr int kRounds = 15;
constexpr uint64_t kMiB = 1 << 20;

class UnflushedStorage : public toolbox::Storage {
 public:
  toolbox::Status flush(int, const std::string&) override { return {}; }
  toolbox::Status flush_folder(const std::string&) override { return {}; }
};

void expect(const toolbox::Status& status) {
  if (status.ok()) return;
  std::fprintf(stderr, "%s\n", status.message().c_str());
  std::exit(1);
}

double milliseconds(const std::function<void()>& work) {
  const auto begin = std::chrono::steady_clock::now();
  work();
  const auto end = std::chrono::steady_clock::now();
  return std::chrono::duration<double, std::milli>(end - begin).count();
}

/// Whatever else the machine does only adds.
double least(const std::vector<double>& times) {
  return *std::min_element(times.begin(), times.end());
}

std::unique_ptr<toolbox::Movie> open(const fs::path& path, toolbox::FileAccess access) {
  auto opened = toolbox::open_movie_file(path.string(), access);
  expect(opened.status());
  auto movie = toolbox::Movie::load(opened.take());
  expect(movie.status());
  return movie.take();
}

void change_and_save(const fs::path& path) {
  const auto movie = open(path, toolbox::FileAccess::kWriting);
  auto& header = movie->tracks()[0]->change_header();
  header.layer = static_cast<int16_t>(header.layer ^ 1);
  expect(toolbox::save_movie(*movie));
}

/// What any program does at least: find the movie atom, read it, write it.
void rewrite_movie_atom(const fs::path& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  const off_t end = ::lseek(file, 0, SEEK_END);
  uint8_t head[16];
  std::vector<uint8_t> atom;
  for (off_t at = 0; at < end && ::pread(file, head, sizeof head, at) >= 8;) {
    uint64_t size = toolbox::load_big_endian<uint32_t>(head);
    if (size == 1) size = toolbox::load_big_endian<uint64_t>(head + 8);
    if (toolbox::load_big_endian<uint32_t>(head + 4) == toolbox::four_cc("moov")) {
      atom.resize(size);
      if (::pread(file, atom.data(), size, at) != static_cast<ssize_t>(size) ||
          ::pwrite(file, atom.data(), size, at) != static_cast<ssize_t>(size)) {
        std::fprintf(stderr, "the movie atom could not be written\n");
        std::exit(1);
      }
      break;
    }
    if (size < 8) break;
    at += static_cast<off_t>(size);
  }
  ::close(file);
  if (atom.empty()) std::exit(1);
}

void measure_in_place(const fs::path& folder, SavingSpeed& speed) {
  const fs::path small = folder / "small.mov";
  const fs::path large = folder / "large.mov";
  const fs::path plain = folder / "plain.mov";
  write_two_hours(small, 12 * kMiB);
  write_two_hours(large, 12 * 1024 * kMiB);
  write_two_hours(plain, 12 * 1024 * kMiB);
  std::vector<double> times[4];
  {
    UnflushedStorage storage;
    const toolbox::ScopedStorage scoped(storage);
    for (int round = 0; round < kRounds; ++round) {
      times[0].push_back(milliseconds([&] { change_and_save(small); }));
      times[1].push_back(milliseconds([&] { change_and_save(large); }));
      times[2].push_back(milliseconds([&] { rewrite_movie_atom(plain); }));
    }
  }
  for (int round = 0; round < kRounds; ++round) {
    times[3].push_back(milliseconds([&] { change_and_save(large); }));
  }
  speed.save_small = least(times[0]);
  speed.save_large = least(times[1]);
  speed.rewrite_atom = least(times[2]);
  speed.flushed_save = least(times[3]);
  fs::remove(small);
  fs::remove(large);
  fs::remove(plain);
}

double measure_edits(const fs::path& folder) {
  constexpr int kEdits = 1000;
  const fs::path path = folder / "edits.mov";
  toolbox::BuiltMovie built;
  built.tracks = {toolbox::video_track(16, 16, 10000, 60)};
  expect(toolbox::write_movie(built, path.string()));
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) {
    const auto movie = open(path, toolbox::FileAccess::kReading);
    toolbox::Track& track = *movie->tracks()[0];
    std::mt19937 random(5);
    const auto pick = [&] { return static_cast<int64_t>(random() % 500000); };
    while (track.edits().edits().size() < kEdits) expect(insert_empty_segment(track, pick(), 7));
    times.push_back(milliseconds([&] {
      for (int i = 0; i < kEdits; i += 4) {
        expect(delete_segment(track, pick(), 90));
        expect(insert_segment(track, pick(), 90, track, pick()));
        expect(scale_segment(track, pick(), 60, 90));
        expect(insert_empty_segment(track, pick(), 5));
      }
    }));
  }
  fs::remove(path);
  return least(times);
}

void measure_save_as(const fs::path& folder, SavingSpeed& speed) {
  constexpr uint64_t kBytes = 256 * kMiB;
  const fs::path path = folder / "dense.mov";
  const fs::path saved = folder / "saved.mov";
  const fs::path copied = folder / "copied.mov";
  toolbox::BuiltMovie movie;
  movie.tracks = {toolbox::video_track(512, 512, 341, 20)};
  movie.tracks[0].data = toolbox::Bytes(kBytes, 0x5A);
  expect(toolbox::write_movie(movie, path.string()));
  movie.tracks[0].data = {};
  ::sync();
  UnflushedStorage storage;
  const toolbox::ScopedStorage scoped(storage);
  std::vector<double> times[2];
  for (int round = 0; round < 7; ++round) {
    times[0].push_back(milliseconds([&] {
      const auto opened = open(path, toolbox::FileAccess::kReading);
      expect(toolbox::save_movie_as(*opened, saved.string()));
    }));
    const Timing copy = time_once({"cp", {"cp", "--reflink=auto", path.string(), copied.string()}});
    if (copy.exit_status != 0) std::exit(1);
    times[1].push_back(copy.least_ms);
    fs::remove(saved);
    fs::remove(copied);
    ::sync();
  }
  speed.save_as = least(times[0]);
  speed.copy = least(times[1]);
  fs::remove(path);
}

}  // namespace

SavingSpeed measure_saving(const fs::path& folder) {
  SavingSpeed speed;
  measure_in_place(folder, speed);
  speed.thousand_edits = measure_edits(folder);
  measure_save_as(folder, speed);
  return speed;
}

}  // namespace bench
