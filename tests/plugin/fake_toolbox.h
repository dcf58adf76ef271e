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
  std::string sample_description;       // empty: the call leaves the handle
  std::string sample;                   // likewise
  std::vector<TimeValue> sample_times;  // where samples begin; empty: found_time is all there is
  std::vector<std::string> texts;       // the bytes of added text samples
  std::vector<std::string> looks;       // and how they are to be drawn
  // Of every time code; the last one that was handed over. Aligned, as references to them are
  // taken.
  alignas(4) TimeCodeDef time_code_definition = {};
  alignas(4) TimeCodeRecord time_code_record = {};
  TCTextOptions display_options = {};  // likewise
  std::string added_sample;            // the bytes of the last one, and of its description
  std::string added_description;
  std::map<std::string, void*> frameworks;  // their routines by name; empty: no framework is there
  int foundation_objects = 0;               // strings, URLs and bundles that are not released
};
Toolbox& toolbox();
void start();

/// Makes a handle of the test's toolbox hold these bytes.
void fill_handle(Handle handle, const std::string& bytes);

/// Handles that are alive, and locks on them that nobody took back.
int live_handles();
int handle_locks();

}  // namespace fake_toolbox
