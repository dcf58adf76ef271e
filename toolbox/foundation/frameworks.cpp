#include "foundation/frameworks.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <cstdlib>

#include "foundation/objects.h"

namespace toolbox {

namespace {

bool is_folder(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The folder of the library or program that this code was linked into.
std::string own_folder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&frameworks_folder), &info) == 0 || info.dli_fname == nullptr)
    return ".";
  const std::string file = info.dli_fname;
  const size_t slash = file.rfind('/');
  return slash == std::string::npos ? "." : file.substr(0, slash);
}

}  // namespace

std::optional<std::string> frameworks_folder() {
  if (const char* given = std::getenv("KRZ_FRAMEWORKS"); given != nullptr && *given != '\0') {
    return is_folder(given) ? std::optional<std::string>(given) : std::nullopt;
  }
  const std::string own = own_folder();
  for (const char* place : {"/krz/Frameworks", "/../lib/krz/Frameworks"}) {
    if (is_folder(own + place)) return own + place;
  }
  return std::nullopt;
}

void* find_framework_function(const char* framework, const char* name) {
  const std::optional<std::string> folder = frameworks_folder();
  if (!folder) return nullptr;
  FoundationBundle bundle(*folder + "/" + framework);
  return bundle.load() ? bundle.find_function(name) : nullptr;
}

}  // namespace toolbox
