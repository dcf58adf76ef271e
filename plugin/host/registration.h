// The class definitions of the module, and how they reach the host.
#pragma once

#include <krz/abi.h>

namespace krz {

// Read-write: the host writes each class's data offset into its definition.
extern REALclassDefinition QTUserDataClass;
extern REALclassDefinition QTChapterDataClass;
extern REALclassDefinition QTTimeCodeCreationParametersClass;
extern REALclassDefinition QTSampleDescriptionClass;
extern REALclassDefinition QTVideoSampleDescriptionClass;
extern REALclassDefinition QTSoundSampleDescriptionClass;
extern REALclassDefinition QTSpriteSampleDescriptionClass;
extern REALclassDefinition QTMusicSampleDescriptionClass;
extern REALclassDefinition QTThreeDeeSampleDescriptionClass;
extern REALclassDefinition QTFlashSampleDescriptionClass;
extern REALclassDefinition QTTextSampleDescriptionClass;
extern REALclassDefinition QTTrackClass;
extern REALclassDefinition QTChapterTrackClass;
extern REALclassDefinition QTTimeCodeClass;
extern REALclassDefinition QTMetaDataClass;
extern REALclassDefinition QTMetaDataItemClass;

/// What the module adds to the host's own class "movie".
extern REALclassDefinition movieClass;

/// What the host answered when it prepared the movie toolbox at start-up; 0 when it was not asked.
extern int32_t REALenterMoviesResult;

/// The host hands out instance data in steps of 16 bytes.
constexpr int32_t rounded_data_size(int32_t size) {
  while (size % 16 != 0) ++size;
  return size;
}

/// Rounds the definition's data size, in place, and registers it.
void MyREALRegisterClass(REALclassDefinition* definition);

/// Registers an extension as it is: it has no data.
void MyREALRegisterClassExtension(REALclassDefinition* definition);

/// Prepares the toolbox when the host runs a program, and registers all classes, superclasses
/// first.
void PluginEntry();

}  // namespace krz
