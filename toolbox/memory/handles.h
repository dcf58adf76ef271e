// Relocatable blocks of bytes behind real double pointers, each known to one table so that a
// made-up one is noticed.
#pragma once

#include <Carbon/Carbon.h>

#include <cstdint>
#include <span>

namespace toolbox::handles {

/// Makes a block of `size` bytes, zeroed when asked. A size of 0 gives a master pointer that is not
/// null. Owns:  the caller disposes the handle. Fails: null for a negative size or without memory.
enum class Contents { kUndefined, kZero };
Handle make(Size size, Contents contents = Contents::kUndefined);

/// Makes a handle whose master pointer is null; growing it makes it usable.
Handle make_empty();

/// Whether `handle` was made here and not disposed since. Any bit pattern may be asked about.
bool is_live(Handle handle);

/// Bytes in the block; 0 for null, empty and unknown handles.
Size size(Handle handle);

/// Sets the size exactly; contents up to the smaller size stay, new bytes are undefined.
/// Fails: nilHandleErr for null, memWZErr for an unknown handle, memFullErr; the block is then
/// unchanged.
OSErr resize(Handle handle, Size size);

/// Makes the block exactly `bytes`. `bytes` may lie inside the block itself only when it does not
/// grow. Fails: as resize.
OSErr assign(Handle handle, std::span<const uint8_t> bytes);

/// Frees block and handle; null and unknown handles are ignored.
void dispose(Handle handle);

/// Number of live handles.
uint32_t live_count();

}  // namespace toolbox::handles
