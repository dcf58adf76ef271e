#include "picture/framework_bundle.h"

#include <memory>

namespace krz {
namespace {

struct Releaser {
  void operator()(const void* object) const { CFRelease(object); }
};
template <class Reference>
using Owned = std::unique_ptr<std::remove_pointer_t<Reference>, Releaser>;

Owned<CFStringRef> string(const char* text) {
  return Owned<CFStringRef>(CFStringCreateWithCString(nullptr, text, kCFStringEncodingASCII));
}

}  // namespace

CFBundleRef LoadFrameworkBundle(SInt16 domain, const char* frameworkName) {
  FSRef folder = {};
  if (FSFindFolder(domain, kFrameworksFolderType, true, &folder) != noErr) return nullptr;
  const Owned<CFURLRef> folder_url(CFURLCreateFromFSRef(nullptr, &folder));
  const Owned<CFURLRef> url(CFURLCreateCopyAppendingPathComponent(
      nullptr, folder_url.get(), string(frameworkName).get(), false));
  Owned<CFBundleRef> bundle(CFBundleCreate(nullptr, url.get()));
  return bundle && CFBundleLoadExecutable(bundle.get()) ? bundle.release() : nullptr;
}

CFBundleRef LoadFrameworkBundle(const char* frameworkName) {
  return LoadFrameworkBundle(kSystemDiskDomain, frameworkName);
}

void* Framework::find(const char* routine) {
  if (!bundle_) bundle_ = LoadFrameworkBundle(name_);
  if (!bundle_) return nullptr;
  return CFBundleGetFunctionPointerForName(bundle_, string(routine).get());
}

}  // namespace krz
