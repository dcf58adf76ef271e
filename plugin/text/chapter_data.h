// What a chapter record holds: the text of one sample and how it is drawn.
#pragma once

#include <krz/abi.h>

namespace krz {

/// Instance data of "QTChapterDataKRZ". Scripts read and write every field.
struct QTChapterDataClassData {
  REALstring text;         // owned
  Boolean bold;            // true when not zero, as all of its kind
  int32_t frame_duration;  // movie time scale
  Boolean italic;
  int32_t font_number;  // used as signed 16 bits
  Boolean underline;
  int32_t font_size;
  Boolean outline;
  uint32_t text_color;  // 0x00RRGGBB, used when has_text_color
  Boolean shadow;
  uint32_t back_color;  // used when has_back_color
  Boolean condense;
  int32_t text_justification;  // one of the class's te constants
  Boolean extend;
  int32_t display_flags;  // sum of the class's df constants
  Boolean has_back_color;
  int32_t scroll_delay;  // time value
  Boolean has_text_color;
  int32_t highlight_start;  // first highlighted character
  Boolean has_highlight_color;
  uint32_t highlight_color;  // used when has_highlight_color
  int32_t highlight_end;
  int32_t left;  // text box, pixels
  int32_t top;
  int32_t width;   // 0: that of the reference track
  int32_t height;  // 0: that of the reference track
};

}  // namespace krz
