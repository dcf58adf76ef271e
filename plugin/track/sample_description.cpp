// The class "QTSampleDescriptionKRZ": how the samples of a media are coded, whatever the media's
// type.
#include "track/sample_description.h"

namespace krz {
namespace {

void QTSampleDescriptionDestructor(REALobject object) {
  QTSampleDescriptionClassData& data = sample_description_data(object);
  for (REALstring* string : {&data.codec_type, &data.decompressor_type, &data.codec_vendor,
                             &data.default_font_name, &data.codec_name, &data.renderer_type}) {
    if (!*string) continue;
    REALUnlockString(*string);
    *string = nullptr;
  }
}

PropertyEntry description_properties[] = {
    DIRECT_FIELD(QTSampleDescriptionClassData, codec_type, "CodecType", "String"),
};

}  // namespace

REALclassDefinition QTSampleDescriptionClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTSampleDescriptionKRZ",
    .data_size = sizeof(QTSampleDescriptionClassData),
    .destructor = HOST_FUNCTION(QTSampleDescriptionDestructor),
    .properties = description_properties,
    .property_count = std::size(description_properties),
};

}  // namespace krz
