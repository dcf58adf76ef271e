// What a time code object holds.
#pragma once

#include <krz/abi.h>

namespace krz {

#pragma pack(push, 2)
/// How time codes of a track count, in the toolbox's own layout.
struct TimeCodeDefinition {
  uint32_t flags;          // sum of the flags below
  int32_t time_scale;      // units a second
  int32_t frame_duration;  // in time_scale
  uint8_t frames;          // a second
  uint8_t reserved;
};

/// One time code, in the toolbox's own layout: hours, minutes, seconds and frames, or a counter
/// over the same bytes.
struct TimeCodeBytes {
  uint8_t bytes[4];
};
#pragma pack(pop)
static_assert(sizeof(TimeCodeDefinition) == 14);

inline constexpr uint32_t kTimeCodeDropFrame = 1;
inline constexpr uint32_t kTimeCode24Hours = 2;
inline constexpr uint32_t kTimeCodeNegativeOK = 4;
inline constexpr uint32_t kTimeCodeCounter = 8;

/// Instance data of "QTTimeCodeKRZ".
struct QTTimeCodeClassData {
  int32_t frame_number;
  TimeCodeDefinition definition;
  TimeCodeBytes record;
  REALstring source_name;  // owned
};

}  // namespace krz
