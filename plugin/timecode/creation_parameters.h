// What a script says about a timecode track that is to be made.
#pragma once

#include <krz/abi.h>

namespace krz {

/// Instance data of "QTTimeCodeCreationParametersKRZ". Scripts read and write every field.
struct QTTimeCodeCreationParametersClassData {
  int32_t height;  // 16.16 when it is compared
  Boolean is_negative;
  int32_t frame_duration;    // in `time_scale`
  int32_t number_of_frames;  // a second
  Boolean drop_frames;
  int32_t hours;          // start of the time code
  Boolean use_time_code;  // false: a frame counter
  int32_t minutes;
  Boolean use_24_hours;
  int32_t seconds;
  int32_t time_scale;  // units a second
  int32_t frames;
  int32_t counter_start_value;
  Boolean display_below_video;
  REALstring source_name;  // owned
  REALstring font_name;    // owned
  Boolean display_time_code;
  int32_t font_face;         // style bits; negative: as the handler has it
  int32_t font_size;         // points; negative: as the handler has it
  uint32_t font_fore_color;  // 0x00RRGGBB
  uint32_t font_back_color;
};

}  // namespace krz
