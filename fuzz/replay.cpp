// Feeds files, all files of folders, and small changes of each to a fuzz target in a build without
// a fuzzer. An input that crashes or takes too long is kept in a file, which is named.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "mutations.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size);
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

using Bytes = std::vector<uint8_t>;

constexpr unsigned kMostSeconds = 10;               // for one input, sanitizers included
constexpr rlim_t kMostMemory = rlim_t{512} << 20u;  // of the whole program

// What is being fed now, for the handler of a crash.
const Bytes* g_input = nullptr;
std::string g_kept_path;

void keep_input() {
  if (!g_input) return;
  const int file = open(g_kept_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
  const bool kept = file >= 0 && write(file, g_input->data(), g_input->size()) ==
                                     static_cast<ssize_t>(g_input->size());
  const char* const text = kept ? "\nthe input is kept in " : "\nthe input cannot be kept in ";
  static_cast<void>(!write(2, text, std::strlen(text)));
  static_cast<void>(!write(2, g_kept_path.c_str(), g_kept_path.size()));
  static_cast<void>(!write(2, "\n", 1));
  g_input = nullptr;
}

void on_signal(int signal) {
  keep_input();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void watch() {
  std::signal(SIGALRM, on_signal);
  std::signal(SIGABRT, on_signal);
  if (__sanitizer_set_death_callback) {
    __sanitizer_set_death_callback(keep_input);
    return;  // the sanitizer reports the other signals itself, and needs its memory
  }
  std::signal(SIGSEGV, on_signal);
  std::signal(SIGBUS, on_signal);
  std::signal(SIGFPE, on_signal);
  const rlimit memory{kMostMemory, kMostMemory};
  setrlimit(RLIMIT_AS, &memory);
}

void feed(const Bytes& bytes) {
  g_input = &bytes;
  alarm(kMostSeconds);
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  alarm(0);
  g_input = nullptr;
}

bool read_file(const std::filesystem::path& path, Bytes& bytes) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) {
    std::fprintf(stderr, "%s: cannot be read\n", path.c_str());
    return false;
  }
  uint8_t piece[65536];
  while (const size_t count = std::fread(piece, 1, sizeof piece, file)) {
    bytes.insert(bytes.end(), piece, piece + count);
  }
  std::fclose(file);
  return true;
}

// In one order on every machine.
std::vector<std::filesystem::path> files_below(const char* path) {
  std::error_code error;
  if (!std::filesystem::is_directory(path, error)) return {path};
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

int main(int count, char** arguments) {
  uint64_t changes = 0;
  int first = 1;
  if (count > 2 && std::strcmp(arguments[1], "--changes") == 0) {
    changes = std::strtoull(arguments[2], nullptr, 10);
    first = 3;
  }
  if (count <= first) {
    std::fprintf(stderr, "usage: %s [--changes COUNT] FILE|FOLDER...\n", arguments[0]);
    return 2;
  }
  watch();
  const std::string program = std::filesystem::path(arguments[0]).filename().string();
  uint64_t fed = 0;
  bool all_read = true;
  for (int i = first; i < count; ++i) {
    for (const auto& path : files_below(arguments[i])) {
      Bytes seed;
      all_read = read_file(path, seed) && all_read;
      g_kept_path = program + "-find-" + path.filename().string();
      feed(seed);
      for (uint64_t number = 0; number < changes; ++number) {
        feed(krz_fuzz::changed(seed, number));
      }
      fed += 1 + changes;
    }
  }
  std::printf("%llu inputs replayed\n", static_cast<unsigned long long>(fed));
  return all_read && fed > 0 ? 0 : 1;
}
