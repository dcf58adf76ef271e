// The class "QTVideoSampleDescriptionKRZ": samples that are coded pictures.
#include "track/sample_description.h"

namespace krz {
namespace {

PropertyEntry video_properties[] = {
    FIELD_PROPERTY(codec_vendor, "CodecVendor", "String"),
    FIELD_PROPERTY(temporal_quality, "TemporalQuality", "Integer"),
    FIELD_PROPERTY(spatial_quality, "SpatialQuality", "Integer"),
    FIELD_PROPERTY(width, "Width", "Integer"),
    FIELD_PROPERTY(height, "Height", "Integer"),
    FIELD_PROPERTY(data_size, "Size", "Integer"),
    FIELD_PROPERTY(frame_count, "FrameCount", "Integer"),
    FIELD_PROPERTY(codec_name, "CodecName", "String"),
    FIELD_PROPERTY(depth, "Depth", "Integer"),
    FIELD_PROPERTY(horizontal_resolution, "HorizontalResolution", "Double"),
    FIELD_PROPERTY(vertical_resolution, "VerticalResolution", "Double"),
};

}  // namespace

REALclassDefinition QTVideoSampleDescriptionClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTVideoSampleDescriptionKRZ",
    .superclass = "QTSampleDescriptionKRZ",
    .properties = video_properties,
    .property_count = std::size(video_properties),
};

}  // namespace krz
