#include "library/movie.h"

#include <Toolbox/Toolbox.h>

#include "library/parts.h"
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

REALobject open_movie(REALstring path) {
  const std::string file = string_utf8(path);
  Movie reference = nullptr;
  if (const OSErr status = ToolboxOpenMovie(file.c_str(), &reference); status != noErr) {
    raise_failure(status, "\"" + file + "\" cannot be opened");
    return nullptr;
  }
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

REALstring path_of(REALobject movie) {
  lock_string(data_of(movie).path);
  return data_of(movie).path;
}

MethodEntry g_methods[] = {
    KRZ_METHOD(time_scale, "TimeScale as integer"),
    KRZ_METHOD(duration, "Duration as integer"),
    KRZ_METHOD(path_of, "Path as string"),
    KRZ_METHOD(check, "Check"),
    KRZ_METHOD(close, "Close"),
};

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(open_movie, "OpenMovie(path as string) as Movie"),
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
