// Timing whole processes: wall time from before the start to after the end, and the kernel's
// account of peak memory.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Command {
  std::string label;
  std::vector<std::string> words;
  std::string preload =
      {};  // a library that is loaded in front of the program's own; empty for none
};

struct Timing {
  double median_ms = 0;
  double least_ms = 0;
  long peak_kib = 0;    // of the largest run
  int exit_status = 0;  // of the last run
};

/// The same command with the flushes of the disk left out.
Command without_flushes(const Command& command);

/// Runs the commands in turn, A B C A B C …, `rounds` times after two rounds that do not count, so
/// that a machine whose speed drifts treats all alike. Their output is thrown away. One Timing per
/// command.
std::vector<Timing> time_in_turn(const std::vector<Command>& commands, int rounds);

/// Runs one command once.
Timing time_once(const Command& command);

}  // namespace bench
