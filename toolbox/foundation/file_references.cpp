#include "foundation/file_references.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>

#include "base/big_endian.h"

namespace toolbox::file_references {

namespace {

// Marks records of ours; real volumes have small negative numbers.
constexpr SInt16 kVolume = -28271;
constexpr char kMark[8] = {'f', 'i', 'l', 'e', 'r', 'e', 'f', '1'};

/// All paths that records stand for. They never go away, as nobody disposes a record.
class Paths {
 public:
  uint32_t number_of(const std::string& path) {
    const std::lock_guard lock(mutex_);
    const auto known = numbers_.find(path);
    if (known != numbers_.end()) return known->second;
    const std::string& kept = paths_.emplace_back(path);
    const auto number = static_cast<uint32_t>(paths_.size());
    numbers_.emplace(kept, number);
    return number;
  }

  const char* path(uint32_t number) {
    const std::lock_guard lock(mutex_);
    return number == 0 || number > paths_.size() ? nullptr : paths_[number - 1].c_str();
  }

 private:
  std::mutex mutex_;
  std::deque<std::string> paths_;  // by number, from 1; never moved
  std::unordered_map<std::string_view, uint32_t> numbers_;
};

Paths& paths() {
  static Paths* const kPaths = new Paths;
  return *kPaths;
}

}  // namespace

Result<std::string> absolute_path(const std::string& path) {
  if (path.empty()) return Status(bdNamErr, "an empty path names no file");
  if (path.front() == '/') return path;
  const std::unique_ptr<char, decltype(&std::free)> folder(getcwd(nullptr, 0), &std::free);
  if (!folder) return Status(ioErr, "the working directory is gone; use an absolute path");
  std::string absolute = folder.get();
  if (absolute.back() != '/') absolute += '/';
  return absolute + path;
}

FSSpec spec_of(const std::string& path) {
  FSSpec spec{};
  spec.vRefNum = kVolume;
  spec.parID = static_cast<SInt32>(paths().number_of(path));
  // For people only: the name is cut where a Pascal string ends.
  const std::string_view name = std::string_view(path).substr(path.rfind('/') + 1);
  spec.name[0] = static_cast<UInt8>(std::min(name.size(), sizeof spec.name - 1));
  std::memcpy(spec.name + 1, name.data(), spec.name[0]);
  return spec;
}

FSRef ref_of(const std::string& path) {
  FSRef ref{};
  std::memcpy(ref.hidden, kMark, sizeof kMark);
  store_big_endian(ref.hidden + sizeof kMark, paths().number_of(path));
  return ref;
}

const char* path_of(const FSSpec& spec) {
  return spec.vRefNum == kVolume ? paths().path(static_cast<uint32_t>(spec.parID)) : nullptr;
}

const char* path_of(const FSRef& ref) {
  if (std::memcmp(ref.hidden, kMark, sizeof kMark) != 0) return nullptr;
  return paths().path(load_big_endian<uint32_t>(ref.hidden + sizeof kMark));
}

}  // namespace toolbox::file_references
