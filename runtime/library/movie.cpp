#include "library/movie.h"

#include <Toolbox/Toolbox.h>

#include <algorithm>

#include "library/parts.h"
#include "library/watched_work.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

struct MovieData {
  Movie movie;
  REALstring path;
};

REALclassDefinition g_class;

MovieData& data_of(REALobject movie) { return data_in<MovieData>(movie, g_class); }

void close(REALobject movie) {
  if (data_of(movie).movie) DisposeMovie(data_of(movie).movie);
  data_of(movie).movie = nullptr;
}

void destroy(REALobject movie) {
  close(movie);
  unlock_string(data_of(movie).path);
}

/// Raises what the toolbox has to say of its failed call.
void raise_failure(OSErr status, const std::string& otherwise) {
  const std::string_view detail = ToolboxErrorDetail();
  raise_exception("IOException", detail.empty() ? otherwise : std::string(detail), status);
}

/// A Movie object for a movie, which it owns; without memory the movie is disposed.
REALobject movie_object(Movie reference, REALstring path) {
  const ClassInfo* const class_info = Runtime::current().registry().find_class(g_class.name);
  const REALobject movie = class_info ? new_instance(*class_info) : nullptr;
  if (!movie) {
    DisposeMovie(reference);
    return nullptr;
  }
  lock_string(path);
  data_of(movie) = {reference, path};
  return movie;
}

REALobject open_movie(REALstring path, bool for_writing) {
  const std::string file = string_path(path);
  Movie reference = nullptr;
  const auto open = for_writing ? &ToolboxOpenMovieForWriting : &ToolboxOpenMovie;
  if (const OSErr status = open(file.c_str(), &reference); status != noErr) {
    raise_failure(status, "\"" + file + "\" cannot be opened");
    return nullptr;
  }
  ToolboxAllowExternalFiles(reference, Runtime::current().options().allow_external_files);
  return movie_object(reference, path);
}

REALobject new_movie(int32_t time_scale) {
  Movie reference = nullptr;
  if (const OSErr status = ToolboxNewMovie(time_scale, &reference); status != noErr) {
    raise_failure(status, "the movie cannot be made");
    return nullptr;
  }
  return movie_object(reference, nullptr);
}

int32_t time_scale(REALobject movie) {
  return data_of(movie).movie ? GetMovieTimeScale(data_of(movie).movie) : 0;
}

int32_t duration(REALobject movie) {
  return data_of(movie).movie ? GetMovieDuration(data_of(movie).movie) : 0;
}

// Raises IOException for the first damaged table of any track.
void check(REALobject movie) {
  const OSErr status = ToolboxCheckMovie(data_of(movie).movie);
  if (status != noErr) raise_failure(status, "the movie is closed");
}

// Where the movie stands, in its time scale; levels and time codes are those of that moment.
int32_t position(REALobject movie) { return GetMovieTime(data_of(movie).movie, nullptr); }

void set_position(REALobject movie, int32_t time) {
  SetMovieTimeValue(data_of(movie).movie, std::clamp(time, 0, duration(movie)));
}

// 256 is full.
int32_t volume(REALobject movie) { return GetMoviePreferredVolume(data_of(movie).movie); }

void set_volume(REALobject movie, int32_t volume) {
  SetMoviePreferredVolume(data_of(movie).movie,
                          static_cast<int16_t>(std::clamp(volume, INT16_MIN + 0, INT16_MAX + 0)));
}

bool is_modified(REALobject movie) {
  return data_of(movie).movie && ToolboxMovieIsModified(data_of(movie).movie);
}

// Whether samples of other movies are copied into this one, rather than referred to.
bool copies_samples(REALobject movie) {
  return data_of(movie).movie && ToolboxMovieCopiesSamples(data_of(movie).movie);
}

void set_copies_samples(REALobject movie, bool copies) {
  const OSErr status = ToolboxSetMovieCopiesSamples(data_of(movie).movie, copies);
  if (status != noErr) raise_failure(status, "the movie is closed");
}

void save(REALobject movie) {
  const OSErr status = ToolboxSaveMovie(data_of(movie).movie);
  if (status != noErr) raise_failure(status, "the movie is closed");
}

void save_as(REALobject movie, REALstring path, bool overwrite, bool shown_only) {
  const std::string file = string_path(path);
  const WatchedWork progress("writing MiB", 1024 * 1024);
  const auto save_movie = shown_only ? ToolboxSaveShownMovieAs : ToolboxSaveMovieAs;
  const OSErr status = save_movie(data_of(movie).movie, file.c_str(), overwrite);
  if (status != noErr) {
    raise_failure(status, "the movie is closed");
    return;
  }
  lock_string(path);
  unlock_string(data_of(movie).path);
  data_of(movie).path = path;
}

int64_t bytes_to_save(REALobject movie, bool as_new_file) {
  ToolboxSavePlan plan{};
  const OSErr status = ToolboxPlanSave(data_of(movie).movie, as_new_file, &plan);
  if (status != noErr) raise_failure(status, "the movie is closed");
  return static_cast<int64_t>(plan.bytesWritten);
}

REALstring path_of(REALobject movie) {
  lock_string(data_of(movie).path);
  return data_of(movie).path;
}

MethodEntry g_methods[] = {
    KRZ_METHOD(time_scale, "TimeScale as integer"),
    KRZ_METHOD(duration, "Duration as integer"),
    KRZ_METHOD(path_of, "Path as string"),
    KRZ_ASSIGNABLE(position, set_position, "Position as integer"),
    KRZ_ASSIGNABLE(volume, set_volume, "Volume as integer"),
    KRZ_METHOD(is_modified, "IsModified as boolean"),
    KRZ_ASSIGNABLE(copies_samples, set_copies_samples, "CopiesSamples as boolean"),
    KRZ_METHOD(save, "Save"),
    KRZ_METHOD(
        save_as,
        "SaveAs(path as string, overwrite as boolean = false, shownOnly as boolean = false)"),
    KRZ_METHOD(bytes_to_save, "BytesToSave(asNewFile as boolean = false) as int64"),
    KRZ_METHOD(check, "Check"),
    KRZ_METHOD(close, "Close"),
};

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(open_movie, "OpenMovie(path as string, forWriting as boolean = false) as Movie"),
    KRZ_FUNCTION(new_movie, "NewMovie(timeScale as integer) as Movie"),
};

}  // namespace

Movie movie_reference(REALobject movie) {
  const bool is_movie = movie && movie->class_info && movie->class_info->definition() == &g_class;
  return is_movie ? data_of(movie).movie : nullptr;
}

void register_movie(Registry& registry) {
  g_class = class_of<MovieData>("Movie");
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
  registry.register_functions(kFunctions);
}

}  // namespace krz
