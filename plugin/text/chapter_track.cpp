// The class "QTChapterTrackKRZ": a track whose samples are the chapters of another track.
#include "host/registration.h"

namespace krz {

REALclassDefinition QTChapterTrackClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTChapterTrackKRZ",
    .superclass = "QTTrackKRZ",
};

}  // namespace krz
