// Keys that mean the same in every storage.
#pragma once

#include <optional>

#include "metadata/item_store.h"

namespace toolbox {

/// The key of a storage for a common key; nothing when the storage has none.
std::optional<ItemKey> native_key(FourCC common, FourCC storage);

/// The common key of a native one; 0 when it has none.
FourCC common_key(const ItemKey& key);

/// Whether a key stands for a title that counts as a display name where no such name is.
bool is_title(const ItemKey& key);

}  // namespace toolbox
