// The routines of drawing, found in their framework by name as every caller finds them.
#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <gtest/gtest.h>

#include "foundation/frameworks.h"

namespace toolbox::testing {

/// One routine; the test ends where it is missing.
template <class Function>
Function* framework_routine(const char* name) {
  void* const found = find_framework_function("ApplicationServices.framework", name);
  if (found == nullptr) {
    std::fprintf(stderr, "the framework has no %s\n", name);
    std::abort();
  }
  return reinterpret_cast<Function*>(found);
}

#define ROUTINE(name) decltype(&::name) name = framework_routine<decltype(::name)>(#name)
struct QuickDrawRoutines {
  ROUTINE(NewGWorld);
  ROUTINE(UpdateGWorld);
  ROUTINE(DisposeGWorld);
  ROUTINE(SetGWorld);
  ROUTINE(GetGWorld);
  ROUTINE(GetPortBounds);
  ROUTINE(GetPortPixMap);
  ROUTINE(GetGWorldPixMap);
  ROUTINE(GetPortBitMapForCopyBits);
  ROUTINE(LockPixels);
  ROUTINE(UnlockPixels);
  ROUTINE(GetPixBaseAddr);
  ROUTINE(GetPixRowBytes);
  ROUTINE(GetPixDepth);
  ROUTINE(RGBForeColor);
  ROUTINE(FillRect);
  ROUTINE(FillRgn);
  ROUTINE(CopyBits);
  ROUTINE(NewRgn);
  ROUTINE(DisposeRgn);
  ROUTINE(BitMapToRegion);
};
#undef ROUTINE

}  // namespace toolbox::testing
