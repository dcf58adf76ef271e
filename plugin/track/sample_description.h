// What a sample description object holds, and the rows by which its classes show their part of it.
#pragma once

#include <krz/abi.h>

#include <type_traits>

#include "host/class_table.h"
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/registration.h"

namespace krz {

/// Instance data of "QTSampleDescriptionKRZ", shared by its seven subclasses: each shows the fields
/// of its own kind, the others stay zero. A snapshot: nothing is written back to the media.
struct QTSampleDescriptionClassData {
  int32_t version;
  REALstring codec_type;  // strings are owned, one lock each
  Boolean italic;
  REALstring decompressor_type;
  Boolean outline;
  REALstring codec_vendor;
  Boolean bold;
  REALstring default_font_name;
  Boolean underline;
  REALstring codec_name;
  Boolean condense;
  REALstring renderer_type;
  Boolean extend;
  int32_t channel_count;
  Boolean shadow;
  int32_t sample_size;    // bits
  double sample_rate;     // frames a second
  int32_t display_flags;  // as for text samples
  int32_t text_justification;
  uint32_t background_color;  // 0x00RRGGBB
  int32_t left;               // text box, pixels
  int32_t top;
  int32_t text_height;
  int32_t text_ascent;
  int32_t text_font_id;
  int32_t text_size;
  uint32_t text_color;
  int32_t text_face;  // scripts only: the style is in the seven flags
  int32_t temporal_quality;
  int32_t spatial_quality;
  int32_t width;
  int32_t height;
  double horizontal_resolution;  // pixels an inch
  double vertical_resolution;
  int32_t data_size;  // bytes; 0 when unknown
  int32_t frame_count;
  int32_t depth;
  uint8_t reserved[20];
};

inline QTSampleDescriptionClassData& sample_description_data(REALobject object) {
  return instance_data<QTSampleDescriptionClassData>(object, QTSampleDescriptionClass);
}

template <auto Field>
using SampleDescriptionField =
    std::remove_reference_t<decltype(std::declval<QTSampleDescriptionClassData>().*Field)>;

/// Reads a field; a string comes with a new lock.
template <auto Field>
SampleDescriptionField<Field> read_field(REALobject object, intptr_t) {
  const auto value = sample_description_data(object).*Field;
  if constexpr (std::is_same_v<SampleDescriptionField<Field>, REALstring>) {
    if (value) REALLockString(value);
  }
  return value;
}

/// Writes a field of the object; a string is locked and the one it replaces unlocked.
template <auto Field>
void write_field(REALobject object, intptr_t, SampleDescriptionField<Field> value) {
  auto& field = sample_description_data(object).*Field;
  if constexpr (std::is_same_v<SampleDescriptionField<Field>, REALstring>) {
    if (field) REALUnlockString(field);
    if (value) REALLockString(value);
  }
  field = value;
}

}  // namespace krz

/// A property that shows one field: FIELD_PROPERTY(channel_count, "ChannelCount", "Integer").
#define FIELD_PROPERTY(field, name, type)                    \
  PROPERTY(read_field<&QTSampleDescriptionClassData::field>, \
           write_field<&QTSampleDescriptionClassData::field>, name, type)
