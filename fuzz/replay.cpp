// Feeds files, and all files of folders, to a fuzz target in a build without a fuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size);

namespace {

bool feed(const std::filesystem::path& path) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) {
    std::fprintf(stderr, "%s: cannot be read\n", path.c_str());
    return false;
  }
  std::vector<uint8_t> bytes;
  uint8_t piece[65536];
  while (const size_t count = std::fread(piece, 1, sizeof piece, file)) {
    bytes.insert(bytes.end(), piece, piece + count);
  }
  std::fclose(file);
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  size_t fed = 0;
  bool all_read = true;
  for (int i = 1; i < count; ++i) {
    std::error_code error;
    if (!std::filesystem::is_directory(arguments[i], error)) {
      all_read = feed(arguments[i]) && all_read;
      ++fed;
      continue;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(arguments[i])) {
      if (!entry.is_regular_file()) continue;
      all_read = feed(entry.path()) && all_read;
      ++fed;
    }
  }
  std::printf("%zu inputs replayed\n", fed);
  return all_read && fed > 0 ? 0 : 1;
}
