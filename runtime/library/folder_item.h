// The class FolderItem: a path that scripts and modules share.
#pragma once

#include <string>
#include <string_view>

#include "registry/registry.h"

namespace krz {

/// A new item for a path in UTF-8, locked once; null without memory.
REALfolderItemStruct* new_folder_item(std::string_view path);

/// The path of an item in UTF-8; empty for null.
std::string folder_item_path(REALfolderItemStruct* item);

void register_folder_item(Registry& registry);

}  // namespace krz
