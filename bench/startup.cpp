// Starting and looking: krz info against a program that does nothing and against ffprobe, on small
// and on huge movies; and what one call from a script into the module costs.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "movies.h"
#include "process.h"
#include "script_calls.h"

namespace {

namespace fs = std::filesystem;

struct Row {
  const char* what;
  double ratio;
  const char* bound;  // what we hold ourselves to
  bool kept;
};

void print_timing(const bench::Command& command, const bench::Timing& timing) {
  std::printf("  %-44s %9.2f ms   least %9.2f ms   peak %7ld KiB   status %d\n",
              command.label.c_str(), timing.median_ms, timing.least_ms, timing.peak_kib,
              timing.exit_status);
}

bench::Command krz_info(const std::string& krz, const fs::path& movie, const std::string& label) {
  return {"krz info, " + label, {krz, "info", movie.string()}};
}

bench::Command ffprobe(const fs::path& movie, const std::string& label) {
  return {"ffprobe -show_streams -show_format, " + label,
          {"ffprobe", "-v", "quiet", "-show_streams", "-show_format", movie.string()}};
}

}  // namespace

int main(int argc, char** argv) {
  const fs::path bin = fs::canonical("/proc/self/exe").parent_path();
  const std::string krz = (bin / "krz").string();
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 41;
  const fs::path folder = fs::temp_directory_path() / ("krz-bench-" + std::to_string(getpid()));
  fs::create_directories(folder);

  const bench::Movies movies = bench::make_movies(folder);
  const std::vector<bench::Command> small = {
      {"a program that does nothing", {(bin / "do_nothing").string()}},
      krz_info(krz, movies.ten_seconds, "ten seconds"),
      krz_info(krz, movies.ten_million_samples, "ten million samples"),
      krz_info(krz, movies.two_hundred_tracks, "200 tracks"),
  };
  const std::vector<bench::Command> large = {
      ffprobe(movies.ten_seconds, "ten seconds"),
      ffprobe(movies.two_hundred_tracks, "200 tracks"),
  };
  std::printf("Whole processes, median of %d runs in turn:\n", rounds);
  const auto fast = bench::time_in_turn(small, rounds);
  const auto slow = bench::time_in_turn(large, 7);
  for (size_t i = 0; i < small.size(); ++i) print_timing(small[i], fast[i]);
  for (size_t i = 0; i < large.size(); ++i) print_timing(large[i], slow[i]);

  const double call_ns = bench::nanoseconds_per_getter(movies.ten_seconds.string());
  std::printf("  %-44s %9.0f ns\n\n", "one script call of a module getter", call_ns);
  fs::remove_all(folder);

  const double do_nothing = fast[0].median_ms;
  const double ten_seconds = fast[1].median_ms;
  const double ten_million = fast[2].median_ms;
  const double many_tracks = fast[3].median_ms;
  const Row rows[] = {
      {"krz info / doing nothing", ten_seconds / do_nothing, "<= 2.5",
       ten_seconds <= 2.5 * do_nothing},
      {"ffprobe / krz info, ten seconds", slow[0].median_ms / ten_seconds, ">= 20",
       slow[0].median_ms >= 20 * ten_seconds},
      {"ten million samples / ten seconds", ten_million / ten_seconds, "<= 1.5",
       ten_million <= 1.5 * ten_seconds},
      {"ffprobe / krz info, 200 tracks", slow[1].median_ms / many_tracks, ">= 50",
       slow[1].median_ms >= 50 * many_tracks},
      {"memory on ten million samples, MiB", static_cast<double>(fast[2].peak_kib) / 1024, "<= 32",
       fast[2].peak_kib <= 32 * 1024},
      {"one script call of a getter, ns", call_ns, "<= 300", call_ns <= 300},
  };
  std::printf("%-40s %10s   %-8s\n", "ratio", "measured", "bound");
  for (const Row& row : rows) {
    std::printf("%-40s %10.2f   %-8s %s\n", row.what, row.ratio, row.bound,
                row.kept ? "kept" : "MISSED");
  }
  bool all_ran = true;
  for (const bench::Timing& timing : fast) all_ran = all_ran && timing.exit_status == 0;
  for (const bench::Timing& timing : slow) all_ran = all_ran && timing.exit_status == 0;
  if (!all_ran) std::printf("A command failed: its time says nothing.\n");
  return all_ran ? 0 : 1;
}
