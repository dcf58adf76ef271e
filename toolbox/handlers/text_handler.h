// Text media: makes samples and their descriptions from a text and how it is to be drawn.
#pragma once

#include <optional>
#include <string>

#include "atoms/text_description.h"
#include "base/bytes.h"
#include "base/status.h"

namespace toolbox {

class Media;

/// What a caller announces for the next sample alone.
struct NextTextSample {
  std::optional<uint32_t> encoding;
  std::optional<std::array<int16_t, 2>> shadow_offset;  // down, right; pixels
  std::optional<uint16_t> shadow_transparency;          // 0 to 256
};

/// What is drawn beside the text itself, in one sample.
struct TextSampleExtras {
  uint32_t scroll_delay = 0;    // media ticks
  int16_t highlight_start = 0;  // characters
  int16_t highlight_end = 0;    // none unless behind the start
  std::optional<TextDescription::Color> highlight_color;
  NextTextSample announced;
};

/// The sample: the text's length, the text, and an atom for each extra that is not the default.
/// Fails: paramErr for a text longer than 65535 bytes.
Result<Bytes> text_sample(ByteView text, const TextSampleExtras& extras);

/// The whole description of type `text`, big-endian. A name is cut at 255 bytes.
Bytes text_description(TextDescription description, std::string_view font_name);

/// The name (MacRoman) of a font for descriptions; empty for 0, for numbers that name no font, and
/// for fonts that are no classic ones where the framework that knows their names is missing.
std::string text_font_name(int16_t font);

}  // namespace toolbox
