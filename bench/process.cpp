#include "process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>

extern char** environ;

namespace bench {

Command without_flushes(const Command& command) {
  const auto build = std::filesystem::canonical("/proc/self/exe").parent_path().parent_path();
  Command unflushed = command;
  unflushed.preload = (build / "lib/no_flush.so").string();
  return unflushed;
}

namespace {

struct Run {
  double wall_ms;
  long peak_kib;
  int exit_status;
};

Run run_once(const Command& command) {
  std::vector<char*> argv;
  for (const std::string& word : command.words) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  std::vector<char*> environment;
  for (char** variable = environ; *variable != nullptr; ++variable)
    environment.push_back(*variable);
  std::string preload = "LD_PRELOAD=" + command.preload;
  if (!command.preload.empty()) environment.push_back(preload.data());
  environment.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

  const auto begin = std::chrono::steady_clock::now();
  pid_t child = 0;
  const int failure =
      posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environment.data());
  int status = 0;
  rusage usage{};
  if (failure == 0) wait4(child, &status, 0, &usage);
  const auto end = std::chrono::steady_clock::now();
  posix_spawn_file_actions_destroy(&actions);
  const int exit_status = failure ? 127 : WIFEXITED(status) ? WEXITSTATUS(status) : 128;
  return {std::chrono::duration<double, std::milli>(end - begin).count(), usage.ru_maxrss,
          exit_status};
}

}  // namespace

std::vector<Timing> time_in_turn(const std::vector<Command>& commands, int rounds) {
  constexpr int kWarmUp = 2;
  std::vector<std::vector<double>> walls(commands.size());
  std::vector<Timing> timings(commands.size());
  for (int round = -kWarmUp; round < rounds; ++round) {
    for (size_t i = 0; i < commands.size(); ++i) {
      const Run run = run_once(commands[i]);
      if (round < 0) continue;
      walls[i].push_back(run.wall_ms);
      timings[i].peak_kib = std::max(timings[i].peak_kib, run.peak_kib);
      timings[i].exit_status = run.exit_status;
    }
  }
  for (size_t i = 0; i < commands.size(); ++i) {
    std::sort(walls[i].begin(), walls[i].end());
    timings[i].median_ms = walls[i][walls[i].size() / 2];
    timings[i].least_ms = walls[i].front();
  }
  return timings;
}

Timing time_once(const Command& command) {
  const Run run = run_once(command);
  return {run.wall_ms, run.wall_ms, run.peak_kib, run.exit_status};
}

}  // namespace bench
