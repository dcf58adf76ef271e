// The class "QTSpriteSampleDescriptionKRZ": samples that are sprites.
#include "track/sample_description.h"

namespace krz {
namespace {

PropertyEntry sprite_properties[] = {
    FIELD_PROPERTY(decompressor_type, "DecompressorType", "String"),
};

}  // namespace

REALclassDefinition QTSpriteSampleDescriptionClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTSpriteSampleDescriptionKRZ",
    .superclass = "QTSampleDescriptionKRZ",
    .properties = sprite_properties,
    .property_count = std::size(sprite_properties),
};

}  // namespace krz
