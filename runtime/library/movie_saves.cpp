// Functions over the saves that a movie file still remembers.
#include <Toolbox/Toolbox.h>

#include "library/parts.h"
#include "object/exceptions.h"
#include "object/string.h"
#include "registry/tables.h"

namespace krz {

namespace {

constexpr double kSecondsFrom1904To1970 = 2082844800.0;

bool succeeded(OSErr status) {
  if (status != noErr) raise_exception("IOException", ToolboxErrorDetail(), status);
  return status == noErr;
}

int32_t undo_count(REALstring path) {
  uint32_t count = 0;
  succeeded(ToolboxGetUndoStep(string_path(path).c_str(), 0, &count, nullptr));
  return static_cast<int32_t>(count);
}

// Seconds since 1970, as DateTime.FromSeconds takes them; 0 for no such save.
double undo_time(REALstring path, int32_t index) {
  uint64_t time = 0;
  if (index < 0) return 0;
  const std::string file = string_path(path);
  succeeded(ToolboxGetUndoStep(file.c_str(), static_cast<uint32_t>(index), nullptr, &time));
  return time == 0 ? 0 : static_cast<double>(time) - kSecondsFrom1904To1970;
}

void undo_save(REALstring path) { succeeded(ToolboxUndoSave(string_path(path).c_str())); }

int64_t commit_saves(REALstring path) {
  uint64_t overwritten = 0;
  succeeded(ToolboxCommitSaves(string_path(path).c_str(), &overwritten));
  return static_cast<int64_t>(overwritten);
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(undo_count, "UndoCount(path as string) as integer"),
    KRZ_FUNCTION(undo_time, "UndoTime(path as string, index as integer) as double"),
    KRZ_FUNCTION(undo_save, "UndoSave(path as string)"),
    KRZ_FUNCTION(commit_saves, "CommitSaves(path as string) as int64"),
};

}  // namespace

void register_movie_saves(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
