// The class "QTMetaDataItemKRZ": one item of a metadata container.
#include "host/class_table.h"
#include "host/registration.h"
#include "metadata/metadata.h"

namespace krz {
namespace {

void QTMetaDataItemConstructor(REALobject) {}

PropertyEntry item_properties[] = {
    DIRECT_FIELD(QTMetaDataItemClassData, lasterror, "Lasterror", "Integer"),
};

}  // namespace

REALclassDefinition QTMetaDataItemClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTMetaDataItemKRZ",
    .data_size = sizeof(QTMetaDataItemClassData),
    .constructor = HOST_FUNCTION(QTMetaDataItemConstructor),
    .properties = item_properties,
    .property_count = std::size(item_properties),
};

}  // namespace krz
