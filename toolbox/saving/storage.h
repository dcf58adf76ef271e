// Every system call that writes: one door, so that tests can fail, stop and record what goes
// through.
#pragma once

#include <cstdint>
#include <string>

#include "base/bytes.h"
#include "base/status.h"

namespace toolbox {

/// Writing to files. Descriptors stay the caller's; `name` is what messages call the file.
/// Failures: dskFulErr for a full disk, quota or size limit, wrPermErr, else ioErr; the text says
/// which step.
class Storage {
 public:
  virtual ~Storage() = default;

  /// The one in use: the system's, unless a test has put another in its place.
  static Storage& current();

  virtual Status write(int file, uint64_t offset, ByteView bytes, const std::string& name);

  /// Copies, or has the files share what they can share. REQUIRES: in one file, the ranges do not
  /// overlap.
  virtual Status copy(int from, uint64_t from_offset, int to, uint64_t to_offset, uint64_t size,
                      const std::string& name);

  /// Makes sure that there is room for the bytes [offset, offset + size). A file system that cannot
  /// say is taken at its word later.
  virtual Status reserve(int file, uint64_t offset, uint64_t size, const std::string& name);

  virtual Status set_size(int file, uint64_t size, const std::string& name);

  /// Waits until everything written to the file is on the disk.
  virtual Status flush(int file, const std::string& name);

  /// Waits until the names in a folder are on the disk.
  virtual Status flush_folder(const std::string& folder);

  /// A new file for reading and writing that only its owner may see. Fails also: dupFNErr.
  virtual Result<int> create(const std::string& path);

  /// Puts a file in the place of another, in one step.
  virtual Status rename(const std::string& from, const std::string& to);

  /// Gives a file a name that no file has; the old name goes. Fails also: dupFNErr.
  virtual Status rename_new(const std::string& from, const std::string& to);

  /// Best effort: nothing can be done about a failure.
  virtual void remove(const std::string& path);
};

/// Puts a storage in the place of the system's for its lifetime. For tests.
class ScopedStorage {
 public:
  explicit ScopedStorage(Storage& storage);
  ~ScopedStorage();
  ScopedStorage(const ScopedStorage&) = delete;
  ScopedStorage& operator=(const ScopedStorage&) = delete;

 private:
  Storage* previous_;
};

}  // namespace toolbox
