// The program krz itself: loads the command from below the library folder, so that a missing or
// damaged part of an installation ends in a message and not in the system loader's.
//
// It uses nothing but the C library: it must run when everything else is gone.
#include <dlfcn.h>
#include <limits.h>
#include <stdlib.h>
#include <sys/auxv.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace {

/// What the command needs to start, below the library folder, each in front of what needs it.
/// Opened by its path, none is looked for in other folders. The command comes last.
constexpr const char* kParts[] = {"libtoolbox.so." KRZ_INTERFACE, "libkrzruntime.so." KRZ_INTERFACE,
                                  "krz/krz-command.so"};

int fail(const char* reason, const char* subject = "") {
  std::fprintf(stderr,
               "krz: %s%s; this installation of krz is incomplete or damaged, install krz again\n",
               subject, reason);
  return 1;
}

/// The file of this program, all links to it followed; a system without /proc knows only how it was
/// called. False when it cannot be told.
bool find_program(char (&path)[PATH_MAX]) {
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
  if (length > 0) {
    path[length] = '\0';
    return true;
  }
  const auto* const called = reinterpret_cast<const char*>(getauxval(AT_EXECFN));
  return called && realpath(called, path);
}

/// The library folder that belongs to this program, with a slash at its end. False when it cannot
/// be told.
bool find_libraries(char (&folder)[PATH_MAX]) {
  const char* rest = KRZ_LIBRARIES;
  if (!find_program(folder) || std::strlen(folder) + sizeof KRZ_LIBRARIES > sizeof folder)
    return false;
  char* end = nullptr;
  for (;;) {
    end = std::strrchr(folder, '/');
    if (!end) return false;
    if (std::strncmp(rest, "../", 3) != 0) break;
    *end = '\0';
    rest += 3;
  }
  std::snprintf(end + 1, sizeof folder - static_cast<size_t>(end + 1 - folder), "%s", rest);
  return true;
}

/// Says which part keeps the command from being loaded: one that is not there is named with its
/// place, for the loader names it without.
int explain(const char* folder, const char* reason) {
  char path[2 * PATH_MAX];
  for (const char* part : kParts) {
    std::snprintf(path, sizeof path, "%s%s", folder, part);
    if (access(path, F_OK) != 0) return fail(" is missing", path);
  }
  return fail(reason);
}

}  // namespace

int main(int argc, char** argv) {
  char folder[PATH_MAX];
  if (!find_libraries(folder)) return fail("it cannot be told where krz is");
  char path[2 * PATH_MAX];
  void* command = nullptr;
  for (const char* part : kParts) {
    std::snprintf(path, sizeof path, "%s%s", folder, part);
    command = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (!command) return explain(folder, dlerror());
  }
  using Entry = int (*)(int, char**);
  const auto entry = reinterpret_cast<Entry>(dlsym(command, "krz_command"));
  if (!entry) return explain(folder, dlerror());
  return entry(argc, argv);
}
