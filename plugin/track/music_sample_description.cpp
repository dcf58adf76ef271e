// The class "QTMusicSampleDescriptionKRZ": samples that are notes; nothing beyond the codec type.
#include "host/registration.h"

namespace krz {

REALclassDefinition QTMusicSampleDescriptionClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTMusicSampleDescriptionKRZ",
    .superclass = "QTSampleDescriptionKRZ",
};

}  // namespace krz
