/* Memory Manager: relocatable blocks ("handles") of bytes. */
#ifndef KRZ_CARBON_MACMEMORY_H
#define KRZ_CARBON_MACMEMORY_H

#include <Carbon/MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Makes a block of `size` bytes with undefined contents. A size of 0 gives a handle whose pointer
   is not null. Owns:  the caller disposes the handle. Fails: null for a negative size or without
   memory. */
Handle NewHandle(Size size);

/* As NewHandle, with every byte zero. */
Handle NewHandleClear(Size size);

/* Makes a handle whose master pointer is null and whose size is 0; it becomes usable when it grows.
 */
Handle NewEmptyHandle(void);

/* Bytes in the block; 0 for a null or an empty handle. */
Size GetHandleSize(Handle handle);

/* Grows or shrinks a block to exactly `size` bytes. Contents up to the smaller size stay; the
   handle keeps its value, the master pointer may change. Fails: memFullErr (the block is
   unchanged), nilHandleErr, memWZErr for a number that is no live handle. */
OSErr SetHandleSize(Handle handle, Size size);

/* Keep a block in place, and let it move again. Blocks move only when they grow, so these only
 * check the handle. */
void HLock(Handle handle);
void HUnlock(Handle handle);

/* Frees the block and the handle; null is ignored. */
void DisposeHandle(Handle handle);

/* Makes a new handle with a copy of `size` bytes and stores it in `*handle`.
   Fails: memFullErr; `*handle` is then unchanged. */
OSErr PtrToHand(const void* bytes, Handle* handle, Size size);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_CARBON_MACMEMORY_H */
