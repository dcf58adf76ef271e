// Host services around movies, memory blocks and files.
#include <Toolbox/Toolbox.h>

#include "entries/entry_table.h"
#include "library/folder_item.h"
#include "library/memory_block.h"
#include "library/movie.h"

namespace krz {

namespace {

Movie movie_of(REALmovieStruct* movie) {
  return movie_reference(reinterpret_cast<REALobject>(movie));
}

REALfolderItemStruct* folder_item_from_spec(const FSSpec* spec) {
  const char* const path = spec ? ToolboxPathOfFSSpec(spec) : nullptr;
  return path ? new_folder_item(path) : nullptr;
}

// The record stands for the item itself, so the name that may be added to it is empty.
bool ref_from_folder_item(REALfolderItemStruct* item, FSRef* ref, HFSUniStr255* name) {
  const std::string path = folder_item_path(item);
  if (path.empty() || !ref || ToolboxMakeFSRef(path.c_str(), ref) != noErr) return false;
  if (name) name->length = 0;
  return true;
}

const HostEntry kEntries[] = {
    KRZ_ENTRY("getMovieMovie", movie_of),
    KRZ_ENTRY("newMemoryBlock", new_memory_block),
    KRZ_ENTRY("memoryBlockGetPtr", memory_block_bytes),
    KRZ_ENTRY("memoryBlockGetSize", memory_block_size),
    KRZ_ENTRY("FolderItemFromFSSpec", folder_item_from_spec),
    KRZ_ENTRY("REALFSRefFromFolderItem", ref_from_folder_item),
};

}  // namespace

std::span<const HostEntry> data_entries() { return kEntries; }

}  // namespace krz
