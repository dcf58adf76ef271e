// The toolbox calls that the module makes, answering what a test has written down and recording how
// they were made.
#pragma once

#include <QuickTime/QuickTime.h>

#include <map>
#include <string>
#include <vector>

namespace fake_toolbox {

struct Toolbox {
  std::vector<std::string> calls;          // "GetTrackVolume(7)"
  std::map<std::string, int64_t> answers;  // by call name; 0 when not written down
  OSErr error = noErr;                     // what GetMoviesError answers
  MatrixRecord matrix = {};
  TimeValue found_time = 0;
  TimeValue found_duration = 0;
  std::string sample_description;  // empty: the call leaves the handle
};
Toolbox& toolbox();
void start();

/// Handles that are alive, and locks on them that nobody took back.
int live_handles();
int handle_locks();

}  // namespace fake_toolbox
