// A folder for the files of one test, gone when the test ends.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>

#include "base/bytes.h"

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
  std::string write(const std::string& name, const Bytes& bytes) const {
    std::ofstream file(path(name), std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return path(name);
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace toolbox
