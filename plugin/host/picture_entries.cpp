// Host services for pictures.
#include "host/entries.h"
#include "host/resolver.h"

namespace krz {

REALpictureStruct* REALNewPicture(int32_t width, int32_t height, int32_t depth) {
  static constinit HostEntry<REALpictureStruct*(int32_t, int32_t, int32_t)> pNewPicture(
      "newPicture");
  return pNewPicture(width, height, depth);
}

REALpictureStruct* REALBuildPictureFromBuffer(int32_t width, int32_t height, RBPixelType type,
                                              void* buffer, int32_t row_bytes) {
  static constinit HostEntry<REALpictureStruct*(int32_t, int32_t, RBPixelType, void*, int32_t)>
      pBuildPictureFromBuffer("REALBuildPictureFromBuffer");
  return pBuildPictureFromBuffer(width, height, type, buffer, row_bytes);
}

REALgraphicsStruct* REALGetPictureGraphics(REALpictureStruct* picture) {
  static constinit HostEntry<REALgraphicsStruct*(REALpictureStruct*)> pGetPictureGraphics(
      "pluginPictureGraphicsGetter");
  return pGetPictureGraphics(picture);
}

void REALPictureClearCache(REALpictureStruct* picture) {
  static constinit HostEntry<void(REALpictureStruct*)> pPictureClearCache("REALPictureClearCache");
  pPictureClearCache(picture);
}

void REALLockPictureDescription(REALpictureStruct* picture, REALpictureDescription* description) {
  static constinit HostEntry<void(REALpictureStruct*, REALpictureDescription*)>
      pLockPictureDescription("lockPictureDescription");
  pLockPictureDescription(picture, description);
}

bool REALLockPictureDescription(REALpictureStruct* picture, REALpictureDescription* description,
                                int32_t type) {
  static constinit HostEntry<bool(REALpictureStruct*, REALpictureDescription*, int32_t)>
      pLockPictureDescription("REALLockPictureDescription");
  return pLockPictureDescription(picture, description, type);
}

void REALUnlockPictureDescription(REALpictureStruct* picture) {
  static constinit HostEntry<void(REALpictureStruct*)> pUnlockPictureDescription(
      "unlockPictureDescription");
  pUnlockPictureDescription(picture);
}

bool REALLockPictureDescriptionX(REALpictureStruct* picture, REALpictureDescription* description,
                                 int32_t type) {
  if (REALLockPictureDescription(picture, description, type)) return true;
  if (rbversion < kVersionWithTextData) REALUnlockPictureDescription(picture);
  return false;
}

}  // namespace krz
