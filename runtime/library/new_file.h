// A file that appears under its name when it is whole, and leaves nothing behind when it is not.
#pragma once

#include <string>
#include <string_view>

namespace krz {

/// Written beside its place under another name. A device or a pipe is written to as it is. Calls
/// that fail raise an IOException and answer false.
class NewFile {
 public:
  NewFile() = default;
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// Unless `overwrite`, an existing file of that name is refused.
  bool create(const std::string& path, bool overwrite);

  /// Takes the process's standard output in place of a file.
  bool take_standard_output();

  bool write(std::string_view bytes);

  /// Gives the file its name.
  bool finish();

 private:
  bool failed(const char* action, int error);

  int descriptor_ = -1;
  std::string path_;
  std::string written_;  // the name until then; empty for what is written to as it is
  bool overwrites_ = false;
};

}  // namespace krz
