// Media data in other files, when a movie is written anew: it is taken over, so that the new file
// stands by itself, or left where it is.
#pragma once

#include <map>

#include "file/memory_source.h"
#include "movie/external_files.h"
#include "movie/movie.h"

namespace toolbox {

enum class OtherFiles : uint8_t { kTakenOver, kLeft };

/// What the tables and data references of a movie become. Borrows nothing of the movie.
class OtherFilesData {
 public:
  /// The parts of a media that are written in place of its own.
  struct Tables {
    std::vector<Bytes> data_references;
    std::unique_ptr<MemorySource> rows;  // of 8 bytes: offsets as OffsetMap knows them
    TableView chunk_offsets;
  };

  /// Bytes of another file that are taken over.
  struct Range {
    std::shared_ptr<const ExternalFile> file;
    uint64_t begin = 0;
    uint64_t end = 0;
    uint64_t place = 0;  // behind those before it
  };

  OtherFilesData() = default;

  /// Looks at the chunks of every media with data references to other files. Fails: as the tables
  /// of the media, memFullErr; when data is taken over also as open_external() for a file that is
  /// not to be had, and endOfDataReached for one that is too short.
  static Result<OtherFilesData> find(const Movie& movie, OtherFiles mode);

  /// Null for a media whose data all lies in the movie's own file.
  const Tables* tables_of(const Media& media) const;

  bool has_any() const { return !tables_.empty(); }

  /// What is taken over, in the order in which it is written, and how many bytes that is.
  const std::vector<Range>& taken() const { return taken_; }
  uint64_t taken_size() const { return taken_.empty() ? 0 : taken_.back().place + size_of_last(); }

 private:
  uint64_t size_of_last() const { return taken_.back().end - taken_.back().begin; }

  std::map<const Media*, Tables> tables_;
  std::vector<Range> taken_;
};

}  // namespace toolbox
