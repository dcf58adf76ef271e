// A folder for the files of one test, gone when the test ends.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace toolbox {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = ::testing::TempDir() + "krz-XXXXXX";
    folder_ = ::mkdtemp(pattern.data());
  }
  ~ScratchFolder() { std::filesystem::remove_all(folder_); }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  std::string path(const std::string& name) const { return (folder_ / name).string(); }
  template <class Bytes>
  std::string write(const std::string& name, const Bytes& bytes) const {
    std::ofstream file(path(name), std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path(name);
  }

 private:
  std::filesystem::path folder_;
};

/// What a command prints; nothing when it fails.
inline std::string output_of(const std::string& command) {
  std::string text;
  FILE* pipe = ::popen((command + " 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) return text;
  char part[4096];
  while (const size_t count = std::fread(part, 1, sizeof part, pipe)) text.append(part, count);
  return ::pclose(pipe) == 0 ? text : std::string();
}

}  // namespace toolbox
