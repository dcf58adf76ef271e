// The calls of Toolbox/Toolbox.h: opening movies by path, error texts, counts for leak checks.
#include <Toolbox/Toolbox.h>

#include "calls/guard.h"
#include "calls/references.h"
#include "memory/handles.h"

using namespace toolbox::calls;
using toolbox::Status;

TOOLBOX_CALL const char* ToolboxVersion() { return KRZ_VERSION; }

namespace {

OSErr open_movie(const char* path, toolbox::FileAccess access, Movie* movie) {
  if (movie != nullptr) *movie = nullptr;
  return guarded([&]() -> Status {
    if (path == nullptr || movie == nullptr)
      return Status(paramErr, "a path and a place for the movie are needed");
    TRY_ASSIGN(toolbox::OpenedMovie opened, toolbox::open_movie_file(path, access));
    TRY_ASSIGN(std::unique_ptr<toolbox::Movie> loaded, toolbox::Movie::load(std::move(opened)));
    TRY_ASSIGN(*movie, reference_to(*loaded));
    // Owned by its reference from here on; DisposeMovie ends it.
    static_cast<void>(loaded.release());
    return {};
  });
}

}  // namespace

TOOLBOX_CALL OSErr ToolboxOpenMovie(const char* path, Movie* movie) {
  return open_movie(path, toolbox::FileAccess::kReading, movie);
}

TOOLBOX_CALL OSErr ToolboxOpenMovieForWriting(const char* path, Movie* movie) {
  return open_movie(path, toolbox::FileAccess::kWriting, movie);
}

TOOLBOX_CALL OSErr ToolboxNewMovie(TimeScale timeScale, Movie* movie) {
  if (movie != nullptr) *movie = nullptr;
  return guarded([&]() -> Status {
    if (timeScale <= 0 || movie == nullptr)
      return Status(paramErr, "a time scale above 0 and a place for the movie are needed");
    TRY_ASSIGN(std::unique_ptr<toolbox::Movie> made,
               toolbox::Movie::create(static_cast<uint32_t>(timeScale)));
    TRY_ASSIGN(*movie, reference_to(*made));
    // Owned by its reference from here on; DisposeMovie ends it.
    static_cast<void>(made.release());
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxCheckMovie(Movie movie) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    for (const auto& track : found->tracks()) {
      if (track->media() != nullptr) TRY(track->media()->check());
    }
    return {};
  });
}

TOOLBOX_CALL void DisposeMovie(Movie movie) {
  guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    delete found;
    return {};
  });
}

TOOLBOX_CALL const char* ToolboxErrorDetail() { return error_detail(); }
TOOLBOX_CALL uint32_t ToolboxLiveReferences() { return toolbox::tokens::live_count(); }
TOOLBOX_CALL uint32_t ToolboxLiveHandles() { return toolbox::handles::live_count(); }
