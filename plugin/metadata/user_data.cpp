// The class "QTUserDataKRZ": a list of typed items that belongs to a movie or a track.
#include "metadata/user_data.h"

#include "host/class_table.h"
#include "host/instance_data.h"
#include "host/registration.h"

namespace krz {
namespace {

constexpr uint32_t kTag = 0x51545544;  // 'QTUD'

void UserDataConstructor(REALobject object) {
  instance_data<QTUserDataClassData>(object, QTUserDataClass).tag = kTag;
}

PropertyEntry user_data_properties[] = {
    DIRECT_FIELD(QTUserDataClassData, handle, "Handle", "Integer"),
    DIRECT_FIELD(QTUserDataClassData, lasterror, "Lasterror", "Integer"),
    DIRECT_FIELD(QTUserDataClassData, release, "Release", "Boolean"),
};

}  // namespace

REALclassDefinition QTUserDataClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTUserDataKRZ",
    .data_size = sizeof(QTUserDataClassData),
    .constructor = HOST_FUNCTION(UserDataConstructor),
    .properties = user_data_properties,
    .property_count = std::size(user_data_properties),
};

}  // namespace krz
