// Functions that look movies over beyond what the module's classes say. Tracks are named by their
// handle, as QTTrackKRZ.TrackHandle gives it.
#include <Toolbox/Toolbox.h>

#include <algorithm>

#include "library/movie.h"
#include "library/parts.h"
#include "library/watched_work.h"
#include "object/exceptions.h"
#include "object/string.h"
#include "registry/tables.h"

namespace krz {

namespace {

Track track_of(int32_t handle) {
  return reinterpret_cast<Track>(static_cast<uintptr_t>(static_cast<uint32_t>(handle)));
}

bool succeeded(OSErr status) {
  if (status != noErr) raise_exception("IOException", ToolboxErrorDetail(), status);
  return status == noErr;
}

int32_t edit_count(int32_t track) { return ToolboxGetTrackEditCount(track_of(track)); }

// The edit's place in the movie, movie time scale; the media time that it begins with, -1 for an
// empty edit; its rate.
bool edit(int32_t track, int32_t index, int32_t* start, int32_t* duration, int64_t* media_start,
          double* rate) {
  ToolboxTrackEdit found{};
  if (ToolboxGetTrackEdit(track_of(track), index, &found) != noErr) return false;
  *start = static_cast<int32_t>(found.start);
  *duration = static_cast<int32_t>(found.duration);
  *media_start = found.mediaStart;
  *rate = found.rate / 65536.0;
  return true;
}

// Reference `index` of all that the track has, from 1: its type and the ID that it names.
bool reference(int32_t track, int32_t index, REALstring* type, int32_t* track_id) {
  OSType found_type = 0;
  SInt32 id = 0;
  if (ToolboxGetTrackReferenceID(track_of(track), index, &found_type, &id) != noErr) return false;
  const char text[4] = {static_cast<char>(found_type >> 24), static_cast<char>(found_type >> 16),
                        static_cast<char>(found_type >> 8), static_cast<char>(found_type)};
  const REALstring made = make_string(std::string_view(text, 4), encoding::kMacRoman);
  unlock_string(*type);
  *type = made;
  *track_id = id;
  return true;
}

// How many led to no track.
int32_t prune_references(int32_t track) {
  SInt32 removed = 0;
  succeeded(ToolboxPruneTrackReferences(track_of(track), &removed));
  return removed;
}

// A line for each problem.
REALstring problems(REALobject movie) {
  Handle found = nullptr;
  const WatchedWork progress("checking sample", 1);
  if (!succeeded(ToolboxVerifyMovie(movie_reference(movie), &found))) return make_string("");
  const std::string_view text(*found, static_cast<size_t>(GetHandleSize(found)));
  const REALstring made = make_string(text);
  DisposeHandle(found);
  return made;
}

// Of the first `count` samples; of all for a negative count.
REALstring digest(int32_t track, int32_t count) {
  char text[33] = "";
  const WatchedWork progress("comparing sample", 1);
  // A negative count becomes one that no track has.
  succeeded(ToolboxDigestFirstSamples(track_of(track), static_cast<uint32_t>(count), text));
  return make_string(text);
}

// What the toolbox has to say of its latest failed call on this thread.
REALstring last_failure() { return make_string(ToolboxErrorDetail()); }

OSType code_of(REALstring text) {
  const std::string_view bytes = string_bytes(text);
  OSType code = 0;
  for (size_t i = 0; i < 4; ++i)
    code = code << 8 | (i < bytes.size() ? static_cast<uint8_t>(bytes[i]) : uint32_t{' '});
  return code;
}

// A track with media that has no samples yet; its handle, 0 after an exception.
int32_t new_track(REALobject movie, REALstring media_type, int32_t time_scale, int32_t width,
                  int32_t height) {
  const Track track = NewMovieTrack(movie_reference(movie), Long2Fix(width), Long2Fix(height), 0);
  if (!succeeded(GetMoviesError())) return 0;
  if (!NewTrackMedia(track, code_of(media_type), time_scale, nullptr, 0)) {
    const OSErr status = GetMoviesError();
    const std::string detail = ToolboxErrorDetail();
    DisposeMovieTrack(track);
    raise_exception("IOException", detail, status);
    return 0;
  }
  return static_cast<int32_t>(reinterpret_cast<uintptr_t>(track));
}

void add_reference(int32_t from, int32_t to, REALstring type) {
  succeeded(AddTrackReference(track_of(from), track_of(to), code_of(type), nullptr));
}

// The record of the region that a track is cut to, as hexadecimal digits: empty for a track that is
// not cut, "?" for a region that cannot be read, of which last_failure() tells.
REALstring clip_region(int32_t track) {
  const auto region = reinterpret_cast<Handle>(GetTrackClipRgn(track_of(track)));
  if (!region) return make_string(GetMoviesError() == noErr ? "" : "?");
  std::string digits;
  for (Size i = 0; i < GetHandleSize(region); ++i) {
    const auto byte = static_cast<uint8_t>((*region)[i]);
    digits += "0123456789ABCDEF"[byte >> 4];
    digits += "0123456789ABCDEF"[byte & 15];
  }
  DisposeHandle(region);
  return make_string(digits);
}

void remove_track(int32_t track) { DisposeMovieTrack(track_of(track)); }

// Rounded to a thousandth of a second.
REALstring clock_text(int64_t time, int32_t time_scale, int32_t hour_digits) {
  if (time_scale < 1) {
    raise_exception("InvalidArgumentException", "a time scale is 1 or more");
    return nullptr;
  }
  const bool is_negative = time < 0;
  const uint64_t units =
      is_negative ? 0 - static_cast<uint64_t>(time) : static_cast<uint64_t>(time);
  const auto scale = static_cast<uint64_t>(time_scale);
  uint64_t seconds = units / scale;
  uint64_t thousandths = (units % scale * 1000 + scale / 2) / scale;
  seconds += thousandths / 1000;
  thousandths %= 1000;
  char text[48];
  char* at = std::end(text);
  const auto put = [&at](uint64_t number, int digits, char in_front) {
    for (; digits > 0 || number > 0; --digits, number /= 10)
      *--at = static_cast<char>('0' + number % 10);
    if (in_front != 0) *--at = in_front;
  };
  put(thousandths, 3, '.');
  put(seconds % 60, 2, ':');
  put(seconds / 60 % 60, 2, ':');
  put(seconds / 3600, std::clamp(hour_digits, 1, 9), is_negative ? '-' : '\0');
  return make_string({at, static_cast<size_t>(std::end(text) - at)});
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(edit_count, "TrackEditCount(trackHandle as integer) as integer"),
    KRZ_FUNCTION(
        edit,
        "TrackEdit(trackHandle as integer, index as integer, byref start as integer, byref "
        "duration as integer, byref mediaStart as int64, byref rate as double) as boolean"),
    KRZ_FUNCTION(reference,
                 "TrackReference(trackHandle as integer, index as integer, byref type as string, "
                 "byref trackID as integer) as boolean"),
    KRZ_FUNCTION(clip_region, "ClipRegion(trackHandle as integer) as string"),
    KRZ_FUNCTION(prune_references, "PruneReferences(trackHandle as integer) as integer"),
    KRZ_FUNCTION(new_track,
                 "NewTrack(movie as Movie, mediaType as string, timeScale as integer, width as "
                 "integer = 0, height as integer = 0) as integer"),
    KRZ_FUNCTION(add_reference,
                 "AddReference(trackHandle as integer, toTrackHandle as integer, type as string)"),
    KRZ_FUNCTION(
        clock_text,
        "ClockText(time as int64, timeScale as integer, hourDigits as integer = 1) as string"),
    KRZ_FUNCTION(remove_track, "RemoveTrack(trackHandle as integer)"),
    KRZ_FUNCTION(digest, "SampleDigest(trackHandle as integer, count as integer = -1) as string"),
    KRZ_FUNCTION(last_failure, "MovieFailure as string"),
    KRZ_FUNCTION(problems, "MovieProblems(movie as Movie) as string"),
};

}  // namespace

void register_movie_tools(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
