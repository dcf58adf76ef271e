// Host services around pictures. This host makes none, and every service says so the way modules
// expect.
#include "entries/entry_table.h"

namespace krz {

namespace {

REALpictureStruct* new_picture(int32_t, int32_t, int32_t) { return nullptr; }

REALpictureStruct* picture_from_buffer(int32_t, int32_t, RBPixelType, void*, int32_t) {
  return nullptr;
}

REALgraphicsStruct* picture_graphics(REALpictureStruct*) { return nullptr; }

void clear_cache(REALpictureStruct*) {}

void lock_description(REALpictureStruct*, REALpictureDescription* description) {
  if (description) *description = {};
}

bool lock_description_of_type(REALpictureStruct*, REALpictureDescription* description, int32_t) {
  if (description) *description = {};
  return false;
}

void unlock_description(REALpictureStruct*) {}

const HostEntry kEntries[] = {
    KRZ_ENTRY("newPicture", new_picture),
    KRZ_ENTRY("REALBuildPictureFromBuffer", picture_from_buffer),
    KRZ_ENTRY("pluginPictureGraphicsGetter", picture_graphics),
    KRZ_ENTRY("REALPictureClearCache", clear_cache),
    KRZ_ENTRY("lockPictureDescription", lock_description),
    KRZ_ENTRY("REALLockPictureDescription", lock_description_of_type),
    KRZ_ENTRY("unlockPictureDescription", unlock_description),
};

}  // namespace

std::span<const HostEntry> picture_entries() { return kEntries; }

}  // namespace krz
