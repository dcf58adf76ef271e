// The classes that describe which speaker each channel of a sound belongs to. Modules read and
// write their instance data directly, so its layout is a contract.
#include <Toolbox/Toolbox.h>

#include <cstring>
#include <vector>

#include "library/parts.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "registry/tables.h"
#include "runtime.h"

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

REALobject new_object(const REALclassDefinition& definition) {
  const ClassInfo* const found = Runtime::current().registry().find_class(definition.name);
  return found ? new_instance(*found) : nullptr;
}

REALobject description_object(const AudioChannelDescription& description) {
  const REALobject object = new_object(g_description_class);
  if (!object) return nullptr;
  auto& data = data_in<Description>(object, g_description_class);
  data.label = description.mChannelLabel;
  data.flags = description.mChannelFlags;
  for (int axis = 0; axis < 3; ++axis) data.coordinates[axis] = description.mCoordinates[axis];
  return object;
}

// What the sound of a track says of its channels, read from the file; Nil when it is no sound.
// QTTrackKRZ.AudioChannelLayout only tells that there is a layout.
REALobject track_channel_layout(int32_t track) {
  constexpr size_t kHeadBytes = offsetof(AudioChannelLayout, mChannelDescriptions);
  const auto reference =
      reinterpret_cast<Track>(static_cast<uintptr_t>(static_cast<uint32_t>(track)));
  ByteCount size = 0;
  if (QTGetTrackPropertyInfo(reference, kQTPropertyClass_Audio,
                             kQTAudioPropertyID_TrackChannelLayout, nullptr, &size,
                             nullptr) != noErr ||
      size < kHeadBytes) {
    return nullptr;
  }
  std::vector<char> bytes(size);
  if (QTGetTrackProperty(reference, kQTPropertyClass_Audio, kQTAudioPropertyID_TrackChannelLayout,
                         size, bytes.data(), nullptr) != noErr) {
    return nullptr;
  }
  const REALobject object = new_object(g_layout_class);
  if (!object) return nullptr;
  uint32_t head[3];
  std::memcpy(head, bytes.data(), sizeof head);
  Layout& layout = layout_of(object);
  layout.tag = head[0];
  layout.bitmap = head[1];
  layout.description_count = static_cast<int32_t>(head[2]);
  const size_t described = (size - kHeadBytes) / sizeof(AudioChannelDescription);
  for (size_t i = 0; i < described && i < size_t{kMaxAudioChannelDescriptions}; ++i) {
    AudioChannelDescription description;
    std::memcpy(&description, bytes.data() + kHeadBytes + i * sizeof description,
                sizeof description);
    layout.descriptions[i] = description_object(description);
  }
  return object;
}

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(track_channel_layout,
                 "TrackChannelLayout(trackHandle as integer) as QTAudioChannelLayoutKRZ"),
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
  registry.register_functions(kFunctions);
}

}  // namespace krz
