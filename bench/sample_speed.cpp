#include "sample_speed.h"

#include <Toolbox/Toolbox.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>

#include "movies.h"

namespace bench {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

void expect(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s: %s\n", what, ToolboxErrorDetail());
  std::exit(1);
}

class OpenMovie {
 public:
  explicit OpenMovie(const fs::path& path) {
    expect(ToolboxOpenMovie(path.c_str(), &movie_) == noErr, "a movie was not opened");
  }
  ~OpenMovie() { DisposeMovie(movie_); }
  OpenMovie(const OpenMovie&) = delete;
  OpenMovie& operator=(const OpenMovie&) = delete;
  Track track() const { return GetMovieIndTrack(movie_, 1); }

 private:
  Movie movie_ = nullptr;
};

double nanoseconds_since(Clock::time_point begin) {
  return std::chrono::duration<double, std::nano>(Clock::now() - begin).count();
}

double resident_mib() {
  long total = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

struct Sum {
  uint64_t samples = 0;
  uint64_t bytes = 0;
};

OSErr add_up(const ToolboxSample* samples, uint32_t count, void* context) {
  Sum& sum = *static_cast<Sum*>(context);
  for (uint32_t i = 0; i < count; ++i) sum.bytes += samples[i].size;
  sum.samples += count;
  return noErr;
}

void measure_walk(const fs::path& path, SampleSpeed& speed) {
  speed.walk_ns = 1e9;
  for (int round = 0; round < 5; ++round) {
    const OpenMovie movie(path);
    const double before = resident_mib();
    Sum sum;
    const auto begin = Clock::now();
    expect(ToolboxListTrackSamples(movie.track(), 0, -1, add_up, &sum) == noErr, "a walk failed");
    speed.walk_ns =
        std::min(speed.walk_ns, nanoseconds_since(begin) / static_cast<double>(sum.samples));
    expect(sum.samples == 10'000'000, "samples are missing");
    if (round == 0) speed.walk_memory = resident_mib() - before;
  }
}

/// The index is made by the first question, which does not count.
double measure_access(const fs::path& path) {
  constexpr int kQuestions = 20'000;
  const OpenMovie movie(path);
  const Media media = GetTrackMedia(movie.track());
  const TimeValue end = GetMediaDuration(media);
  std::mt19937 random(3);
  std::uniform_int_distribution<TimeValue> pick(0, end - 1);
  const auto ask = [&] {
    TimeValue time = 0;
    SInt32 size = 0;
    expect(GetMediaSample(media, nullptr, 0, &size, pick(random), &time, nullptr, nullptr, nullptr,
                          1, nullptr, nullptr) == noErr,
           "a sample was not found");
  };
  ask();
  const auto begin = Clock::now();
  for (int i = 0; i < kQuestions; ++i) ask();
  return nanoseconds_since(begin) / kQuestions;
}

}  // namespace

SampleSpeed measure_samples(const fs::path& folder, const fs::path& bin,
                            const fs::path& ten_million_samples) {
  SampleSpeed speed;
  measure_walk(ten_million_samples, speed);
  uint32_t samples = 1000;
  for (double& nanoseconds : speed.access_ns) {
    const fs::path path = folder / "samples.mov";
    const bool is_there = samples == 10'000'000;
    if (!is_there) write_long_movie(path, samples);
    nanoseconds = measure_access(is_there ? ten_million_samples : path);
    if (!is_there) fs::remove(path);
    samples *= 10;
  }

  const fs::path path = folder / "two-hours.mov";
  write_two_hours(path, uint64_t{12} << 30);
  const std::string krz = (bin / "krz").string();
  const auto list = [&](const char* track) {
    return Command{"", {krz, "samples", "list", path.string(), track, "--csv"}};
  };
  const auto fast = time_in_turn(
      {list("video"), list("sound"), {"", {(bin / "plain_list").string(), path.string()}}}, 15);
  speed.list = fast[0];
  speed.list.median_ms += fast[1].median_ms;
  speed.list.least_ms += fast[1].least_ms;
  speed.list.exit_status |= fast[1].exit_status;
  speed.plain = fast[2];
  speed.ffprobe = time_in_turn(
      {{"", {"ffprobe", "-v", "quiet", "-show_packets", "-of", "csv", path.string()}}}, 3)[0];
  fs::remove(path);
  return speed;
}

}  // namespace bench
