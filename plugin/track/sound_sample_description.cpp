// The class "QTSoundSampleDescriptionKRZ": samples that are coded sound.
#include "track/sample_description.h"

namespace krz {
namespace {

PropertyEntry sound_properties[] = {
    FIELD_PROPERTY(codec_vendor, "CodecVendor", "String"),
    FIELD_PROPERTY(channel_count, "ChannelCount", "Integer"),
    FIELD_PROPERTY(sample_size, "SampleSize", "Integer"),
    FIELD_PROPERTY(sample_rate, "SampleRate", "Double"),
    FIELD_PROPERTY(version, "Version", "Integer"),
};

}  // namespace

REALclassDefinition QTSoundSampleDescriptionClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTSoundSampleDescriptionKRZ",
    .superclass = "QTSampleDescriptionKRZ",
    .properties = sound_properties,
    .property_count = std::size(sound_properties),
};

}  // namespace krz
