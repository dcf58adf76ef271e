// An open file that is read and written in large pieces, whatever the pieces a script asks for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace krz {

/// Calls that fail raise an IOException and answer false (or less than was asked for). Owns its
/// descriptor.
class BufferedFile {
 public:
  enum class Mode : uint8_t { kRead, kReadWrite, kCreate, kOverwrite, kAppend };

  /// Null, with the exception raised, when the file cannot be opened. kCreate refuses an existing
  /// file. A folder is refused.
  static BufferedFile* open(const std::string& path, Mode mode);

  /// Writes what is pending; what fails then is lost. close() tells.
  ~BufferedFile();
  BufferedFile(const BufferedFile&) = delete;
  BufferedFile& operator=(const BufferedFile&) = delete;

  /// Bytes read, fewer than `count` only at the end of the file or on failure.
  size_t read(char* to, size_t count);

  /// What lies ahead in the buffer, which is filled when it is empty; empty at the end of the file
  /// and on failure. skip() moves over a part of it.
  std::string_view ahead();
  void skip(size_t count) { used_ += count; }

  bool write(std::string_view bytes);
  bool flush();

  /// Bytes from the beginning of the file.
  int64_t position() const;
  bool seek(int64_t position);
  int64_t length();

 private:
  BufferedFile(int descriptor, std::string path)
      : descriptor_(descriptor), path_(std::move(path)) {}
  bool failed(const char* action);
  bool drop_ahead();

  int descriptor_;
  std::string path_;
  std::string buffer_;         // read ahead, or written and not yet in the file
  size_t used_ = 0;            // of what was read ahead
  int64_t file_position_ = 0;  // of the descriptor
  bool writing_ = false;
};

}  // namespace krz
