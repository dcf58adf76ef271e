// The class "QTThreeDeeSampleDescriptionKRZ": samples that are three-dimensional scenes.
#include "track/sample_description.h"

namespace krz {
namespace {

PropertyEntry three_dee_properties[] = {
    FIELD_PROPERTY(renderer_type, "RendererType", "String"),
    FIELD_PROPERTY(decompressor_type, "DecompressorType", "String"),
};

}  // namespace

REALclassDefinition QTThreeDeeSampleDescriptionClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTThreeDeeSampleDescriptionKRZ",
    .superclass = "QTSampleDescriptionKRZ",
    .properties = three_dee_properties,
    .property_count = std::size(three_dee_properties),
};

}  // namespace krz
