// Frameworks that are there when a test says so, with the routines that it gives them.
#include <CoreFoundation/CoreFoundation.h>

#include "plugin/fake_toolbox.h"

using namespace fake_toolbox;

// Strings are their own text; there is one URL and one bundle, counted as they come and go.
namespace {

constexpr uintptr_t kURL = 0x111;
constexpr uintptr_t kBundle = 0x222;

bool is_string(CFTypeRef object) {
  return object && object != reinterpret_cast<CFTypeRef>(kURL) &&
         object != reinterpret_cast<CFTypeRef>(kBundle);
}
const std::string& text_of(CFStringRef string) {
  return *reinterpret_cast<const std::string*>(string);
}

}  // namespace

extern "C" {

OSErr FSFindFolder(SInt16 domain, OSType type, Boolean create, FSRef*) {
  answer("FSFindFolder", domain, type, create);
  return toolbox().frameworks.empty() ? fnfErr : noErr;
}
CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding) {
  ++toolbox().foundation_objects;
  return reinterpret_cast<CFStringRef>(new std::string(text));
}
CFURLRef CFURLCreateFromFSRef(CFAllocatorRef, const FSRef*) {
  ++toolbox().foundation_objects;
  return reinterpret_cast<CFURLRef>(kURL);
}
CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef, CFURLRef, CFStringRef component,
                                               Boolean) {
  toolbox().calls.push_back("append " + text_of(component));
  ++toolbox().foundation_objects;
  return reinterpret_cast<CFURLRef>(kURL);
}
CFBundleRef CFBundleCreate(CFAllocatorRef, CFURLRef) {
  ++toolbox().foundation_objects;
  return reinterpret_cast<CFBundleRef>(kBundle);
}
Boolean CFBundleLoadExecutable(CFBundleRef) {
  return static_cast<Boolean>(toolbox().answers["CFBundleLoadExecutable"]);
}
void* CFBundleGetFunctionPointerForName(CFBundleRef, CFStringRef name) {
  toolbox().calls.push_back("find " + text_of(name));
  return toolbox().frameworks[text_of(name)];
}
void CFRelease(CFTypeRef object) {
  if (!object) return;
  --toolbox().foundation_objects;
  if (is_string(object)) delete reinterpret_cast<const std::string*>(object);
}

}  // extern "C"
