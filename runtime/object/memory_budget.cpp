#include "object/memory_budget.h"

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

namespace krz::memory_budget {

namespace {

// Below this the machine is not asked what it has.
constexpr size_t kSurely = size_t{64} << 20;
constexpr size_t kUnlimited = std::numeric_limits<size_t>::max();

size_t g_taken = 0;
size_t g_limit = kSurely;
bool g_limit_known = false;
bool g_refused = false;
int g_reserves = 0;

/// A small file of the system; empty when there is none.
std::string read_text(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return {};
  char buffer[8192];
  const ssize_t count = read(descriptor, buffer, sizeof buffer);
  close(descriptor);
  return count > 0 ? std::string(buffer, static_cast<size_t>(count)) : std::string();
}

/// The number that a text begins with, behind blanks; kUnlimited when there is none, as for "max".
size_t number_in(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  size_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  return read.ec == std::errc() ? number : kUnlimited;
}

size_t available_in_machine() {
  constexpr std::string_view kKey = "MemAvailable:";
  const std::string text = read_text("/proc/meminfo");
  const size_t place = text.find(kKey);
  if (place == std::string::npos) return kUnlimited;
  const size_t kibibytes = number_in(std::string_view(text).substr(place + kKey.size()));
  return kibibytes < kUnlimited / 1024 ? kibibytes * 1024 : kUnlimited;
}

/// The tightest limit of the process's control group and those around it.
size_t limit_of_groups() {
  size_t least = number_in(read_text("/sys/fs/cgroup/memory/memory.limit_in_bytes"));
  const std::string groups = read_text("/proc/self/cgroup");
  const size_t line = groups.starts_with("0::") ? 0 : groups.find("\n0::");
  if (line == std::string::npos) return least;
  const size_t begin = groups.find("::", line) + 2;
  std::string path = groups.substr(begin, groups.find('\n', begin) - begin);
  for (;;) {
    least = std::min(least, number_in(read_text("/sys/fs/cgroup" + path + "/memory.max")));
    if (path.empty()) return least;
    path.erase(std::min(path.rfind('/'), path.size()));
  }
}

size_t limit_of_machine() {
  size_t least = std::min(available_in_machine(), limit_of_groups());
  for (const auto resource : {RLIMIT_AS, RLIMIT_DATA}) {
    struct rlimit limit {};
    if (getrlimit(resource, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY)
      least = std::min<size_t>(least, limit.rlim_cur);
  }
  return least == kUnlimited ? least : least / 4 * 3;
}

}  // namespace

void set_limit(size_t bytes) {
  g_limit = bytes != 0 ? bytes : kSurely;
  g_limit_known = bytes != 0;
  g_refused = false;
}

bool take(size_t bytes) {
  if (g_taken <= g_limit && bytes <= g_limit - g_taken) {
    g_taken += bytes;
    return true;
  }
  if (g_reserves > 0) {
    g_taken += bytes;
    return true;
  }
  if (!g_limit_known) {
    g_limit = limit_of_machine();
    g_limit_known = true;
    return take(bytes);
  }
  g_refused = true;
  return false;
}

void give_back(size_t bytes) { g_taken -= bytes; }

void* take_block(void* block) {
  if (block == nullptr) {
    g_refused = true;
    return nullptr;
  }
  if (take(malloc_usable_size(block))) return block;
  std::free(block);
  return nullptr;
}

void free_block(void* block) {
  if (block != nullptr) give_back(malloc_usable_size(block));
  std::free(block);
}

bool take_refusal() {
  const bool refused = g_refused;
  g_refused = false;
  return refused;
}

void note_refusal() { g_refused = true; }

Reserve::Reserve() { ++g_reserves; }
Reserve::~Reserve() { --g_reserves; }

}  // namespace krz::memory_budget
