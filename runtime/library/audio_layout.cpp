// The classes that describe which speaker each channel of a sound belongs to. Modules read and
// write their instance data directly, so its layout is a contract.
#include "library/parts.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "registry/tables.h"

namespace krz {

namespace {

using Layout = REALaudioChannelLayoutData;
using Description = REALaudioChannelDescriptionData;

REALclassDefinition g_layout_class;
REALclassDefinition g_description_class;

Layout& layout_of(REALobject object) { return data_in<Layout>(object, g_layout_class); }

void destroy_layout(REALobject object) {
  for (const REALobject description : layout_of(object).descriptions) unlock_object(description);
}

bool check_index(int32_t index, int32_t count) {
  if (index >= 0 && index < count) return true;
  raise_exception("OutOfBoundsException", "index " + std::to_string(index) +
                                              " is not between 0 and " + std::to_string(count - 1));
  return false;
}

REALobject get_description(REALobject object, int32_t index) {
  if (!check_index(index, kMaxAudioChannelDescriptions)) return nullptr;
  const REALobject description = layout_of(object).descriptions[index];
  lock_object(description);
  return description;
}

void set_description(REALobject object, int32_t index, REALobject description) {
  if (!check_index(index, kMaxAudioChannelDescriptions)) return;
  REALobject& place = layout_of(object).descriptions[index];
  lock_object(description);
  unlock_object(place);
  place = description;
}

double get_coordinate(REALobject object, int32_t index) {
  if (!check_index(index, 3)) return 0;
  return data_in<Description>(object, g_description_class).coordinates[index];
}

void set_coordinate(REALobject object, int32_t index, double value) {
  if (!check_index(index, 3)) return;
  data_in<Description>(object, g_description_class).coordinates[index] = value;
}

PropertyEntry g_layout_properties[] = {
    KRZ_FIELD(Layout, tag, "ChannelLayoutTag", "Integer"),
    KRZ_FIELD(Layout, bitmap, "ChannelBitmap", "Integer"),
    KRZ_FIELD(Layout, description_count, "NumberChannelDescriptions", "Integer"),
};

MethodEntry g_layout_methods[] = {
    KRZ_ASSIGNABLE(get_description, set_description,
                   "ChannelDescription(index as integer) as QTAudioChannelDescriptionKRZ"),
};

PropertyEntry g_description_properties[] = {
    KRZ_FIELD(Description, label, "ChannelLabel", "Integer"),
    KRZ_FIELD(Description, flags, "ChannelFlags", "Integer"),
};

MethodEntry g_description_methods[] = {
    KRZ_ASSIGNABLE(get_coordinate, set_coordinate, "Coordinate(index as integer) as double"),
};

}  // namespace

void register_audio_layout(Registry& registry) {
  g_description_class = class_of<Description>("QTAudioChannelDescriptionKRZ");
  set_properties(g_description_class, g_description_properties);
  set_methods(g_description_class, g_description_methods);
  registry.register_class(g_description_class);
  g_layout_class = class_of<Layout>("QTAudioChannelLayoutKRZ");
  g_layout_class.destructor = reinterpret_cast<REALfunction>(&destroy_layout);
  set_properties(g_layout_class, g_layout_properties);
  set_methods(g_layout_class, g_layout_methods);
  registry.register_class(g_layout_class);
}

}  // namespace krz
