// Frameworks and their routines, found while the module runs: it loads and works where they are
// missing.
#pragma once

#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>

namespace krz {

/// The loaded bundle of a framework ("Carbon.framework") in a domain's folder of frameworks; the
/// caller owns it. Fails: nil when there is no such folder or bundle, or its code cannot be loaded.
CFBundleRef LoadFrameworkBundle(SInt16 domain, const char* frameworkName);

/// The same on the system disk.
CFBundleRef LoadFrameworkBundle(const char* frameworkName);

/// A framework that is loaded when one of its routines is called for the first time, and kept.
class Framework {
 public:
  explicit constexpr Framework(const char* name) : name_(name) {}

  /// The address of a routine; null when the framework or the routine is missing. Tries again at
  /// every call until the framework is loaded.
  void* find(const char* routine);

 private:
  const char* name_;
  CFBundleRef bundle_ = nullptr;
};

/// A routine of a framework, looked up until it is found.
template <class Function>
class LateBound {
 public:
  constexpr LateBound(Framework& framework, const char* name)
      : framework_(&framework), name_(name) {}

  /// The routine; null when it is not to be had.
  Function* find() {
    if (!routine_) routine_ = reinterpret_cast<Function*>(framework_->find(name_));
    return routine_;
  }

 private:
  Framework* framework_;
  const char* name_;
  Function* routine_ = nullptr;
};

}  // namespace krz
