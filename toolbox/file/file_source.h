// A file as a source: read with positioned reads, never mapped, so that a file another program
// shortens is an error.
#pragma once

#include "file/byte_source.h"

namespace toolbox {

class FileSource : public ByteSource {
 public:
  /// Opens the regular file at `path` for reading only.
  /// Fails: fnfErr (nothing there, a folder, a device), permErr (may not be read), bdNamErr, ioErr;
  /// the text names the file and what to do.
  static Result<std::unique_ptr<FileSource>> open(const std::string& path);

  ~FileSource() override;
  FileSource(const FileSource&) = delete;
  FileSource& operator=(const FileSource&) = delete;

  uint64_t size() const override { return size_; }
  const std::string& name() const override { return name_; }
  Status read(uint64_t offset, std::span<uint8_t> bytes) const override;

  /// The open descriptor, which the source keeps: for locks and for copying inside the kernel.
  int descriptor() const { return descriptor_; }

 private:
  FileSource(int descriptor, uint64_t size, std::string name)
      : descriptor_(descriptor), size_(size), name_(std::move(name)) {}

  int descriptor_;
  uint64_t size_;
  std::string name_;
};

}  // namespace toolbox
