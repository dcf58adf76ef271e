// A file as a source: read with positioned reads, never mapped, so that a file another program
// shortens is an error.
#pragma once

#include "file/byte_source.h"

struct stat;

namespace toolbox {

enum class FileAccess : uint8_t {
  kReading,
  kWriting,
  kUnlocked,  // reading, without keeping writers away
};

class FileSource : public ByteSource {
 public:
  /// Opens the regular file at `path`. For writing, it is locked against every other writer and
  /// reader of this kind until it is closed; for reading, against writers, unless one has it
  /// already: what writers do leaves what is open readable. The locks are advisory. Fails: fnfErr
  /// (nothing there, a folder, a device), permErr (may not be read), wrPermErr (may not be
  /// written), fBsyErr (locked by somebody else), bdNamErr, ioErr; the text names the file and what
  /// to do.
  static Result<std::unique_ptr<FileSource>> open(const std::string& path,
                                                  FileAccess access = FileAccess::kReading);

  /// The same open file as it is now, after it was written to; the lock goes on without a gap.
  /// Fails: ioErr.
  Result<std::unique_ptr<FileSource>> reopen() const;

  ~FileSource() override;
  FileSource(const FileSource&) = delete;
  FileSource& operator=(const FileSource&) = delete;

  uint64_t size() const override { return size_; }
  const std::string& name() const override { return name_; }
  Status read(uint64_t offset, std::span<uint8_t> bytes) const override;

  /// The open descriptor, which the source keeps: for writing and for copying inside the kernel.
  int descriptor() const { return descriptor_; }
  FileAccess access() const { return access_; }

  /// Whether the file is as it was when it was opened, and still the one at its path.
  /// Fails: fBsyErr when it is not; ioErr.
  Status check_unchanged() const;

  /// Takes the file as it is now for unchanged: what was written to it was written by its owner.
  void note_own_writes() const;

 private:
  /// What tells whether a file was written to.
  struct Stamp {
    uint64_t device = 0;
    uint64_t inode = 0;
    int64_t modified_seconds = 0;
    int64_t modified_nanoseconds = 0;
    uint64_t size = 0;
    bool operator==(const Stamp&) const = default;
  };

  FileSource(int descriptor, FileAccess access, Stamp stamp, std::string name)
      : descriptor_(descriptor),
        access_(access),
        size_(stamp.size),
        stamp_(stamp),
        name_(std::move(name)) {}
  static Stamp stamp_of(const struct stat& info);

  int descriptor_;
  FileAccess access_;
  uint64_t size_;
  mutable Stamp stamp_;
  std::string name_;
};

}  // namespace toolbox
