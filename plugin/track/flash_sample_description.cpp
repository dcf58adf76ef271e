// The class "QTFlashSampleDescriptionKRZ": samples that are vector animations.
#include "track/sample_description.h"

namespace krz {
namespace {

PropertyEntry flash_properties[] = {
    FIELD_PROPERTY(decompressor_type, "DecompressorType", "String"),
};

}  // namespace

REALclassDefinition QTFlashSampleDescriptionClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTFlashSampleDescriptionKRZ",
    .superclass = "QTSampleDescriptionKRZ",
    .properties = flash_properties,
    .property_count = std::size(flash_properties),
};

}  // namespace krz
