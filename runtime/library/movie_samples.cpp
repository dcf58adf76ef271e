// Functions that list the samples of a track and copy their bytes. Tracks are named by their
// handle, as QTTrackKRZ.TrackHandle gives it.
#include <Toolbox/Toolbox.h>

#include <new>

#include "language/script.h"
#include "library/new_file.h"
#include "library/parts.h"
#include "library/progress.h"
#include "library/sample_rows.h"
#include "object/exceptions.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

Track track_of(int32_t handle) {
  return reinterpret_cast<Track>(static_cast<uintptr_t>(static_cast<uint32_t>(handle)));
}

/// An interruption is no exception: the script ends by itself.
void raise_failure(OSErr status) {
  if (status != noErr && status != userCanceledErr && !exception_pending()) {
    raise_exception("IOException", ToolboxErrorDetail(), status);
  }
}

int32_t media_time_scale(int32_t track) {
  return GetMediaTimeScale(GetTrackMedia(track_of(track)));
}

OSErr print_rows(const ToolboxSample* samples, uint32_t count, void* context) {
  try {
    SampleRows& rows = *static_cast<SampleRows*>(context);
    for (uint32_t i = 0; i < count; ++i) rows.add(samples[i]);
    Runtime::current().write_output(rows.text());
    rows.text().clear();
  } catch (const std::bad_alloc&) {
    return memFullErr;
  }
  return Script::is_interrupted() ? userCanceledErr : noErr;
}

void print_samples(int32_t track, REALstring form, int32_t from, int32_t until) {
  const std::string_view name = string_bytes(form);
  SampleRows rows(name == "csv"    ? SampleRows::Form::kCSV
                  : name == "json" ? SampleRows::Form::kJSON
                                   : SampleRows::Form::kText);
  rows.begin();
  const OSErr status = ToolboxListTrackSamples(track_of(track), from, until, print_rows, &rows);
  rows.end();
  if (status != invalidTrack) Runtime::current().write_output(rows.text());
  raise_failure(status);
}

struct Copy {
  NewFile* file;  // null: the host's own output
  Progress progress;
  int64_t bytes = 0;
};

OSErr copy_bytes(const void* bytes, uint32_t count, uint32_t number, void* context) {
  try {
    Copy& copy = *static_cast<Copy*>(context);
    const std::string_view text(static_cast<const char*>(bytes), count);
    if (copy.file == nullptr) {
      Runtime::current().write_output(text);
    } else if (!copy.file->write(text)) {
      return ioErr;
    }
    copy.bytes += count;
    copy.progress.show(number);
  } catch (const std::bad_alloc&) {
    return memFullErr;
  }
  return Script::is_interrupted() ? userCanceledErr : noErr;
}

int64_t extract_samples(int32_t track, int32_t first, int32_t last, REALstring path,
                        bool overwrite) {
  const std::string name = string_path(path);
  NewFile file;
  Runtime& runtime = Runtime::current();
  const bool to_output = name == "-";
  // A host that takes what scripts print takes this too; the process's own output must not fail in
  // silence.
  const bool to_host = to_output && runtime.options().standard_output;
  if (to_output) runtime.flush_output();
  if (to_output && !to_host && !file.take_standard_output()) return 0;
  if (!to_output && !file.create(name, overwrite)) return 0;
  // Numbers below 1 reach the toolbox as 0, which answers for them.
  const uint32_t begin = first < 0 ? 0 : static_cast<uint32_t>(first);
  const uint32_t end = last < 0 ? 0 : static_cast<uint32_t>(last);
  Copy copy{to_host ? nullptr : &file, Progress("sample", begin, end)};
  const OSErr status = ToolboxReadTrackSamples(track_of(track), begin, end, copy_bytes, &copy);
  raise_failure(status);
  if (status != noErr || (!to_host && !file.finish())) return 0;
  return copy.bytes;
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(media_time_scale, "MediaTimeScale(trackHandle as integer) as integer"),
    KRZ_FUNCTION(print_samples,
                 "PrintSamples(trackHandle as integer, form as string = \"text\", from as integer "
                 "= 0, until as integer = -1)"),
    KRZ_FUNCTION(extract_samples,
                 "ExtractSamples(trackHandle as integer, first as integer, last as integer, path "
                 "as string, overwrite as boolean = false) as int64"),
};

}  // namespace

void register_movie_samples(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
