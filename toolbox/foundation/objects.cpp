#include "foundation/objects.h"

#include <dlfcn.h>

namespace toolbox {

bool FoundationBundle::load() {
  if (image_ != nullptr) return true;
  // "Frameworks/Carbon.framework" holds its code in "Frameworks/Carbon.framework/Carbon".
  const std::string folder = path_.substr(path_.rfind('/') + 1);
  const std::string file = path_ + "/" + folder.substr(0, folder.rfind('.'));
  image_ = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (image_ != nullptr) return true;
  const char* const reason = dlerror();
  problem_ = "\"" + file + "\" cannot be loaded: " + (reason ? reason : "no reason given");
  return false;
}

void* FoundationBundle::find_function(const std::string& name) const {
  return image_ == nullptr ? nullptr : dlsym(image_, name.c_str());
}

}  // namespace toolbox
