// The class MemoryBlock: a piece of memory that scripts and modules share.
#pragma once

#include "registry/registry.h"

namespace krz {

/// A new block of that many zero bytes, locked once; null for a negative size or without memory.
REALmemoryBlockStruct* new_memory_block(int32_t size);

/// The bytes of a block and their number; null and 0 for null.
uint8_t* memory_block_bytes(REALmemoryBlockStruct* block);
int32_t memory_block_size(REALmemoryBlockStruct* block);

void register_memory_block(Registry& registry);

}  // namespace krz
