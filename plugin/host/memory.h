// Process memory, handles of the toolbox and memory blocks of the host, and copies between them.
#pragma once

#include <Carbon/Carbon.h>
#include <krz/abi.h>

#include <memory>

namespace krz {

/// Zeroed bytes of the process heap; the caller frees them with FreeMemoryNow.
/// Fails: null for sizes below 1 or above 0x7FFFFFFF, and without memory.
void* AllocateClearMemory(int64_t size);
void ClearMemory(void* pointer, int64_t size);
void FreeMemoryNow(void* pointer);

struct MemoryDeleter {
  void operator()(void* pointer) const { FreeMemoryNow(pointer); }
};
/// Owns what AllocateClearMemory gave.
using Memory = std::unique_ptr<void, MemoryDeleter>;

struct HandleDeleter {
  void operator()(Handle handle) const { DisposeHandle(handle); }
};
/// Owns a handle.
using OwnedHandle = std::unique_ptr<Ptr, HandleDeleter>;

/// A new host memory block with a copy of `size` bytes; nil for nil bytes or a size below 1.
/// Fails: nil; when the host cannot make the block, with the exception "OutOfMemoryException"
/// raised.
REALmemoryBlockStruct* REALBuildMemoryblock(const void* bytes, int64_t size);

/// A new memory block with a copy of the handle's bytes; nil for nil and empty handles.
REALmemoryBlockStruct* HandleToMemory(Handle handle);

/// New handles with a copy of the stored bytes. A value without bytes gives an empty handle or
/// null, as asked.
Handle NewHandleWithString(REALstring string, bool makeEmpty);
Handle NewHandleWithMemory(REALmemoryBlockStruct* block, bool makeEmpty);

}  // namespace krz
