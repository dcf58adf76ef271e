// Saving a movie: into its own file, or as a new one.
#pragma once

#include "movie/movie.h"
#include "saving/other_files.h"

namespace toolbox {

enum class SaveMethod : uint8_t {
  kNothing,  // the movie is as its file
  kAppend,   // new media data and the new movie atom behind the end of the file
  kReuse,    // the new movie atom in free space of the file
  kRewrite,  // the whole file anew, put in the place of the old one
};

/// What a save would do.
struct SavePlan {
  SaveMethod method = SaveMethod::kNothing;
  uint64_t bytes_written = 0;     // to the disk, media data included
  uint64_t movie_atom_bytes = 0;  // of the new movie atom
};

/// What saving into the movie's own file would do; the movie may be open for reading. Nothing is
/// written.
/// Fails: as save_movie() before its first write.
Result<SavePlan> plan_save(const Movie& movie);

/// What saving as a new file would do. Fails: as save_movie_as() before its first write.
Result<SavePlan> plan_save_as(const Movie& movie);

/// Saves into the movie's own file; whatever happens on the way, the file is the old movie or the
/// new one. Media data in other files stays there. Afterwards the movie stands over the new file
/// and is not modified. Fails: wrPermErr (the movie is not open for writing, or has no file yet),
/// fBsyErr (the file changed underneath, or one whose samples it got), dskFulErr, ioErr,
/// cantPutPublicMovieAtom (the text says what to do instead); the file is then the old movie, and
/// the movie keeps its changes.
Status save_movie(Movie& movie);

/// What of the media data in the movie's file a new file gets: all, or what sample tables use.
enum class MediaDataKept : uint8_t { kAll, kUsed };

struct SaveAsOptions {
  bool overwrite = false;  // put the new file in the place of one that is there
  MediaDataKept media_data = MediaDataKept::kAll;
  OtherFiles other_files = OtherFiles::kTakenOver;
};

/// Writes the movie as a new file: movie atom first, media data copied, that in other files as well
/// unless it is to be left there, fragments joined. The file appears under its name only when it is
/// whole; a file that it replaces gives it its permissions. Afterwards the movie stands over the
/// new file, open as it was before. Fails: dupFNErr (there is such a file and it may not be
/// replaced), wrPermErr, dskFulErr, ioErr, cantPutPublicMovieAtom, couldNotResolveDataRef or
/// endOfDataReached (the text names a file that the movie needs and that is not to be had, or too
/// short); nothing is left behind then, and the movie is as before.
Status save_movie_as(Movie& movie, const std::string& path, SaveAsOptions options = {});

}  // namespace toolbox
