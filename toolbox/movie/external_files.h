// The files other than its own in which a movie has media data.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/bytes.h"
#include "file/file_source.h"
#include "file/window_source.h"

namespace toolbox {

/// One of them, open for reading. It is not locked: whoever owns it may go on writing to it.
struct ExternalFile {
  std::unique_ptr<WindowSource> source;
  const FileSource* disk = nullptr;  // what is beneath `source`
  std::string path;                  // absolute, links followed
};

/// Follows data references to files. A movie from somewhere else must not make us read any file it
/// likes, so only those are followed that lead into the folder of the movie or below it, and those
/// that were made while the movie is open.
class ExternalFiles {
 public:
  /// Files that stay open between two questions.
  static constexpr size_t kMostOpen = 8;

  /// The file that a data reference (whole entry) of the movie at `movie_path` leads to. A movie
  /// without a file has an empty path and no folder.
  /// Fails: couldNotResolveDataRef, its text naming the file: it is not there, may not be followed,
  /// or was replaced by another since it was referred to; permErr, ioErr.
  Result<std::shared_ptr<const ExternalFile>> open(ByteView entry, const std::string& movie_path);

  /// Notes that samples of the movie lie in an open file from now on; answers its path, absolute
  /// and with links followed. Fails: fBsyErr when the file was changed by somebody else since it
  /// was opened, ioErr.
  Result<std::string> refer_to(const FileSource& file);

  /// Lets references lead to a file from now on, wherever it lies: somebody named it.
  void allow(const std::string& path);

  /// Whether all files that were referred to are still where they were. Fails: fBsyErr, for one
  /// that is gone or was replaced.
  Status check_referred() const;

  /// Follows references to any place, as somebody consented to.
  void follow_anywhere(bool is_allowed) { follows_anywhere_ = is_allowed; }

 private:
  struct Referred {
    std::string path;
    uint64_t device = 0;
    uint64_t inode = 0;
  };
  struct Opened {
    Bytes entry;
    std::shared_ptr<const ExternalFile> file;
  };

  const Referred* find_referred(const std::string& path) const;
  Result<std::shared_ptr<const ExternalFile>> resolve(ByteView entry,
                                                      const std::string& movie_path) const;

  std::vector<Referred> referred_;
  std::vector<Opened> opened_;  // the latest asked for in front
  bool follows_anywhere_ = false;
};

}  // namespace toolbox
