// The calls of CoreFoundation/CoreFoundation.h, and FSFindFolder of Carbon/Files.h: what it takes
// to find a framework and load it. They leave the current error, save FSFindFolder.
#include <CoreFoundation/CoreFoundation.h>
#include <sys/stat.h>

#include <new>

#include "calls/guard.h"
#include "foundation/file_references.h"
#include "foundation/frameworks.h"
#include "foundation/objects.h"

using namespace toolbox;
using namespace toolbox::calls;

namespace {

FoundationObject* find_object(CFTypeRef reference) {
  return static_cast<FoundationObject*>(
      tokens::find(Kind::kFoundation, reinterpret_cast<uintptr_t>(reference)));
}

template <class Object>
Object* find_as(CFTypeRef reference) {
  return dynamic_cast<Object*>(find_object(reference));
}

/// A new object's reference; nil without memory or when `make` answers null.
template <class Opaque, class Make>
Opaque create(Make make) {
  try {
    FoundationObject* const object = make();
    if (object == nullptr) return nullptr;
    if (const Token token = object->token()) return reinterpret_cast<Opaque>(uintptr_t{token});
    object->release();
  } catch (const std::bad_alloc&) {
  }
  return nullptr;
}

}  // namespace

TOOLBOX_CALL OSErr FSFindFolder(SInt16, OSType folderType, Boolean, FSRef* ref) {
  return guarded([&]() -> Status {
    if (ref == nullptr) return {paramErr, "a place for the record is needed"};
    const auto folder = folderType == kFrameworksFolderType ? frameworks_folder() : std::nullopt;
    if (!folder) return {fnfErr, "there is no folder of that type"};
    TRY_ASSIGN(const std::string path, file_references::absolute_path(*folder));
    *ref = file_references::ref_of(path);
    return {};
  });
}

TOOLBOX_CALL void CFRelease(CFTypeRef object) {
  if (FoundationObject* const found = find_object(object)) found->release();
}

TOOLBOX_CALL CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text,
                                                   CFStringEncoding encoding) {
  return create<CFStringRef>([&]() -> FoundationObject* {
    const bool known = encoding == kCFStringEncodingASCII || encoding == kCFStringEncodingUTF8;
    return text == nullptr || !known ? nullptr : new FoundationString(text);
  });
}

TOOLBOX_CALL CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef* ref) {
  return create<CFURLRef>([&]() -> FoundationObject* {
    const char* const path = ref == nullptr ? nullptr : file_references::path_of(*ref);
    return path == nullptr ? nullptr : new FoundationURL(path);
  });
}

TOOLBOX_CALL CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef url,
                                                            CFStringRef component, Boolean) {
  return create<CFURLRef>([&]() -> FoundationObject* {
    const auto* const base = find_as<FoundationURL>(url);
    const auto* const name = find_as<FoundationString>(component);
    if (base == nullptr || name == nullptr) return nullptr;
    return new FoundationURL(base->path + "/" + name->text);
  });
}

TOOLBOX_CALL CFBundleRef CFBundleCreate(CFAllocatorRef, CFURLRef url) {
  return create<CFBundleRef>([&]() -> FoundationObject* {
    const auto* const folder = find_as<FoundationURL>(url);
    struct stat status {};
    if (folder == nullptr || stat(folder->path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
      return nullptr;
    return new FoundationBundle(folder->path);
  });
}

TOOLBOX_CALL Boolean CFBundleLoadExecutable(CFBundleRef bundle) {
  auto* const found = find_as<FoundationBundle>(bundle);
  return found != nullptr && found->load();
}

TOOLBOX_CALL void* CFBundleGetFunctionPointerForName(CFBundleRef bundle, CFStringRef name) {
  const auto* const found = find_as<FoundationBundle>(bundle);
  const auto* const text = find_as<FoundationString>(name);
  return found == nullptr || text == nullptr ? nullptr : found->find_function(text->text);
}
