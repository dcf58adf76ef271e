// Writes a file front to back: small pieces gathered, large ones copied from file to file.
#pragma once

#include <memory>
#include <string>

#include "file/file_source.h"
#include "file/movie_file.h"
#include "movie/pending_data.h"
#include "saving/atom_pieces.h"
#include "saving/checksum.h"
#include "saving/storage.h"

namespace toolbox {

/// Writes from `offset` on. The descriptor stays the caller's. Every call fails as Storage::write
/// and as reading the source fails.
class FileWriter {
 public:
  FileWriter(int file, uint64_t offset, std::string name)
      : file_(file), position_(offset), name_(std::move(name)) {}

  /// Shows `passing` what is copied from now on; null: nobody.
  void show(PassingChecksum* passing) { passing_ = passing; }

  /// Tells WorkWatcher of what is copied from now on, as part of `total` bytes.
  void tell(uint64_t total) { total_ = total; }

  /// Where the next byte will stand.
  uint64_t position() const { return position_ + filled_; }

  Status write(ByteView bytes);
  Status write_number(uint32_t value);
  Status write_zeros(uint64_t count);

  /// Copies a range; `movie` is the movie whose file it may stand in.
  Status copy(const ByteRange& range, const OpenedMovie& movie);

  /// Copies a range of any file.
  Status copy(const FileSource& file, uint64_t offset, uint64_t size);

  Status write(const AtomPieces& pieces, const OpenedMovie& movie);

  /// The header of an atom of `payload` bytes, in the narrow form if it fits.
  Status write_header(FourCC type, uint64_t payload);

  /// Hands what is gathered to the system. Nothing is on the disk before Storage::flush().
  Status finish();

 private:
  static constexpr size_t kGathered = 256 * 1024;
  static constexpr size_t kPage = 4096;

  /// Room for up to `wanted` bytes behind what is gathered, at least one byte; what is put there
  /// counts once filled_ is moved on.
  Result<std::span<uint8_t>> room(uint64_t wanted);
  // So much is copied in larger pieces, straight from file to file.
  static constexpr uint64_t kWorthCopying = 16 * 1024 * 1024;

  // Somebody who watches hears of the copy this often.
  static constexpr uint64_t kAtOnce = 64 * 1024 * 1024;

  void tell_watcher() const;
  Status copy_file(const FileSource& file, uint64_t offset, uint64_t size);
  Status copy_through_memory(const ByteRange& range);

  int file_;
  uint64_t position_;
  std::string name_;
  std::unique_ptr<uint8_t[]> buffer_;  // kGathered bytes once there is something
  size_t filled_ = 0;
  PassingChecksum* passing_ = nullptr;
  uint64_t total_ = 0;  // 0: nobody is told
};

/// Writes all pending media data. Fails also as PendingData::read.
Status write_pending(FileWriter& writer, const PendingData& pending);

/// Bytes of an atom header before `payload` bytes.
inline uint64_t header_bytes(uint64_t payload) { return payload + 8 > UINT32_MAX ? 16 : 8; }

}  // namespace toolbox
