// The calls of Toolbox/Toolbox.h that save movies, say how, and take saves back.
#include <Toolbox/Toolbox.h>

#include "base/work_watcher.h"
#include "calls/guard.h"
#include "calls/references.h"
#include "movie/keep_shown.h"
#include "saving/saving.h"
#include "saving/undo.h"

using namespace toolbox::calls;
using toolbox::Status;

namespace {

Status check_path(const char* path) {
  return path == nullptr ? Status(paramErr, "a path is needed") : Status();
}

}  // namespace

TOOLBOX_CALL OSErr ToolboxSetMovieCopiesSamples(Movie movie, Boolean copies) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    found->session().copies_samples = copies != 0;
    return {};
  });
}

TOOLBOX_CALL Boolean ToolboxMovieCopiesSamples(Movie movie) {
  return ask(Boolean{0}, find_movie, movie,
             [](auto& found) { return Boolean{found.session().copies_samples}; });
}

TOOLBOX_CALL OSErr ToolboxAllowExternalFiles(Movie movie, Boolean allowed) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    found->external_files().follow_anywhere(allowed != 0);
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxSaveMovie(Movie movie) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    return toolbox::save_movie(*found);
  });
}

TOOLBOX_CALL OSErr ToolboxSaveMovieAs(Movie movie, const char* path, Boolean overwrite) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    TRY(check_path(path));
    return toolbox::save_movie_as(*found, path, {.overwrite = overwrite != 0});
  });
}

TOOLBOX_CALL OSErr ToolboxSaveShownMovieAs(Movie movie, const char* path, Boolean overwrite) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    TRY(check_path(path));
    TRY(toolbox::keep_shown_samples(*found));
    return toolbox::save_movie_as(
        *found, path, {.overwrite = overwrite != 0, .media_data = toolbox::MediaDataKept::kUsed});
  });
}

TOOLBOX_CALL void ToolboxWatchWork(ToolboxWorkProc proc, void* context) {
  toolbox::WorkWatcher::current() = {proc, context};
}

TOOLBOX_CALL Boolean ToolboxMovieIsModified(Movie movie) {
  return ask(Boolean{0}, find_movie, movie,
             [](auto& found) { return Boolean{found.is_modified()}; });
}

TOOLBOX_CALL OSErr ToolboxPlanSave(Movie movie, Boolean asNewFile, ToolboxSavePlan* plan) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Movie* found, find_movie(movie));
    if (plan == nullptr) return {paramErr, "a place for the plan is needed"};
    TRY_ASSIGN(const toolbox::SavePlan made,
               asNewFile != 0 ? toolbox::plan_save_as(*found) : toolbox::plan_save(*found));
    *plan = {.method = static_cast<uint32_t>(made.method),
             .bytesWritten = made.bytes_written,
             .movieAtomBytes = made.movie_atom_bytes};
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxGetUndoStep(const char* path, uint32_t index, uint32_t* count,
                                      uint64_t* time) {
  return guarded([&]() -> Status {
    TRY(check_path(path));
    TRY_ASSIGN(const toolbox::OpenedMovie opened, toolbox::open_movie_file(path));
    TRY_ASSIGN(const std::vector<toolbox::UndoStep> steps, toolbox::undo_steps(opened));
    if (count != nullptr) *count = static_cast<uint32_t>(steps.size());
    if (time != nullptr) *time = index < steps.size() ? steps[index].time : 0;
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxUndoSave(const char* path) {
  return guarded([&]() -> Status {
    TRY(check_path(path));
    return toolbox::undo_save(path);
  });
}

TOOLBOX_CALL OSErr ToolboxCommitSaves(const char* path, uint64_t* overwritten) {
  return guarded([&]() -> Status {
    TRY(check_path(path));
    TRY_ASSIGN(const uint64_t bytes, toolbox::commit_saves(path));
    if (overwritten != nullptr) *overwritten = bytes;
    return {};
  });
}
