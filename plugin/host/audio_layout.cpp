// Channel layouts of sound, between the toolbox's record and the host's two layout classes.
#include "host/audio_layout.h"

#include <algorithm>

#include "host/entries.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "host/registration.h"

namespace krz {
namespace {

/// Room behind the last description of a record.
constexpr int64_t kLayoutRecordSlack = 32;

// Another module registers the two classes, so their definitions are not at hand. Neither has a
// superclass, and the data of every class without one lies at the same place in its objects.
template <class Data>
Data& foreign_data(REALobject object) {
  return instance_data<Data>(object, QTUserDataClass);
}

int32_t stored_count(int64_t count) {
  return static_cast<int32_t>(std::clamp<int64_t>(count, 0, kMaxAudioChannelDescriptions));
}

REALobject new_description(const AudioChannelDescription& description) {
  const REALobject object = REALnewInstance("QTAudioChannelDescriptionKRZ");
  if (!object) return nullptr;
  auto& data = foreign_data<REALaudioChannelDescriptionData>(object);
  data.label = description.mChannelLabel;
  data.flags = description.mChannelFlags;
  for (int axis = 0; axis < 3; ++axis) data.coordinates[axis] = description.mCoordinates[axis];
  return object;
}

}  // namespace

REALobject NewQTAudioChannelLayoutKRZ(const AudioChannelLayout* layout) {
  if (!layout) return nullptr;
  const REALobject object = REALnewInstance("QTAudioChannelLayoutKRZ");
  if (!object) return nullptr;
  auto& data = foreign_data<REALaudioChannelLayoutData>(object);
  data.tag = layout->mChannelLayoutTag;
  data.bitmap = layout->mChannelBitmap;
  data.description_count = static_cast<int32_t>(layout->mNumberChannelDescriptions);
  const AudioChannelDescription* descriptions = layout->mChannelDescriptions;
  for (int32_t i = 0; i < stored_count(data.description_count); ++i) {
    data.descriptions[i] = new_description(descriptions[i]);
  }
  return object;
}

AudioChannelLayout* GetQTAudioChannelLayout(REALobject object) {
  if (!object) return nullptr;
  const auto& data = foreign_data<REALaudioChannelLayoutData>(object);
  const int32_t count = stored_count(data.description_count);
  auto* layout = static_cast<AudioChannelLayout*>(AllocateClearMemory(
      int64_t{count} * static_cast<int64_t>(sizeof(AudioChannelDescription)) + kLayoutRecordSlack));
  if (!layout) return nullptr;
  layout->mChannelLayoutTag = data.tag;
  layout->mChannelBitmap = data.bitmap;
  layout->mNumberChannelDescriptions = static_cast<uint32_t>(count);
  AudioChannelDescription* descriptions = layout->mChannelDescriptions;
  for (int32_t i = 0; i < count; ++i) {
    if (!data.descriptions[i]) continue;
    const auto& source = foreign_data<REALaudioChannelDescriptionData>(data.descriptions[i]);
    descriptions[i].mChannelLabel = source.label;
    descriptions[i].mChannelFlags = source.flags;
    for (int axis = 0; axis < 3; ++axis) {
      descriptions[i].mCoordinates[axis] = static_cast<float>(source.coordinates[axis]);
    }
  }
  return layout;
}

}  // namespace krz
