#include "foundation/frameworks.h"

#include <dlfcn.h>
#include <limits.h>
#include <sys/stat.h>

#include <cstdlib>

#include "foundation/objects.h"

namespace toolbox {

namespace {

// From the folder of the libraries.
constexpr char kBeside[] = "/krz/Frameworks";

bool is_folder(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The folder of the library or program that this code was linked into, all links followed.
std::string own_folder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&frameworks_folder), &info) == 0 || info.dli_fname == nullptr)
    return ".";
  char real[PATH_MAX];
  const std::string file = realpath(info.dli_fname, real) != nullptr ? real : info.dli_fname;
  const size_t slash = file.rfind('/');
  return slash == std::string::npos ? "." : file.substr(0, slash);
}

}  // namespace

std::optional<std::string> frameworks_folder() {
  if (const char* given = std::getenv("KRZ_FRAMEWORKS"); given != nullptr && *given != '\0') {
    return is_folder(given) ? std::optional<std::string>(given) : std::nullopt;
  }
  const std::string own = own_folder();
  for (const char* place : {kBeside, "/../lib/krz/Frameworks"}) {
    if (is_folder(own + place)) return own + place;
  }
  return std::nullopt;
}

Status check_frameworks() {
  constexpr char kFix[] =
      "; install krz again, or set KRZ_FRAMEWORKS to the folder of its frameworks";
  const std::optional<std::string> folder = frameworks_folder();
  if (!folder) {
    const char* const given = std::getenv("KRZ_FRAMEWORKS");
    const std::string place = given != nullptr && *given != '\0' ? given : own_folder() + kBeside;
    return {fnfErr, "\"" + place + "\": there is no such folder" + kFix};
  }
  for (const char* name : {"ApplicationServices.framework", "Carbon.framework"}) {
    FoundationBundle bundle(*folder + "/" + name);
    if (!bundle.load()) {
      return {fnfErr, bundle.problem() + kFix +
                          "; a library that it needs may be missing (Debian: libfontconfig1, "
                          "libfreetype6)"};
    }
  }
  return {};
}

void* find_framework_function(const char* framework, const char* name) {
  const std::optional<std::string> folder = frameworks_folder();
  if (!folder) return nullptr;
  FoundationBundle bundle(*folder + "/" + framework);
  return bundle.load() ? bundle.find_function(name) : nullptr;
}

}  // namespace toolbox
