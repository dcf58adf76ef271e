// Saves a movie as a new file that appears under its name only when it is whole.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <random>

#include "saving/compose.h"
#include "saving/file_layout.h"
#include "saving/file_writer.h"
#include "saving/saving.h"

namespace toolbox {

namespace {

/// The file that a save may replace.
struct Target {
  std::string path;  // symbolic links followed
  std::string folder;
  bool exists = false;
  struct stat info = {};
};

Result<Target> find_target(const std::string& path) {
  if (path.empty() || path.find('\0') != std::string::npos) {
    return Status(bdNamErr, "a movie cannot be saved under an empty name; give a path");
  }
  Target target{.path = path, .folder = "."};
  char followed[PATH_MAX];
  if (::realpath(path.c_str(), followed) != nullptr) target.path = followed;
  target.exists = ::stat(target.path.c_str(), &target.info) == 0;
  if (target.exists && !S_ISREG(target.info.st_mode)) {
    return Status(bdNamErr, path + ": this is a folder or a device; give the name of a file");
  }
  if (const size_t slash = target.path.rfind('/'); slash != std::string::npos) {
    target.folder = slash == 0 ? "/" : target.path.substr(0, slash);
  }
  return target;
}

bool is_own_file(const Movie& movie, const Target& target) {
  struct stat own;
  const FileSource* disk = movie.opened().disk;
  return target.exists && disk != nullptr && ::fstat(disk->descriptor(), &own) == 0 &&
         own.st_dev == target.info.st_dev && own.st_ino == target.info.st_ino;
}

/// Whether somebody has the file that is to be replaced locked.
Status check_unlocked(const Target& target) {
  const int descriptor = ::open(target.path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return {};  // not for us to read, but perhaps to replace
  const bool is_locked = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  ::close(descriptor);
  if (!is_locked) return {};
  return {fBsyErr, target.path + ": another program has this movie open; close it there first"};
}

/// A file that is removed again unless it was put in place.
class TemporaryFile {
 public:
  static Result<TemporaryFile> create(const Target& target) {
    const size_t slash = target.path.rfind('/');
    const std::string name =
        slash == std::string::npos ? target.path : target.path.substr(slash + 1);
    std::random_device random;
    for (int attempt = 0;; ++attempt) {
      const std::string path =
          target.folder + "/." + name.substr(0, 200) + ".krz-" + std::to_string(random());
      Result<int> descriptor = Storage::current().create(path);
      if (descriptor.ok()) return TemporaryFile(path, descriptor.value());
      if (descriptor.status().code() != dupFNErr || attempt == 100) return descriptor.take_status();
    }
  }

  TemporaryFile(TemporaryFile&& other) noexcept
      : path_(std::exchange(other.path_, std::string())),
        descriptor_(std::exchange(other.descriptor_, -1)) {}
  TemporaryFile& operator=(TemporaryFile&&) = delete;
  ~TemporaryFile() {
    if (!path_.empty()) Storage::current().remove(path_);
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  int descriptor() const { return descriptor_; }

  Status put_in_place(const Target& target, bool overwrite) {
    if (overwrite) {
      TRY(Storage::current().rename(path_, target.path));
    } else {
      TRY(Storage::current().rename_new(path_, target.path));
    }
    path_.clear();
    return Storage::current().flush_folder(target.folder);
  }

 private:
  TemporaryFile(std::string path, int descriptor)
      : path_(std::move(path)), descriptor_(descriptor) {}

  std::string path_;
  int descriptor_;
};

/// Extended attributes, as far as permitted: those of the system's own need rights that few have.
void copy_attributes(const std::string& from, int to) {
  char names[64 * 1024];
  const ssize_t size = ::listxattr(from.c_str(), names, sizeof names);
  for (ssize_t at = 0; at < size; at += static_cast<ssize_t>(std::strlen(names + at)) + 1) {
    Bytes value(64 * 1024);
    const ssize_t length = ::getxattr(from.c_str(), names + at, value.data(), value.size());
    if (length >= 0) {
      (void)::fsetxattr(to, names + at, value.data(), static_cast<size_t>(length), 0);
    }
  }
}

/// The permissions of the file that is replaced, or those that new files get.
void set_permissions(const Target& target, int file) {
  if (!target.exists) {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    (void)::fchmod(file, 0666 & ~mask);
    return;
  }
  // Giving a file away takes the bits that chmod sets, so they come last.
  if (::fchown(file, target.info.st_uid, target.info.st_gid) != 0) {
    (void)::fchown(file, static_cast<uid_t>(-1), target.info.st_gid);
  }
  copy_attributes(target.path, file);
  (void)::fchmod(file, target.info.st_mode & 07777);
}

Status write_file(const Movie& movie, const FileLayout& layout, int file, const std::string& name) {
  FileWriter writer(file, 0, name);
  writer.tell(layout.size);
  for (size_t i = 0; i <= layout.parts.size(); ++i) {
    if (i == layout.movie_place) TRY(writer.write(layout.movie_atom, movie.opened()));
    if (i == layout.parts.size()) break;
    const FilePart& part = layout.parts[i];
    if (part.new_payload) TRY(writer.write_header(part.type, *part.new_payload));
    TRY(writer.copy(part.bytes, movie.opened()));
  }
  if (movie.pending().size() > 0) {
    TRY(writer.write_header(four_cc("mdat"), movie.pending().size()));
    TRY(write_pending(writer, movie.pending()));
  }
  if (const uint64_t taken = layout.other_files.taken_size(); taken > 0) {
    TRY(writer.write_header(four_cc("mdat"), taken));
    for (const OtherFilesData::Range& range : layout.other_files.taken()) {
      TRY(writer.copy(*range.file->disk, range.begin, range.end - range.begin));
    }
  }
  return writer.finish();
}

}  // namespace

Result<SavePlan> plan_save_as(const Movie& movie) {
  FileLayout layout;
  TRY(lay_out_file(movie, {}, layout));
  return SavePlan{SaveMethod::kRewrite, layout.size, layout.movie_atom.size()};
}

Status save_movie_as(Movie& movie, const std::string& path, SaveAsOptions options) {
  TRY_ASSIGN(const Target target, find_target(path));
  const bool is_own = is_own_file(movie, target);
  if (target.exists && !options.overwrite) {
    return {dupFNErr, path +
                          ": there is such a file already; choose another name, or ask to "
                          "overwrite it"};
  }
  if (const FileSource* disk = movie.opened().disk) TRY(disk->check_unchanged());
  if (target.exists && !is_own) TRY(check_unlocked(target));
  if (is_own && target.info.st_nlink > 1) {
    return {wrPermErr, path +
                           ": this file has several names (hard links), which a new file would "
                           "part; save in place, or under another name"};
  }
  FileLayout layout;
  TRY(lay_out_file(movie, options, layout));
  TRY_ASSIGN(TemporaryFile file, TemporaryFile::create(target));
  TRY(Storage::current().reserve(file.descriptor(), 0, layout.size, path));
  TRY(write_file(movie, layout, file.descriptor(), path));
  set_permissions(target, file.descriptor());
  TRY(Storage::current().flush(file.descriptor(), path));
  TRY(file.put_in_place(target, options.overwrite));
  const FileSource* disk = movie.opened().disk;
  const FileAccess access = disk == nullptr ? FileAccess::kWriting : disk->access();
  TRY_ASSIGN(OpenedMovie saved, open_movie_file(path, access));
  return movie.rebase(std::move(saved));
}

}  // namespace toolbox
