// Commands that do one thing to several movies: which of their arguments are movies, and the run
// over them.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "command.h"

namespace cli {

/// The options that a command has for several movies: --files-from and --keep-going.
std::span<const Option> several_movies_options();

/// What an invocation asks for.
struct MovieRuns {
  bool one_by_one = false;          // else one run, with the arguments as they are
  std::vector<std::string> movies;  // in the order given, those of --files-from behind the others
  std::vector<std::string> rest;    // the other arguments
};

/// Tells the movies among the arguments from the rest, and reads the list of --files-from, which
/// is put among the arguments when there is to be one run. False when something is wrong, which has
/// then been reported.
bool find_movies(Invocation& invocation, MovieRuns& runs);

/// Runs the command's program once for each movie, each in a process of its own, so that no movie
/// can spoil the work on another, and says how many were done. Stops at the first that fails,
/// unless it is to keep going. The status is that of the first failure, or kSomeFailed when it kept
/// going. REQUIRES: nothing else has been started in this process.
int run_for_each(const Invocation& invocation, const MovieRuns& runs,
                 int (*run)(const Invocation& one));

}  // namespace cli
