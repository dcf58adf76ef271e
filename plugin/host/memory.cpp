// Process memory, handles of the toolbox and memory blocks of the host, and copies between them.
#include "host/memory.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "host/encodings.h"
#include "host/entries.h"
#include "host/exceptions.h"
#include "host/text_view.h"

namespace krz {
namespace {

constexpr int64_t kMaxBytes = 0x7FFFFFFF;

Handle new_handle_with(const rbData& data, bool makeEmpty) {
  if (data.size() < 1) return makeEmpty ? NewEmptyHandle() : nullptr;
  const Handle handle = NewHandle(data.size());
  if (handle) std::memcpy(*handle, data.bytes(), static_cast<size_t>(data.size()));
  return handle;
}

void raise_out_of_memory(int64_t size) {
  char message[200];
  std::snprintf(message, sizeof message,
                "Failed to allocate a memoryblock with %lld bytes in size.",
                static_cast<long long>(size));
  RaiseException("OutOfMemoryException", message, kASCII);
}

}  // namespace

void* AllocateClearMemory(int64_t size) {
  if (size < 1 || size > kMaxBytes) return nullptr;
  return std::calloc(1, static_cast<size_t>(size));
}

void ClearMemory(void* pointer, int64_t size) {
  if (pointer && size > 0) std::memset(pointer, 0, static_cast<size_t>(size));
}

void FreeMemoryNow(void* pointer) { std::free(pointer); }

REALmemoryBlockStruct* REALBuildMemoryblock(const void* bytes, int64_t size) {
  if (!bytes || size < 1) return nullptr;
  REALmemoryBlockStruct* block = nullptr;
  if (size < kMaxBytes) block = REALNewMemoryBlockOriginal(static_cast<int32_t>(size));
  if (!block) {
    raise_out_of_memory(size);
    return nullptr;
  }
  void* contents = REALMemoryBlockGetPtr(block);
  if (!contents) {
    REALUnlockObject(reinterpret_cast<REALobject>(block));
    return nullptr;
  }
  std::memcpy(contents, bytes, static_cast<size_t>(size));
  return block;
}

REALmemoryBlockStruct* HandleToMemory(Handle handle) {
  if (!handle) return nullptr;
  const Size size = GetHandleSize(handle);
  if (size < 1) return nullptr;
  HLock(handle);
  REALmemoryBlockStruct* block = REALBuildMemoryblock(*handle, size);
  HUnlock(handle);
  return block;
}

Handle NewHandleWithString(REALstring string, bool makeEmpty) {
  return new_handle_with(rbData(string), makeEmpty);
}

Handle NewHandleWithMemory(REALmemoryBlockStruct* block, bool makeEmpty) {
  return new_handle_with(rbData(block), makeEmpty);
}

}  // namespace krz
