// The calls of Carbon/MacMemory.h.
#include <Carbon/MacMemory.h>

#include <cstring>

#include "calls/guard.h"
#include "memory/handles.h"

using namespace toolbox;

TOOLBOX_CALL Handle NewHandle(Size size) { return handles::make(size); }
TOOLBOX_CALL Handle NewHandleClear(Size size) {
  return handles::make(size, handles::Contents::kZero);
}
TOOLBOX_CALL Handle NewEmptyHandle() { return handles::make_empty(); }
TOOLBOX_CALL Size GetHandleSize(Handle handle) { return handles::size(handle); }
TOOLBOX_CALL OSErr SetHandleSize(Handle handle, Size size) { return handles::resize(handle, size); }

// Blocks move only when they grow, so that there is nothing to hold.
TOOLBOX_CALL void HLock(Handle) {}
TOOLBOX_CALL void HUnlock(Handle) {}

TOOLBOX_CALL void DisposeHandle(Handle handle) { handles::dispose(handle); }

TOOLBOX_CALL OSErr PtrToHand(const void* bytes, Handle* handle, Size size) {
  if (handle == nullptr || (bytes == nullptr && size > 0)) return paramErr;
  const Handle made = handles::make(size);
  if (made == nullptr) return memFullErr;
  if (size > 0) std::memcpy(*made, bytes, static_cast<size_t>(size));
  *handle = made;
  return noErr;
}
